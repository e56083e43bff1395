#include "ModalDialogAnswer.h"
#include "WidgetTestCase.h"

#include <VXSEditText.h>
#include <VXUtilityFns.h>

#include <QColorDialog>
#include <QFontDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QSpacerItem>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QtTest>

Q_DECLARE_METATYPE(Qt::Alignment)

namespace {

// The alignment of every paragraph of the text.
QList<Qt::Alignment> blockAlignments(const QTextEdit* pEdit)
{
    QList<Qt::Alignment> alignments;
    for (QTextBlock block = pEdit->document()->begin(); block.isValid(); block = block.next())
        alignments << block.blockFormat().alignment();
    return alignments;
}

// The weight of every character of the text.
QVector<int> characterWeights(const QTextEdit* pEdit)
{
    QVector<int> weights;
    QTextCursor cursor(pEdit->document());
    const int length = pEdit->toPlainText().length();
    for (int position = 1; position <= length; ++position) {
        cursor.setPosition(position);
        weights << cursor.charFormat().fontWeight();
    }
    return weights;
}

QIcon solidIcon(QColor color)
{
    QPixmap pixmap(32, 32);
    pixmap.fill(color);
    return QIcon(pixmap);
}

// Which of the three alignment buttons are pressed: left, centre, right.
QList<bool> alignButtons(const CVXSEditText& dialog)
{
    return {dialog.m_pAlignLeftTB->isChecked(), dialog.m_pAlignCenterTB->isChecked(),
            dialog.m_pAlignRightTB->isChecked()};
}

QList<bool> styleButtons(const CVXSEditText& dialog)
{
    return {dialog.m_pItalicsTB->isChecked(), dialog.m_pBoldTB->isChecked(), dialog.m_pUnderlineTB->isChecked()};
}

// Everything the dialog would hand out, for before/after comparisons.
QString formattedText(const CVXSEditText& dialog)
{
    return dialog.m_pTextEdit->toHtml();
}

// What the dialog sent through its two signals, whose reference arguments a signal spy
// cannot hold.
struct CSentByDialog
{
    explicit CSentByDialog(CVXSEditText* pDialog)
    {
        QObject::connect(pDialog, &CVXSEditText::updateLayoutText, [this](QString& strText) { m_texts << strText; });
        QObject::connect(pDialog, &CVXSEditText::updateAnnotation,
                         [this](Qt::Alignment alignment, QFont& font, QColor& color) {
                             m_alignments << alignment;
                             m_fonts << font;
                             m_colors << color;
                         });
    }

    QStringList m_texts;
    QList<Qt::Alignment> m_alignments;
    QList<QFont> m_fonts;
    QList<QColor> m_colors;
};

// The next widget after pFrom in the focus chain that Tab can reach.
QWidget* nextTabStop(QWidget* pFrom)
{
    for (QWidget* pNext = pFrom->nextInFocusChain(); pNext != pFrom; pNext = pNext->nextInFocusChain()) {
        if ((pNext->focusPolicy() & Qt::TabFocus) && !pFrom->isAncestorOf(pNext))
            return pNext;
    }
    return nullptr;
}

} // namespace

class TestLayoutEditText : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void dialogFrame();
    void toolButtons_data();
    void toolButtons();
    void pushButtons();
    void layout();
    void tabOrder();
    void newDialogState();
    void typedTextIsLight();
    void styleButtonsActOnTheWholeText_data();
    void styleButtonsActOnTheWholeText();
    void alignmentGroup_data();
    void alignmentGroup();
    void loadedAlignmentPressesItsButton_data();
    void loadedAlignmentPressesItsButton();
    void loadedStylePressesItsButtons_data();
    void loadedStylePressesItsButtons();
    void loadingRunsTheStyleSlots();
    void loadingSendsTheText();
    void cancelledFontDialogChangesNothing();
    void cancelledColorDialogChangesNothing();
    void eachTypedCharacterIsSent();
    void okSendsFormattingOnce();
    void cancelClosesAndSendsNothing();
    void languageChangeRestoresTexts();

