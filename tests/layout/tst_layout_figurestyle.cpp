#include "FigureControls.h"
#include "LayoutFixture.h"
#include "LayoutRecord.h"
#include "ModalDialogAnswer.h"
#include "TestPictures.h"
#include "WidgetTestCase.h"

#include <figure/VXSFigureController.h>
#include <figure/VXSFigurePage.h>
#include <figure/VXSItemStyle.h>
#include <figure/VXSStyleDefaults.h>
#include <file/VXSLayoutFileCommands.h>
#include <VXSLayoutConstants.h>
#include <VXSLayoutItemArrow.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QToolButton>
#include <QUndoStack>
#include <QtTest>

#include <cmath>
#include <functional>
#include <memory>

using namespace VXSLayout;

// An edit made through the panel's widgets, as a user makes it.
using Edit = std::function<void(QWidget& panel)>;
Q_DECLARE_METATYPE(Edit)

namespace {

constexpr double PointsPerMm = 72.0 / 25.4;
const QColor ImageColour(20, 90, 160);

// Types the value into the spin box and presses Enter.
template <typename Box>
void typeValue(const QWidget& panel, const char* pName, const QString& strValue)
{
    Box* pBox = panelControl<Box>(panel, pName);
    pBox->setFocus();
    pBox->selectAll();
    QTest::keyClicks(pBox, strValue);
    QTest::keyClick(pBox, Qt::Key_Return);
}

Edit typed(const char* pName, const QString& strValue)
{
    return [pName, strValue](QWidget& panel) { typeValue<QDoubleSpinBox>(panel, pName, strValue); };
}

Edit typedWhole(const char* pName, const QString& strValue)
{
    return [pName, strValue](QWidget& panel) { typeValue<QSpinBox>(panel, pName, strValue); };
}

Edit clicked(const char* pName)
{
    return [pName](QWidget& panel) { QTest::mouseClick(panelControl<QCheckBox>(panel, pName), Qt::LeftButton); };
}

// Clicks the colour button and chooses the colour in the colour dialog.
Edit colourChosen(const char* pName, QColor colour)
{
    return [pName, colour](QWidget& panel) {
        bool bSeen = false;
        answerNextModalDialog(
            QColorDialog::staticMetaObject,
            [colour](QDialog* pDialog) {
                static_cast<QColorDialog*>(pDialog)->setCurrentColor(colour);
                pDialog->accept();
            },
            &bSeen);
        QTest::mouseClick(panelControl<QToolButton>(panel, pName), Qt::LeftButton);
        QVERIFY(bSeen);
    };
}

// The same edit twice: a look set by a second edit on top of the first.
Edit both(const Edit& first, const Edit& second)
{
    return [first, second](QWidget& panel) {
        first(panel);
        second(panel);
    };
}

bool differs(const QImage& a, const QImage& b)
{
    return a.convertToFormat(QImage::Format_RGB32) != b.convertToFormat(QImage::Format_RGB32);
}

} // namespace

// The Figure panel changes items' looks and the figure's size, each change one undo step
// that layout files keep and every output draws as the screen does.
class TestLayoutFigureStyle : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void styleEdit_data();
    void styleEdit();
    void hollowRectangleShowsTheImageBelow();
    void arrowInItsOwnColourAndWidth();
    void imageBorderHasItsWidth();
    void geometryInMillimetres();
    void imageInACellKeepsItsPlace();
    void pageWidthAndResolution();
    void useAsDefaultAndReset();
    void editDuringADragIsRefused();
    void standardItemsLookAsBefore();

private:
    void endTest() override;
    QGraphicsItem* addOverImage(const QByteArray& kind);
    void select(QGraphicsItem* pItem);
    QWidget& panel();
    double pointsPerUnit() const;
    // The layout saved and opened again in a new window: its record.
    LayoutRecord reopened();

    std::unique_ptr<LayoutFixture> m_pLayout;
    std::unique_ptr<CVXSFigureController> m_pController;
    QTemporaryDir m_dir;
};

void TestLayoutFigureStyle::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

void TestLayoutFigureStyle::init()
{
    CVXSStyleDefaults::resetAll();
    m_pLayout = std::make_unique<LayoutFixture>(QSize(600, 400));
    m_pController = std::make_unique<CVXSFigureController>();
    m_pController->setManager(m_pLayout->manager());
    panel().show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel()));
}

