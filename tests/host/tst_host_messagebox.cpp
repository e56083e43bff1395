#include "VXSErrorHandler.h"
#include "VXSImageExporter.h"
#include "VXSMessageBox.h"
#include "VXUtilityFns.h"

#include "MessageBoxAnswer.h"
#include "WidgetTestCase.h"

#include <QPushButton>
#include <QtTest>

#include <cerrno>

namespace {

enum BoxKind { Information, Question, Error };

const QString kEscape = QStringLiteral("<Escape>");

int showBox(int nKind, QWidget* pParent, const QString& strTitle, const QString& strText,
            int nButton0, int nButton1, int nButton2)
{
    switch (nKind) {
    case Information:
        return CVXSMessageBox::information(pParent, strTitle, strText, nButton0, nButton1, nButton2);
    case Question:
        return CVXSMessageBox::question(pParent, strTitle, strText, nButton0, nButton1, nButton2);
    default:
        return CVXSMessageBox::error(pParent, strTitle, strText, nButton0, nButton1, nButton2);
    }
}

MessageBoxAnswer answerFor(int nStandardButton)
{
    return nStandardButton == QMessageBox::NoButton
               ? pressEscape()
               : clickStandardButton(QMessageBox::StandardButton(nStandardButton));
}

QString standardButtonText(QMessageBox::StandardButton button)
{
    QMessageBox probe;
    return probe.addButton(button)->text();
}

} // namespace

class TestHostMessageBox : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void standardButtons_data();
    void standardButtons();
    void warning_data();
    void warning();
    void closedWithoutButtonGivesMinusOne();
    void errorMessage_data();
    void errorMessage();
};

void TestHostMessageBox::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Vx Test Host"));
}

void TestHostMessageBox::standardButtons_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("button0");
    QTest::addColumn<int>("button1");
    QTest::addColumn<int>("button2");
    QTest::addColumn<int>("press"); // NoButton: press Escape
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("icon");

    const int ok = QMessageBox::Ok;
    const int cancel = QMessageBox::Cancel;
    const int yes = QMessageBox::Yes;
    const int no = QMessageBox::No;
    const int def = QMessageBox::Default;
    const int esc = QMessageBox::Escape;
    const int none = QMessageBox::NoButton;

    QTest::newRow("information, press button 0")
        << int(Information) << (ok | def) << cancel << none << ok << 0 << int(QMessageBox::Information);
    QTest::newRow("information, press button 1")
        << int(Information) << (ok | def) << (cancel | esc) << none << cancel << 1 << int(QMessageBox::Information);
    QTest::newRow("information, Escape on button 1")
        << int(Information) << (ok | def) << (cancel | esc) << none << none << 1 << int(QMessageBox::Information);
    QTest::newRow("question, press button 0")
        << int(Question) << (yes | def) << no << (cancel | esc) << yes << 0 << int(QMessageBox::Question);
    QTest::newRow("question, press button 1")
        << int(Question) << (yes | def) << no << (cancel | esc) << no << 1 << int(QMessageBox::Question);
    QTest::newRow("question, press button 2")
        << int(Question) << (yes | def) << no << (cancel | esc) << cancel << 2 << int(QMessageBox::Question);
    QTest::newRow("question, Escape on button 0")
        << int(Question) << (no | esc) << (yes | def) << cancel << none << 0 << int(QMessageBox::Question);
    QTest::newRow("error, press button 0")
        << int(Error) << int(QMessageBox::Retry) << (int(QMessageBox::Abort) | esc) << int(QMessageBox::Ignore)
        << int(QMessageBox::Retry) << 0 << int(QMessageBox::Critical);
    QTest::newRow("error, press button 2")
        << int(Error) << int(QMessageBox::Retry) << (int(QMessageBox::Abort) | esc) << int(QMessageBox::Ignore)
        << int(QMessageBox::Ignore) << 2 << int(QMessageBox::Critical);
    QTest::newRow("error, Escape on button 1")
        << int(Error) << int(QMessageBox::Retry) << (int(QMessageBox::Abort) | esc) << int(QMessageBox::Ignore)
        << none << 1 << int(QMessageBox::Critical);
}

void TestHostMessageBox::standardButtons()
{
    QFETCH(int, kind);
    QFETCH(int, button0);
    QFETCH(int, button1);
    QFETCH(int, button2);
    QFETCH(int, press);
    QFETCH(int, expected);
    QFETCH(int, icon);

    QWidget parent;
    const QString strTitle = QStringLiteral("Title of ") + QLatin1String(QTest::currentDataTag());
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, answerFor(press));

    const int nResult = showBox(kind, &parent, strTitle, QStringLiteral("Body text"), button0, button1, button2);

    QVERIFY(seen.m_bShown);
    QVERIFY(seen.m_bClosedByAnswer);
    QCOMPARE(nResult, expected);
    QCOMPARE(seen.m_pParent, &parent);
    QCOMPARE(seen.m_strTitle, strTitle);
    QCOMPARE(seen.m_strText, QStringLiteral("Body text"));
    QCOMPARE(int(seen.m_icon), icon);
    QCOMPARE(seen.m_buttonTexts.size(), button2 == QMessageBox::NoButton ? 2 : 3);
    for (int nButton : {button0, button1, button2}) {
        const auto standard = QMessageBox::StandardButton(nButton & QMessageBox::ButtonMask);
        if (nButton & QMessageBox::Default)
            QCOMPARE(seen.m_strDefaultButton, standardButtonText(standard));
        if (nButton & QMessageBox::Escape)
            QCOMPARE(seen.m_strEscapeButton, standardButtonText(standard));
    }
}