private:
    void endTest() override;

    void typeText(const QString& strText);
    void click(QAbstractButton* pButton);

    CVXSEditText* m_pDialog = nullptr; // created and shown per test
};

void TestLayoutEditText::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    qRegisterMetaType<Qt::Alignment>();
    QApplication::setWindowIcon(solidIcon(Qt::darkMagenta));
}

void TestLayoutEditText::init()
{
    m_pDialog = new CVXSEditText(nullptr, "m_pEditTextDlg", false, Qt::WindowFlags());
    m_pDialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pDialog));
}

void TestLayoutEditText::endTest()
{
    delete m_pDialog;
    m_pDialog = nullptr;
}

void TestLayoutEditText::typeText(const QString& strText)
{
    m_pDialog->m_pTextEdit->setFocus();
    QTest::keyClicks(m_pDialog->m_pTextEdit, strText);
}

void TestLayoutEditText::click(QAbstractButton* pButton)
{
    QTest::mouseClick(pButton, Qt::LeftButton);
}

void TestLayoutEditText::dialogFrame()
{
    // Made modal although the caller asked for a modeless one.
    QVERIFY(m_pDialog->isModal());
    QCOMPARE(m_pDialog->windowTitle(), QStringLiteral("Edit Text"));
    QCOMPARE(m_pDialog->size(), QSize(396, 261));
    // The icon is the application's as it was when the dialog was made, set on the
    // dialog itself rather than inherited.
    const QImage appIcon = CVXUtilityFns::appIcon().pixmap(32).toImage();
    QApplication::setWindowIcon(solidIcon(Qt::darkYellow));
    QCOMPARE(m_pDialog->windowIcon().pixmap(32).toImage(), appIcon);
    QApplication::setWindowIcon(solidIcon(Qt::darkMagenta));
}

void TestLayoutEditText::toolButtons_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<bool>("checkable");
    QTest::newRow("italics") << "m_pItalicsTB" << "Italics" << true;
    QTest::newRow("bold") << "m_pBoldTB" << "Bold" << true;
    QTest::newRow("underline") << "m_pUnderlineTB" << "Underline" << true;
    QTest::newRow("align left") << "m_pAlignLeftTB" << "Align left" << true;
    QTest::newRow("align center") << "m_pAlignCenterTB" << "Align center" << true;
    QTest::newRow("align right") << "m_pAlignRightTB" << "Align right" << true;
    QTest::newRow("font") << "m_pFontTB" << "Font" << false;
    QTest::newRow("font color") << "m_pFontColorTB" << "Font color" << false;
}

void TestLayoutEditText::toolButtons()
{
    QFETCH(QString, name);
    QFETCH(QString, toolTip);
    QFETCH(bool, checkable);
    auto* pButton = m_pDialog->findChild<QToolButton*>(name);
    QVERIFY(pButton);
    QCOMPARE(pButton->toolTip(), toolTip);
    QCOMPARE(pButton->isCheckable(), checkable);
    QVERIFY(pButton->autoRaise());
    QVERIFY(pButton->text().isEmpty());
    // An icon of its own, drawn for 18 x 18, that shows ink at that size.
    QVERIFY(pButton->icon().availableSizes().contains(QSize(18, 18)));
    const QImage picture = pButton->icon().pixmap(18, 18).toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(picture.size(), QSize(18, 18));
    int inked = 0;
    for (int y = 0; y < 18; ++y) {
        for (int x = 0; x < 18; ++x)
            inked += qAlpha(picture.pixel(x, y)) == 255 ? 1 : 0;
    }
    QVERIFY2(inked > 20 && inked < 18 * 18 * 3 / 4, qPrintable(QString::number(inked)));
}