void TestLayoutFigureStyle::endTest()
{
    m_pController.reset();
    m_pLayout.reset();
    CVXSStyleDefaults::resetAll();
}

QWidget& TestLayoutFigureStyle::panel()
{
    return *m_pController->panel();
}

double TestLayoutFigureStyle::pointsPerUnit() const
{
    return m_pController->mmPerUnit() * PointsPerMm;
}

// An item of the kind over the middle of a flat image, so that what it hides shows.
QGraphicsItem* TestLayoutFigureStyle::addOverImage(const QByteArray& kind)
{
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(solidImage(QSize(300, 200), ImageColour));
    pImage->setRect(50, 50, 300, 200);
    return m_pLayout->addItem(kind, QRectF(120, 90, 160, 120));
}

void TestLayoutFigureStyle::select(QGraphicsItem* pItem)
{
    m_pLayout->view()->selectItem(pItem);
    QCOMPARE(m_pController->selectedItem(), pItem);
}

LayoutRecord TestLayoutFigureStyle::reopened()
{
    const QString strPath = m_dir.filePath(QStringLiteral("styled.vxlayout"));
    if (!m_pLayout->manager()->fileCommands()->saveTo(strPath))
        return LayoutRecord();
    LayoutFixture fresh(QSize(600, 400));
    if (!fresh.manager()->fileCommands()->openFile(strPath))
        return LayoutRecord();
    return LayoutRecord::take(*fresh.manager());
}

void TestLayoutFigureStyle::styleEdit_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QString>("undoText");

    QTest::newRow("rectangle outline width") << QByteArray("rectangle") << typed("figureLineWidth", "6") << "Change Line Width";
    QTest::newRow("rectangle outline colour") << QByteArray("rectangle") << colourChosen("figureLineColour", Qt::red)
                                              << "Change Line Colour";
    QTest::newRow("rectangle without fill") << QByteArray("rectangle") << clicked("figureFillOn") << "Change Fill";
    QTest::newRow("rectangle fill half opaque") << QByteArray("rectangle") << typedWhole("figureFillOpacity", "50")
                                                << "Change Fill";
    QTest::newRow("rectangle fill colour") << QByteArray("rectangle") << colourChosen("figureFillColour", Qt::yellow)
                                           << "Change Fill";
    QTest::newRow("ellipse outline width") << QByteArray("ellipse") << typed("figureLineWidth", "4") << "Change Line Width";
    QTest::newRow("ellipse without fill") << QByteArray("ellipse") << clicked("figureFillOn") << "Change Fill";
    QTest::newRow("arrow colour") << QByteArray("arrow") << colourChosen("figureLineColour", Qt::red) << "Change Line Colour";
    QTest::newRow("arrow width") << QByteArray("arrow") << typed("figureLineWidth", "3") << "Change Line Width";
    QTest::newRow("arrow head size") << QByteArray("arrow") << typed("figureHeadSize", "20") << "Change Head Size";
    QTest::newRow("text colour") << QByteArray("text") << colourChosen("figureTextColour", Qt::red) << "Change Colour";
    QTest::newRow("text background") << QByteArray("text")
                                     << both(clicked("figureFillOn"), colourChosen("figureFillColour", Qt::yellow))
                                     << "Change Fill";
    QTest::newRow("image border") << QByteArray("image") << clicked("figureLineOn") << "Change Border";
    QTest::newRow("image border width") << QByteArray("image")
                                        << both(clicked("figureLineOn"), typed("figureLineWidth", "5"))
                                        << "Change Line Width";
}