void TestHostMessageBox::warning_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<int>("defaultButton");
    QTest::addColumn<int>("escapeButton");
    QTest::addColumn<QString>("press"); // a button's text or kEscape
    QTest::addColumn<int>("expected");
    QTest::addColumn<QStringList>("shownButtons");

    const QStringList three = {QStringLiteral("Save"), QStringLiteral("Discard"), QStringLiteral("Cancel")};
    const QString strOk = standardButtonText(QMessageBox::Ok);

    QTest::newRow("press button 0") << three << 0 << 2 << QStringLiteral("Save") << 0 << three;
    QTest::newRow("press button 1") << three << 0 << 2 << QStringLiteral("Discard") << 1 << three;
    QTest::newRow("press button 2") << three << 0 << 2 << QStringLiteral("Cancel") << 2 << three;
    QTest::newRow("Escape on button 2") << three << 0 << 2 << kEscape << 2 << three;
    QTest::newRow("Escape on button 0")
        << QStringList{QStringLiteral("Keep"), QStringLiteral("Replace"), QString()} << 1 << 0 << kEscape << 0
        << QStringList{QStringLiteral("Keep"), QStringLiteral("Replace")};
    QTest::newRow("no texts, press OK")
        << QStringList{QString(), QString(), QString()} << 0 << -1 << strOk << 0 << QStringList{strOk};
    QTest::newRow("no texts, Escape answers OK")
        << QStringList{QString(), QString(), QString()} << 0 << -1 << kEscape << 0 << QStringList{strOk};
    QTest::newRow("single text, Escape answers it")
        << QStringList{QStringLiteral("Close"), QString(), QString()} << -1 << -1 << kEscape << 0
        << QStringList{QStringLiteral("Close")};
}

void TestHostMessageBox::warning()
{
    QFETCH(QStringList, texts);
    QFETCH(int, defaultButton);
    QFETCH(int, escapeButton);
    QFETCH(QString, press);
    QFETCH(int, expected);
    QFETCH(QStringList, shownButtons);

    QWidget parent;
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, press == kEscape ? pressEscape() : clickButtonWithText(press));

    const int nResult = CVXSMessageBox::warning(&parent, QStringLiteral("Careful"), QStringLiteral("Overwrite?"),
                                                texts.at(0), texts.at(1), texts.at(2), defaultButton,
                                                escapeButton);

    QVERIFY(seen.m_bShown);
    QVERIFY(seen.m_bClosedByAnswer);
    QCOMPARE(nResult, expected);
    QCOMPARE(seen.m_pParent, &parent);
    QCOMPARE(seen.m_strTitle, QStringLiteral("Careful"));
    QCOMPARE(seen.m_icon, QMessageBox::Warning);
    QCOMPARE(seen.m_buttonTexts, shownButtons);
    QCOMPARE(seen.m_strDefaultButton, defaultButton < 0 ? QString() : shownButtons.at(defaultButton));
    QCOMPARE(seen.m_strEscapeButton, escapeButton < 0 ? QString() : shownButtons.at(escapeButton));
}

void TestHostMessageBox::closedWithoutButtonGivesMinusOne()
{
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, [](QMessageBox* pBox) { pBox->reject(); });

    const int nResult = CVXSMessageBox::warning(nullptr, QStringLiteral("Careful"), QStringLiteral("Go on?"),
                                                QStringLiteral("Yes"), QStringLiteral("No"));

    QVERIFY(seen.m_bShown);
    QCOMPARE(nResult, -1);
}

void TestHostMessageBox::errorMessage_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("extra");
    QTest::addColumn<QString>("expectedText");

    QTest::newRow("with extra text")
        << int(eSTATUS_DISK_FULL) << QStringLiteral("layout.png could not be saved.")
        << vxStatusText(eSTATUS_DISK_FULL) + QStringLiteral("\nlayout.png could not be saved.");
    QTest::newRow("without extra text")
        << int(eSTATUS_PRINTER_NOT_STARTED) << QString() << vxStatusText(eSTATUS_PRINTER_NOT_STARTED);

    // A failed export: the status first, then the exporter's detail with the system's reason.
    QTemporaryDir dir;
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::white);
    QString strPath = dir.filePath(QStringLiteral("missing/figure.png"));
    CVXSImageExporter exporter;
    const tag_estatus status = exporter.saveImage(image, strPath);
    QTest::newRow("export failure with its reason")
        << int(status) << exporter.errorText()
        << vxStatusText(eSTATUS_INVALID_PATH) + QStringLiteral("\nCould not write %1: %2").arg(strPath, qt_error_string(ENOENT));
}

void TestHostMessageBox::errorMessage()
{
    QFETCH(int, status);
    QFETCH(QString, extra);
    QFETCH(QString, expectedText);

    QWidget parent;
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));

    CVXSErrorHandler::errorMessage(&parent, tag_estatus(status), extra);

    QVERIFY(seen.m_bShown);
    QVERIFY(seen.m_bClosedByAnswer);
    QCOMPARE(seen.m_pParent, &parent);
    QCOMPARE(seen.m_strTitle, CVXUtilityFns::getAppName());
    QCOMPARE(seen.m_strText, expectedText);
    QCOMPARE(seen.m_icon, QMessageBox::Critical);
    QCOMPARE(seen.m_buttonTexts, QStringList{standardButtonText(QMessageBox::Ok)});
}

QTEST_MAIN(TestHostMessageBox)
#include "tst_host_messagebox.moc"