void TestLayoutEditText::pushButtons()
{
    QCOMPARE(m_pDialog->m_pOkBtn->objectName(), QStringLiteral("m_pOkBtn"));
    QCOMPARE(m_pDialog->m_pOkBtn->text(), QStringLiteral("OK"));
    QCOMPARE(m_pDialog->m_pCancelBtn->objectName(), QStringLiteral("m_pCancelBtn"));
    QCOMPARE(m_pDialog->m_pCancelBtn->text(), QStringLiteral("Cancel"));
    QCOMPARE(m_pDialog->m_pTextEdit->objectName(), QStringLiteral("m_pTextEdit"));
    QCOMPARE(m_pDialog->m_pTextEdit->lineWrapMode(), QTextEdit::WidgetWidth);
    QCOMPARE(m_pDialog->m_pTextEdit->wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);

    // Only the colour icon has colours besides black: cyan and light yellow among them.
    QSet<QRgb> colours;
    const QImage picture = m_pDialog->m_pFontColorTB->icon().pixmap(18, 18).toImage().convertToFormat(
        QImage::Format_ARGB32);
    for (int y = 0; y < 18; ++y) {
        for (int x = 0; x < 18; ++x) {
            if (qAlpha(picture.pixel(x, y)) == 255)
                colours << picture.pixel(x, y);
        }
    }
    QCOMPARE(colours, (QSet<QRgb>{qRgb(0, 0, 0), qRgb(0x00, 0xff, 0xff), qRgb(0xff, 0xff, 0x80)}));
}

void TestLayoutEditText::layout()
{
    auto* pOuter = qobject_cast<QGridLayout*>(m_pDialog->layout());
    QVERIFY(pOuter);
    QCOMPARE(pOuter->objectName(), QStringLiteral("gridLayout"));
    QCOMPARE(pOuter->horizontalSpacing(), 0);
    QCOMPARE(pOuter->verticalSpacing(), 0);
    QCOMPARE(pOuter->contentsMargins(), QMargins(2, 2, 2, 2));

    auto* pInner = qobject_cast<QGridLayout*>(pOuter->itemAtPosition(0, 0)->layout());
    QVERIFY(pInner);
    QCOMPARE(pInner->objectName(), QStringLiteral("gridLayout1"));
    QCOMPARE(pInner->horizontalSpacing(), 2);
    QCOMPARE(pInner->verticalSpacing(), 2);
    QCOMPARE(pInner->contentsMargins(), QMargins(2, 2, 2, 2));
    QCOMPARE(pInner->itemAtPosition(1, 0)->widget(), m_pDialog->m_pTextEdit);

    auto* pButtonRow = qobject_cast<QHBoxLayout*>(pInner->itemAtPosition(2, 0)->layout());
    QVERIFY(pButtonRow);
    QCOMPARE(pButtonRow->objectName(), QStringLiteral("hboxLayout"));
    QCOMPARE(pButtonRow->count(), 3);
    QSpacerItem* pButtonSpacer = pButtonRow->itemAt(0)->spacerItem();
    QVERIFY(pButtonSpacer);
    QCOMPARE(pButtonSpacer->sizeHint(), QSize(91, 20));
    QCOMPARE(pButtonSpacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(pButtonRow->itemAt(1)->widget(), m_pDialog->m_pOkBtn);
    QCOMPARE(pButtonRow->itemAt(2)->widget(), m_pDialog->m_pCancelBtn);

    auto* pToolRow = qobject_cast<QHBoxLayout*>(pInner->itemAtPosition(0, 0)->layout());
    QVERIFY(pToolRow);
    QCOMPARE(pToolRow->objectName(), QStringLiteral("hboxLayout1"));
    const QList<QWidget*> tools = {m_pDialog->m_pItalicsTB,     m_pDialog->m_pBoldTB,       m_pDialog->m_pUnderlineTB,
                                   m_pDialog->line1,            m_pDialog->m_pAlignLeftTB,  m_pDialog->m_pAlignCenterTB,
                                   m_pDialog->m_pAlignRightTB,  m_pDialog->line2,           m_pDialog->m_pFontTB,
                                   m_pDialog->m_pFontColorTB};
    QCOMPARE(pToolRow->count(), tools.count() + 1);
    for (int i = 0; i < tools.count(); ++i)
        QCOMPARE(pToolRow->itemAt(i)->widget(), tools[i]);
    QSpacerItem* pToolSpacer = pToolRow->itemAt(tools.count())->spacerItem();
    QVERIFY(pToolSpacer);
    QCOMPARE(pToolSpacer->sizeHint(), QSize(100, 21));
    QCOMPARE(pToolSpacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);

    for (const QFrame* pLine : {m_pDialog->line1, m_pDialog->line2}) {
        QCOMPARE(pLine->frameShape(), QFrame::VLine);
        QCOMPARE(pLine->frameShadow(), QFrame::Sunken);
    }
    // The tools sit above the text, the buttons below it, at the right.
    QVERIFY(m_pDialog->m_pItalicsTB->geometry().bottom() < m_pDialog->m_pTextEdit->geometry().top());
    QVERIFY(m_pDialog->m_pOkBtn->geometry().top() > m_pDialog->m_pTextEdit->geometry().bottom());
    QVERIFY(m_pDialog->m_pCancelBtn->geometry().right() > m_pDialog->width() - 10);
}

void TestLayoutEditText::tabOrder()
{
    QCOMPARE(nextTabStop(m_pDialog->m_pTextEdit), m_pDialog->m_pOkBtn);
    QCOMPARE(nextTabStop(m_pDialog->m_pOkBtn), m_pDialog->m_pCancelBtn);
}

void TestLayoutEditText::newDialogState()
{
    QVERIFY(m_pDialog->m_pTextEdit->toPlainText().isEmpty());
    QVERIFY(m_pDialog->getText().isEmpty());
    QCOMPARE(styleButtons(*m_pDialog), (QList<bool>{false, false, false}));
    QCOMPARE(alignButtons(*m_pDialog), (QList<bool>{true, false, false}));
    QCOMPARE(m_pDialog->m_pTextEdit->alignment(), Qt::AlignLeft);
    QCOMPARE(m_pDialog->m_pTextEdit->fontWeight(), 25);
    QVERIFY(!m_pDialog->m_pTextEdit->fontItalic());
    QVERIFY(!m_pDialog->m_pTextEdit->fontUnderline());
}

void TestLayoutEditText::typedTextIsLight()
{
    typeText(QStringLiteral("Tumour"));
    QCOMPARE(m_pDialog->m_pTextEdit->toPlainText(), QStringLiteral("Tumour"));
    QCOMPARE(characterWeights(m_pDialog->m_pTextEdit), QVector<int>(6, 25));
    QCOMPARE(m_pDialog->m_pTextEdit->currentFont().weight(), 25);
}

void TestLayoutEditText::styleButtonsActOnTheWholeText_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("italics") << "m_pItalicsTB";
    QTest::newRow("bold") << "m_pBoldTB";
    QTest::newRow("underline") << "m_pUnderlineTB";
}

