#include "HostFixture.h"

#include "FileDialogAnswer.h"
#include "FileDialogTyping.h"
#include "WidgetTestCase.h"

#include <VXHostMainWindow.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QGraphicsView>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QToolBar>
#include <QtTest>

namespace {

const QString kEntry = QStringLiteral("Image Layout Window");
const QSize kImageSize(240, 180);
const QColor kColours[] = {Qt::red, Qt::green, Qt::blue};
// Numbered: the dialog hands chosen files over in the order of its list, which is then the
// order typed.
const char* const kNames[] = {"1-red.png", "2-green.png", "3-blue.png"};
// The export renders the page at four times its size.
constexpr int kExportScale = 4;

// The label lands at a random place on the page and may cover a few of these points.
bool isMostlyColour(const QImage& image, QPoint centre, const QColor& colour)
{
    const int nStep = 25 * kExportScale;
    int nMatching = 0;
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx)
            nMatching += image.pixelColor(centre + QPoint(dx, dy) * nStep) == colour ? 1 : 0;
    }
    return nMatching >= 7;
}

bool isNearlyBlack(QRgb pixel)
{
    return qRed(pixel) < 80 && qGreen(pixel) < 80 && qBlue(pixel) < 80;
}

// Clicks the tool button that shows the action in the layout window's toolbar.
void clickToolbarAction(QWidget* pLayoutWindow, const char* pActionName)
{
    auto* pAction = pLayoutWindow->findChild<QAction*>(QString::fromLatin1(pActionName));
    QVERIFY2(pAction, pActionName);
    QWidget* pButton = nullptr;
    const QList<QToolBar*> toolbars = pLayoutWindow->findChildren<QToolBar*>();
    for (QToolBar* pToolbar : toolbars)
        pButton = pButton ? pButton : pToolbar->widgetForAction(pAction);
    QVERIFY2(pButton && pButton->isEnabled(), pActionName);
    QTest::mouseClick(pButton, Qt::LeftButton);
}

} // namespace

// The whole way a user goes: open images in the host, open the layout window from the
// Tools menu, paste three images into "Layout 2x2", add a label, export the page as PNG.
class TestAppEndToEnd : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void layoutOfThreeImagesExportedAsPng();

private:
    // The home folder of a new machine: no Pictures folder, no settings, no dialog history.
    QTemporaryDir m_home;
    QTemporaryDir m_dir;
};

void TestAppEndToEnd::initTestCase()
{
    QVERIFY(m_home.isValid());
    qputenv("HOME", QFile::encodeName(m_home.path()));
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
    for (int i = 0; i < 3; ++i) {
        QImage image(kImageSize, QImage::Format_RGB32);
        image.fill(kColours[i]);
        QVERIFY(image.save(m_dir.filePath(QString::fromLatin1(kNames[i]))));
    }
}