// Every property: changed through the panel, one undo step that undo and redo take back
// and give again, kept by a layout file, and drawn the same on screen as in the export.
void TestLayoutFigureStyle::styleEdit()
{
    QFETCH(QByteArray, kind);
    QFETCH(Edit, edit);
    QFETCH(QString, undoText);
    QGraphicsItem* pItem = kind == "image" ? m_pLayout->pasteImage(solidImage(QSize(300, 200), ImageColour))
                                           : addOverImage(kind);
    if (kind == "arrow")
        static_cast<CVXSLayoutItemArrow*>(pItem)->setEndHead(true);
    select(pItem);
    const LayoutRecord before = LayoutRecord::take(*m_pLayout->manager());
    const QImage screenBefore = m_pLayout->grabViewport();
    const QImage exportBefore = m_pLayout->manager()->renderLayoutImage(4.0);
    QUndoStack* pStack = m_pLayout->manager()->undoStack();
    const int nSteps = pStack->index();

    edit(panel());
    QVERIFY(CVXSItemFigure::of(*pItem).bStyled);
    QCOMPARE(pStack->undoText(), undoText);
    QVERIFY2(pStack->index() > nSteps, "the change is an undo step");
    const LayoutRecord after = LayoutRecord::take(*m_pLayout->manager());
    const QImage screenAfter = m_pLayout->grabViewport();
    const QImage exportAfter = m_pLayout->manager()->renderLayoutImage(4.0);
    QVERIFY2(differs(screenBefore, screenAfter), "the screen shows the change");
    QVERIFY2(differs(exportBefore, exportAfter), "the export shows the change");
    // The screen and the export draw the same page: the export reduced to the screen's size
    // is close to the screen (the view shows the page at its own size).
    const QImage exportReduced = exportAfter.scaled(screenAfter.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QVERIFY2(differs(exportReduced, exportBefore.scaled(screenAfter.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation)),
             "the reduced export shows the change too");

    while (pStack->index() > nSteps)
        pStack->undo();
    QVERIFY2(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(before).isEmpty(),
             qPrintable(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(before)));
    QVERIFY(!differs(m_pLayout->manager()->renderLayoutImage(4.0), exportBefore));
    while (pStack->canRedo())
        pStack->redo();
    QVERIFY2(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(after).isEmpty(),
             qPrintable(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(after)));
    QVERIFY(!differs(m_pLayout->manager()->renderLayoutImage(4.0), exportAfter));

    m_pLayout->view()->clearSelection();
    const LayoutRecord saved = LayoutRecord::take(*m_pLayout->manager());
    // Compared as a user could tell them apart, as the file tests do.
    const LayoutRecord opened = reopened();
    QCOMPARE(opened.describe(), saved.describe());
    QVERIFY(!differs(opened.rendered, saved.rendered));
}

void TestLayoutFigureStyle::hollowRectangleShowsTheImageBelow()
{
    QGraphicsItem* pRectangle = addOverImage("rectangle");
    select(pRectangle);
    const QPoint centre(200 * 4, 150 * 4);
    QCOMPARE(m_pLayout->manager()->renderLayoutImage(4.0).pixelColor(centre), QColor(Qt::white));
    clicked("figureFillOn")(panel());
    QCOMPARE(m_pLayout->manager()->renderLayoutImage(4.0).pixelColor(centre), ImageColour);
    QCOMPARE(m_pLayout->grabViewport().pixelColor(200, 150), ImageColour);
}

void TestLayoutFigureStyle::arrowInItsOwnColourAndWidth()
{
    QGraphicsItem* pArrow = addOverImage("arrow");
    select(pArrow);
    colourChosen("figureLineColour", Qt::red)(panel());
    typed("figureLineWidth", QString::number(4 * pointsPerUnit(), 'f', 2))(panel());
    // Typed with two decimals.
    const double dTyped = std::round(4 * pointsPerUnit() * 100) / 100;
    QCOMPARE(CVXSItemStyle::of(*pArrow).dLineWidth, dTyped / pointsPerUnit());
    // The line runs across the middle of the item from left to right: at scale 4 it is
    // 16 pixels thick, and red.
    const QImage page = m_pLayout->manager()->renderLayoutImage(4.0);
    QPoint start;
    static_cast<CVXSLayoutItemArrow*>(pArrow)->getStartPoint(start.rx(), start.ry());
    const int x = (start.x() + 40) * 4;
    int nRed = 0;
    for (int y = start.y() * 4 - 20; y <= start.y() * 4 + 20; ++y)
        nRed += page.pixelColor(x, y) == QColor(Qt::red) ? 1 : 0;
    QVERIFY2(qAbs(nRed - 16) <= 1, qPrintable(QString::number(nRed)));
}

void TestLayoutFigureStyle::imageBorderHasItsWidth()
{
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(solidImage(QSize(300, 200), ImageColour));
    pImage->setRect(40, 40, 300, 200);
    select(pImage);
    clicked("figureLineOn")(panel());
    typed("figureLineWidth", QString::number(5 * pointsPerUnit(), 'f', 2))(panel());
    const QImage page = m_pLayout->manager()->renderLayoutImage(4.0);
    // Across the image's middle from its left edge: the border's black, then the image.
    int nBlack = 0;
    for (int x = 40 * 4; x < 40 * 4 + 40; ++x)
        nBlack += page.pixelColor(x, 140 * 4) == QColor(Qt::black) ? 1 : 0;
    QVERIFY2(qAbs(nBlack - 20) <= 2, qPrintable(QString::number(nBlack)));
    QCOMPARE(page.pixelColor(40 * 4 + 40, 140 * 4), ImageColour);
}

void TestLayoutFigureStyle::geometryInMillimetres()
{
    QGraphicsItem* pRectangle = m_pLayout->addItem("rectangle", QRectF(100, 80, 200, 100));
    select(pRectangle);
    const double dMm = m_pController->mmPerUnit();
    QVERIFY(dMm > 0);
    QCOMPARE(panelControl<QDoubleSpinBox>(panel(), "figureX")->value(), qRound(100 * dMm * 100) / 100.0);
    QCOMPARE(panelControl<QDoubleSpinBox>(panel(), "figureWidth")->value(), qRound(200 * dMm * 100) / 100.0);
    typed("figureX", QStringLiteral("20"))(panel());
    QCOMPARE(m_pLayout->manager()->undoStack()->undoText(), QStringLiteral("Move or Resize"));
    QVERIFY(qAbs(static_cast<QGraphicsRectItem*>(pRectangle)->rect().x() - 20 / dMm) < 1e-9);
    // The width, shown rounded, stays the item's own.
    QCOMPARE(static_cast<QGraphicsRectItem*>(pRectangle)->rect().width(), 200.0);
    m_pLayout->manager()->undoStack()->undo();
    QCOMPARE(static_cast<QGraphicsRectItem*>(pRectangle)->rect(), QRectF(100, 80, 200, 100));
    QCOMPARE(panelControl<QDoubleSpinBox>(panel(), "figureX")->value(), qRound(100 * dMm * 100) / 100.0);
}

void TestLayoutFigureStyle::imageInACellKeepsItsPlace()
{
    m_pLayout->chooseStyle(3);
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(QSize(80, 60));
    select(pImage);
    QVERIFY(!panelControl<QDoubleSpinBox>(panel(), "figureX")->isEnabled());
    const QRectF rect = pImage->rect();
    QVERIFY(!m_pController->setGeometryMm(QRectF(1, 1, 10, 10)));
    QCOMPARE(pImage->rect(), rect);
}

void TestLayoutFigureStyle::pageWidthAndResolution()
{
    QCOMPARE(panelControl<QComboBox>(panel(), "figureWidthPreset")->currentText(), QStringLiteral("85 mm (one column)"));
    QCOMPARE(panelControl<QSpinBox>(panel(), "figureDpi")->value(), 300);
    auto* pPresets = panelControl<QComboBox>(panel(), "figureWidthPreset");
    pPresets->setCurrentIndex(pPresets->findData(174.0));
    emit pPresets->activated(pPresets->currentIndex());
    QCOMPARE(m_pController->page().dWidthMm, 174.0);
    QCOMPARE(m_pLayout->manager()->undoStack()->undoText(), QStringLiteral("Change Figure Width"));
    typedWhole("figureDpi", QStringLiteral("600"))(panel());
    QCOMPARE(m_pController->page().nDpi, 600);
    QCOMPARE(panelControl<QComboBox>(panel(), "figureDpiPreset")->currentText(), QStringLiteral("600 dpi"));
    QVERIFY2(panelControl<QLabel>(panel(), "figureSize")->text().contains(QStringLiteral("174.0 x ")),
             qPrintable(panelControl<QLabel>(panel(), "figureSize")->text()));
    QVERIFY(panelControl<QLabel>(panel(), "figureSize")->text().contains(QString::number(qRound(174 / 25.4 * 600))));
    // Out of range: the box keeps to 1 mm to 2 m and to 72 to 2400 dpi.
    typedWhole("figureDpi", QStringLiteral("9999"))(panel());
    QVERIFY(m_pController->page().nDpi <= CVXSFigurePage::MaxDpi);
    typed("figureWidthMm", QStringLiteral("0"))(panel());
    QVERIFY(m_pController->page().dWidthMm >= CVXSFigurePage::MinWidthMm);

    QCOMPARE(reopened().figurePage, m_pController->page());
    QUndoStack* pStack = m_pLayout->manager()->undoStack();
    while (pStack->canUndo())
        pStack->undo();
    QCOMPARE(m_pController->page(), CVXSFigurePage());
    QCOMPARE(panelControl<QDoubleSpinBox>(panel(), "figureWidthMm")->value(), 85.0);
}

void TestLayoutFigureStyle::useAsDefaultAndReset()
{
    QGraphicsItem* pRectangle = m_pLayout->addItem("rectangle", QRectF(20, 20, 100, 60));
    select(pRectangle);
    clicked("figureFillOn")(panel());
    typed("figureLineWidth", QStringLiteral("3"))(panel());
    const CVXSItemStyle style = CVXSItemStyle::of(*pRectangle);
    QTest::mouseClick(panelControl<QPushButton>(panel(), "figureUseAsDefault"), Qt::LeftButton);

    m_pLayout->triggerAction("m_pDrawRectAction");
    m_pLayout->drag(QPoint(300, 200), QPoint(400, 300));
    QGraphicsItem* pDrawn = m_pLayout->view()->currentItem();
    QVERIFY(pDrawn && pDrawn != pRectangle);
    QCOMPARE(CVXSItemStyle::of(*pDrawn), style);
    // Ellipses keep theirs.
    m_pLayout->triggerAction("m_pDrawEllipseAction");
    m_pLayout->drag(QPoint(300, 50), QPoint(400, 120));
    QVERIFY(!CVXSItemFigure::of(*m_pLayout->view()->currentItem()).bStyled);

    m_pLayout->view()->selectItem(pDrawn);
    QTest::mouseClick(panelControl<QPushButton>(panel(), "figureResetDefaults"), Qt::LeftButton);
    m_pLayout->triggerAction("m_pDrawRectAction");
    m_pLayout->drag(QPoint(450, 200), QPoint(550, 300));
    QVERIFY(!CVXSItemFigure::of(*m_pLayout->view()->currentItem()).bStyled);
}

void TestLayoutFigureStyle::editDuringADragIsRefused()
{
    QGraphicsItem* pRectangle = m_pLayout->addItem("rectangle", QRectF(100, 100, 100, 80));
    m_pLayout->press(QPoint(150, 140));
    QCOMPARE(m_pController->selectedItem(), pRectangle);
    m_pLayout->move(QPoint(160, 150));
    const int nSteps = m_pLayout->manager()->undoStack()->count();
    typed("figureLineWidth", QStringLiteral("8"))(panel());
    QVERIFY(!CVXSItemFigure::of(*pRectangle).bStyled);
    // The box shows the item's look again.
    QCOMPARE(panelControl<QDoubleSpinBox>(panel(), "figureLineWidth")->value(), 0.0);
    m_pLayout->release(QPoint(160, 150));
    QCOMPARE(m_pLayout->manager()->undoStack()->count(), nSteps + 1);
    QCOMPARE(m_pLayout->manager()->undoStack()->undoText(), QStringLiteral("Move"));
}

// An item the panel never touched keeps the window's own look: a styled item in the
// standard look draws other pixels only where the look differs.
void TestLayoutFigureStyle::standardItemsLookAsBefore()
{
    QGraphicsItem* pRectangle = addOverImage("rectangle");
    select(pRectangle);
    QVERIFY(!CVXSItemFigure::of(*pRectangle).bStyled);
    const CVXSItemStyle standard = CVXSItemStyle::standard(RectangleItemType);
    QCOMPARE(CVXSItemStyle::of(*pRectangle), standard);
    QCOMPARE(standard.fillColour, QColor(Qt::white));
    QCOMPARE(standard.dLineWidth, 0.0);
    QCOMPARE(panelControl<QDoubleSpinBox>(panel(), "figureLineWidth")->specialValueText(), QStringLiteral("Hairline"));
}

QTEST_MAIN(TestLayoutFigureStyle)
#include "tst_layout_figurestyle.moc"