void TestLayoutEditText::styleButtonsActOnTheWholeText()
{
    QFETCH(QString, button);
    typeText(QStringLiteral("left"));
    QTest::keyClick(m_pDialog->m_pTextEdit, Qt::Key_Return);
    QTest::keyClicks(m_pDialog->m_pTextEdit, QStringLiteral("right"));
    // Only part of the text is selected; the style still goes to all of it.
    QTextCursor cursor = m_pDialog->m_pTextEdit->textCursor();
    cursor.setPosition(1);
    cursor.setPosition(2, QTextCursor::KeepAnchor);
    m_pDialog->m_pTextEdit->setTextCursor(cursor);

    auto* pButton = m_pDialog->findChild<QToolButton*>(button);
    for (const bool bPressed : {true, false}) {
        click(pButton);
        QCOMPARE(pButton->isChecked(), bPressed);
        QTextCursor probe(m_pDialog->m_pTextEdit->document());
        const int length = m_pDialog->m_pTextEdit->toPlainText().length();
        for (int position = 1; position <= length; ++position) {
            probe.setPosition(position);
            const QTextCharFormat format = probe.charFormat();
            if (button == QLatin1String("m_pItalicsTB"))
                QCOMPARE(format.fontItalic(), bPressed);
            else if (button == QLatin1String("m_pBoldTB"))
                QCOMPARE(format.fontWeight(), bPressed ? 75 : 25);
            else
                QCOMPARE(format.fontUnderline(), bPressed);
        }
    }
}