void TestAppEndToEnd::layoutOfThreeImagesExportedAsPng()
{
    CHostFixture host;
    QVERIFY(QTest::qWaitForWindowExposed(host.window()));

    // File > Open Images, the three files chosen together.
    answerNextFileDialog([this](QFileDialog* pFiles) {
        pFiles->setDirectory(m_dir.path());
        // Typed into the file name box, each name quoted, as the user does to pick several files.
        QStringList quoted;
        for (const char* pName : kNames)
            quoted << QLatin1Char('"') + QString::fromLatin1(pName) + QLatin1Char('"');
        QVERIFY(typeIntoFileDialog(pFiles, quoted.join(QLatin1Char(' '))));
    });
    host.action(QStringLiteral("actionOpenImages"))->trigger();
    QCOMPARE(host.imageWindowTitles().size(), 3);

    // Tools > Image Layout Window.
    QMenu* pTools = host.window()->menuBar()->findChild<QMenu*>(QStringLiteral("menuTools"));
    QAction* pEntry = CVXUtilityFns::getAction(kEntry);
    QVERIFY(pTools->actions().contains(pEntry));
    pEntry->trigger();
    QMdiSubWindow* pLayoutSubWindow = host.layoutSubWindow();
    QVERIFY(pLayoutSubWindow && pLayoutSubWindow->isVisible());
    QWidget* pLayoutWindow = pLayoutSubWindow->widget();

    auto* pStyles = pLayoutWindow->findChild<QComboBox*>(QStringLiteral("m_pLayoutStyleCombo"));
    QVERIFY(pStyles);
    const int nStyle = pStyles->findText(QStringLiteral("Layout 2x2"));
    QVERIFY(nStyle > 0);
    pStyles->setCurrentIndex(nStyle);
    emit pStyles->activated(nStyle);

    // Each image window in turn made active, then "Paste Active Dataset".
    const QList<QMdiSubWindow*> images = host.imageSubWindows();
    for (QMdiSubWindow* pImage : images) {
        host.area()->setActiveSubWindow(pImage);
        host.area()->setActiveSubWindow(pLayoutSubWindow);
        clickToolbarAction(pLayoutWindow, "m_pPasteActiveDSetAction");
    }

    // A label typed into the annotation box.
    auto* pAnnotation = pLayoutWindow->findChild<QLineEdit*>(QStringLiteral("m_pAnnotationEdit"));
    QVERIFY(pAnnotation);
    QTest::keyClicks(pAnnotation, QStringLiteral("Mouse 3, day 7"));
    QTest::keyClick(pAnnotation, Qt::Key_Return);

    // Export, the PNG format chosen and the name typed into the folder the dialog proposes.
    // On a new machine that is the home folder, with nothing proposed as the file name.
    QString strExport;
    QString strProposedName;
    bool bDialogSeen = false;
    answerNextFileDialog(
        [&strExport, &strProposedName](QFileDialog* pFiles) {
            strProposedName = pFiles->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text();
            for (const QString& strFilter : pFiles->nameFilters()) {
                if (strFilter.contains(QStringLiteral("png"), Qt::CaseInsensitive))
                    pFiles->selectNameFilter(strFilter);
            }
            strExport = pFiles->directory().filePath(QStringLiteral("layout.png"));
            typeIntoFileDialog(pFiles, QStringLiteral("layout.png"));
        },
        &bDialogSeen);
    clickToolbarAction(pLayoutWindow, "m_pExportAction");
    QVERIFY(bDialogSeen);
    QCOMPARE(strProposedName, QString());
    QCOMPARE(QFileInfo(strExport).dir().canonicalPath(), QDir(m_home.path()).canonicalPath());
    QTRY_VERIFY2(QFile::exists(strExport), qPrintable(QDir(m_home.path()).entryList(QDir::Files).join(u' ')));

    QImage exported(strExport);
    QVERIFY(!exported.isNull());
    const QGraphicsView* pView = pLayoutWindow->findChild<QGraphicsView*>();
    const QSizeF page = pView->scene()->sceneRect().size();
    QVERIFY2(qAbs(exported.width() - (page.width() + 1) * kExportScale) <= kExportScale
                 && qAbs(exported.height() - (page.height() + 1) * kExportScale) <= kExportScale,
             qPrintable(QStringLiteral("%1x%2 for a page of %3x%4")
                            .arg(exported.width()).arg(exported.height())
                            .arg(page.width()).arg(page.height())));
    // The images fill the first three cells, row by row, each centred in its cell.
    for (int nCell = 0; nCell < 3; ++nCell) {
        const QPoint centre(exported.width() * (2 * (nCell % 2) + 1) / 4,
                            exported.height() * (2 * (nCell / 2) + 1) / 4);
        QVERIFY2(isMostlyColour(exported, centre, kColours[nCell]), qPrintable(QString::number(nCell)));
    }
    // The fourth cell is empty page.
    QVERIFY(isMostlyColour(exported, QPoint(exported.width() * 3 / 4, exported.height() * 3 / 4), Qt::white));
    // The label's letters are the only black beside the page's border line.
    int nBlack = 0;
    for (int y = 1; y < exported.height(); ++y) {
        for (int x = 1; x < exported.width(); ++x)
            nBlack += isNearlyBlack(exported.pixel(x, y)) ? 1 : 0;
    }
    QVERIFY2(nBlack > 200, qPrintable(QString::number(nBlack)));
}

QTEST_MAIN(TestAppEndToEnd)
#include "tst_app_endtoend.moc"