void TestLayoutEditText::alignmentGroup_data()
{
    QTest::addColumn<QStringList>("presses");
    QTest::addColumn<QList<bool>>("pressedAfter");
    QTest::addColumn<Qt::Alignment>("alignment");
    QTest::newRow("pressing the pressed left leaves right pressed")
        << QStringList{"m_pAlignLeftTB"} << QList<bool>{false, false, true} << Qt::Alignment(Qt::AlignRight);
    QTest::newRow("pressing the pressed center leaves left pressed")
        << QStringList{"m_pAlignCenterTB", "m_pAlignCenterTB"} << QList<bool>{true, false, false}
        << Qt::Alignment(Qt::AlignLeft);
    QTest::newRow("pressing the pressed right leaves left pressed")
        << QStringList{"m_pAlignRightTB", "m_pAlignRightTB"} << QList<bool>{true, false, false}
        << Qt::Alignment(Qt::AlignLeft);
    QTest::newRow("center") << QStringList{"m_pAlignCenterTB"} << QList<bool>{false, true, false}
                            << Qt::Alignment(Qt::AlignHCenter);
    QTest::newRow("right") << QStringList{"m_pAlignRightTB"} << QList<bool>{false, false, true}
                           << Qt::Alignment(Qt::AlignRight);
    QTest::newRow("right, then left") << QStringList{"m_pAlignRightTB", "m_pAlignLeftTB"}
                                      << QList<bool>{true, false, false} << Qt::Alignment(Qt::AlignLeft);
    QTest::newRow("center, then right") << QStringList{"m_pAlignCenterTB", "m_pAlignRightTB"}
                                        << QList<bool>{false, false, true} << Qt::Alignment(Qt::AlignRight);
}

void TestLayoutEditText::alignmentGroup()
{
    QFETCH(QStringList, presses);
    QFETCH(QList<bool>, pressedAfter);
    QFETCH(Qt::Alignment, alignment);
    typeText(QStringLiteral("first line"));
    QTest::keyClick(m_pDialog->m_pTextEdit, Qt::Key_Return);
    QTest::keyClicks(m_pDialog->m_pTextEdit, QStringLiteral("second"));
    for (const QString& name : presses)
        click(m_pDialog->findChild<QToolButton*>(name));
    QCOMPARE(alignButtons(*m_pDialog), pressedAfter);
    QCOMPARE(blockAlignments(m_pDialog->m_pTextEdit), (QList<Qt::Alignment>{alignment, alignment}));
}

void TestLayoutEditText::loadedAlignmentPressesItsButton_data()
{
    QTest::addColumn<Qt::Alignment>("flags");
    QTest::addColumn<QList<bool>>("pressed");
    QTest::addColumn<Qt::Alignment>("alignment");
    // Text items add Qt::AlignTop when they paint.
    QTest::newRow("left and top") << Qt::Alignment(Qt::AlignLeft | Qt::AlignTop) << QList<bool>{true, false, false}
                                  << Qt::Alignment(Qt::AlignLeft);
    QTest::newRow("centre and top") << Qt::Alignment(Qt::AlignHCenter | Qt::AlignTop)
                                    << QList<bool>{false, true, false} << Qt::Alignment(Qt::AlignHCenter);
    QTest::newRow("right and top") << Qt::Alignment(Qt::AlignRight | Qt::AlignTop) << QList<bool>{false, false, true}
                                   << Qt::Alignment(Qt::AlignRight);
    QTest::newRow("justified: no button") << Qt::Alignment(Qt::AlignJustify) << QList<bool>{false, false, false}
                                          << Qt::Alignment(Qt::AlignJustify);
}

void TestLayoutEditText::loadedAlignmentPressesItsButton()
{
    QFETCH(Qt::Alignment, flags);
    QFETCH(QList<bool>, pressed);
    QFETCH(Qt::Alignment, alignment);
    // Start from another pressed button so that loading has to move the press.
    click(m_pDialog->m_pAlignCenterTB);
    m_pDialog->setTextData(QStringLiteral("Femur\nleft"), flags, QFont(), Qt::black);
    QCOMPARE(alignButtons(*m_pDialog), pressed);
    for (const Qt::Alignment blockAlignment : blockAlignments(m_pDialog->m_pTextEdit))
        QCOMPARE(blockAlignment & Qt::AlignHorizontal_Mask, alignment);
}

void TestLayoutEditText::loadedStylePressesItsButtons_data()
{
    QTest::addColumn<int>("weight");
    QTest::addColumn<bool>("italic");
    QTest::addColumn<bool>("underline");
    QTest::addColumn<QList<bool>>("pressed");
    QTest::newRow("demi-bold is not bold") << 63 << false << false << QList<bool>{false, false, false};
    QTest::newRow("bold") << 75 << false << false << QList<bool>{false, true, false};
    QTest::newRow("black is not bold") << 87 << false << false << QList<bool>{false, false, false};
    QTest::newRow("italic, underlined") << 50 << true << true << QList<bool>{true, false, true};
}

void TestLayoutEditText::loadedStylePressesItsButtons()
{
    QFETCH(int, weight);
    QFETCH(bool, italic);
    QFETCH(bool, underline);
    QFETCH(QList<bool>, pressed);
    QFont font;
    font.setWeight(weight);
    font.setItalic(italic);
    font.setUnderline(underline);
    m_pDialog->setTextData(QStringLiteral("Scale bar"), Qt::AlignLeft, font, Qt::darkRed);
    QCOMPARE(styleButtons(*m_pDialog), pressed);
    QCOMPARE(m_pDialog->m_pTextEdit->textColor(), QColor(Qt::darkRed));
    QCOMPARE(m_pDialog->getText(), QStringLiteral("Scale bar"));
    // A weight that is not bold is left as loaded, the button stays up.
    if (weight != 75)
        QCOMPARE(characterWeights(m_pDialog->m_pTextEdit), QVector<int>(9, weight));
}

void TestLayoutEditText::loadingRunsTheStyleSlots()
{
    typeText(QStringLiteral("x"));
    click(m_pDialog->m_pBoldTB);
    click(m_pDialog->m_pItalicsTB);
    QCOMPARE(styleButtons(*m_pDialog), (QList<bool>{true, true, false}));
    // Loading a demi-bold upright text releases Bold and Italics through their signals,
    // and their slots make the whole text light and upright.
    QFont font;
    font.setWeight(63);
    m_pDialog->setTextData(QStringLiteral("Spleen"), Qt::AlignLeft, font, Qt::black);
    QCOMPARE(styleButtons(*m_pDialog), (QList<bool>{false, false, false}));
    QCOMPARE(characterWeights(m_pDialog->m_pTextEdit), QVector<int>(6, 25));
    QVERIFY(!m_pDialog->m_pTextEdit->fontItalic());
}

void TestLayoutEditText::loadingSendsTheText()
{
    const CSentByDialog sent(m_pDialog);
    m_pDialog->setTextData(QStringLiteral("Kidney"), Qt::AlignLeft, QFont(), Qt::black);
    QVERIFY(!sent.m_texts.isEmpty());
    QCOMPARE(sent.m_texts.last(), QStringLiteral("Kidney"));
    QCOMPARE(sent.m_alignments.count(), 0);
}

void TestLayoutEditText::cancelledFontDialogChangesNothing()
{
    QFont font(QStringLiteral("Sans"), 14);
    font.setItalic(true);
    m_pDialog->setTextData(QStringLiteral("Liver"), Qt::AlignHCenter, font, Qt::blue);
    const QString before = formattedText(*m_pDialog);
    const QList<bool> styles = styleButtons(*m_pDialog);
    const QList<bool> alignment = alignButtons(*m_pDialog);
    const CSentByDialog sent(m_pDialog);

    bool bSeen = false;
    answerNextModalDialog(QFontDialog::staticMetaObject, rejectDialog, &bSeen);
    click(m_pDialog->m_pFontTB);
    QVERIFY(bSeen);
    QCOMPARE(formattedText(*m_pDialog), before);
    QCOMPARE(styleButtons(*m_pDialog), styles);
    QCOMPARE(alignButtons(*m_pDialog), alignment);
    QCOMPARE(sent.m_texts.count(), 0);
}

void TestLayoutEditText::cancelledColorDialogChangesNothing()
{
    m_pDialog->setTextData(QStringLiteral("Lung"), Qt::AlignRight, QFont(), Qt::darkGreen);
    const QString before = formattedText(*m_pDialog);
    const CSentByDialog sent(m_pDialog);

    bool bSeen = false;
    answerNextModalDialog(QColorDialog::staticMetaObject, rejectDialog, &bSeen);
    click(m_pDialog->m_pFontColorTB);
    QVERIFY(bSeen);
    QCOMPARE(formattedText(*m_pDialog), before);
    QCOMPARE(m_pDialog->m_pTextEdit->textColor(), QColor(Qt::darkGreen));
    QCOMPARE(sent.m_texts.count(), 0);
}

void TestLayoutEditText::eachTypedCharacterIsSent()
{
    const CSentByDialog sent(m_pDialog);
    typeText(QStringLiteral("ROI 1"));
    QCOMPARE(sent.m_texts.count(), 5);
    const QStringList expected = {"R", "RO", "ROI", "ROI ", "ROI 1"};
    for (int i = 0; i < expected.count(); ++i)
        QCOMPARE(sent.m_texts.at(i), expected[i]);
    QCOMPARE(sent.m_alignments.count(), 0);
}

void TestLayoutEditText::okSendsFormattingOnce()
{
    typeText(QStringLiteral("Heart"));
    click(m_pDialog->m_pBoldTB);
    click(m_pDialog->m_pAlignRightTB);
    const CSentByDialog sent(m_pDialog);
    QSignalSpy acceptedSpy(m_pDialog, &QDialog::accepted);

    click(m_pDialog->m_pOkBtn);
    QCOMPARE(sent.m_alignments.count(), 1);
    QCOMPARE(sent.m_texts.count(), 0);
    QCOMPARE(acceptedSpy.count(), 1);
    QVERIFY(!m_pDialog->isVisible());
    QCOMPARE(m_pDialog->result(), int(QDialog::Accepted));
    QCOMPARE(m_pDialog->getText(), QStringLiteral("Heart"));
    QCOMPARE(sent.m_alignments.first(), Qt::Alignment(Qt::AlignRight));
    QCOMPARE(sent.m_fonts.first().weight(), 75);
    QCOMPARE(sent.m_colors.first(), m_pDialog->m_pTextEdit->textColor());
}

void TestLayoutEditText::cancelClosesAndSendsNothing()
{
    m_pDialog->setTextData(QStringLiteral("Old"), Qt::AlignLeft, QFont(), Qt::black);
    typeText(QStringLiteral("er"));
    const CSentByDialog sent(m_pDialog);
    QSignalSpy rejectedSpy(m_pDialog, &QDialog::rejected);
    click(m_pDialog->m_pCancelBtn);
    QVERIFY(!m_pDialog->isVisible());
    QCOMPARE(rejectedSpy.count(), 1);
    QCOMPARE(sent.m_texts.count(), 0);
    QCOMPARE(sent.m_alignments.count(), 0);
    // The text confirmed last is still the one loaded.
    QCOMPARE(m_pDialog->getText(), QStringLiteral("Old"));
}

void TestLayoutEditText::languageChangeRestoresTexts()
{
    m_pDialog->setWindowTitle(QStringLiteral("x"));
    m_pDialog->m_pOkBtn->setText(QStringLiteral("x"));
    m_pDialog->m_pFontColorTB->setToolTip(QStringLiteral("x"));
    m_pDialog->languageChange();
    QCOMPARE(m_pDialog->windowTitle(), QStringLiteral("Edit Text"));
    QCOMPARE(m_pDialog->m_pOkBtn->text(), QStringLiteral("OK"));
    QCOMPARE(m_pDialog->m_pFontColorTB->toolTip(), QStringLiteral("Font color"));
}

QTEST_MAIN(TestLayoutEditText)
#include "tst_layout_edittext.moc"
