#include "HostFixture.h"
#include "MessageBoxAnswer.h"
#include "TestDicomFiles.h"
#include "WidgetTestCase.h"

#include <VXHostMainWindow.h>
#include <VXPixelSize.h>
#include <VXSChildWindow.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QtTest>

#include <dcmtk/dcmdata/dcdeftag.h>

namespace {

const QSize SourceSize(400, 300);
constexpr double PixelMm = 0.05;

QAction* figureCommand(const CHostFixture& host, const char* pName)
{
    const QMenu* pFigure = host.window()->menuBar()->findChild<QMenu*>(QStringLiteral("menuFigure"));
    for (QAction* pAction : pFigure ? pFigure->actions() : QList<QAction*>()) {
        if (pAction->objectName() == QLatin1String(pName))
            return pAction;
    }
    return nullptr;
}

// The columns of the picture's middle row that are brighter than the window's background:
// the width the image is drawn at.
int brightWidth(const QImage& picture)
{
    int nBright = 0;
    for (int x = 0; x < picture.width(); ++x)
        nBright += qGray(picture.pixel(x, picture.height() / 2)) > 128 ? 1 : 0;
    return nBright;
}

} // namespace

// A DICOM image's pixel size goes with it from the host's image window into the layout, where
// the host's Figure menu puts a scale bar on it.
class TestAppScaleBar : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void displayedGrabKeepsTheObjectsWidth();
    void pastedImageTakesAScaleBarFromTheFigureMenu();

private:
    QString dicomPath() const;

    QTemporaryDir m_dir;
};

void TestAppScaleBar::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
    CTestDicomFiles::SHeader header;
    header.size = SourceSize;
    header.attributes = {{DCM_PixelSpacing, "0.05\\0.05"}};
    // Bright throughout but for one dark pixel, which gives the grey range its bottom.
    QVector<quint16> samples(SourceSize.width() * SourceSize.height(), 250);
    samples[0] = 0;
    QVERIFY(CTestDicomFiles::write(dicomPath(), header, samples));
}

QString TestAppScaleBar::dicomPath() const
{
    return m_dir.filePath(QStringLiteral("mouse.dcm"));
}

void TestAppScaleBar::displayedGrabKeepsTheObjectsWidth()
{
    CHostFixture host;
    QVERIFY(QTest::qWaitForWindowExposed(host.window()));
    host.window()->openImageFiles({dicomPath()});
    QTRY_VERIFY(host.imageWindow(0) != nullptr);
    CVXSChildWindow* pWindow = host.imageWindow(0);
    QCOMPARE(CVXPixelSize::of(pWindow->grabImage(false)), PixelMm);
    // Drawn smaller than the source, each pixel of the picture covers more of the object, and
    // the image as drawn still spans 20 mm.
    pWindow->parentWidget()->resize(300, 260);
    QTRY_VERIFY(brightWidth(pWindow->grabImage(true)) < SourceSize.width());
    const QImage displayed = pWindow->grabImage(true);
    const double dSpanMm = CVXPixelSize::of(displayed) * brightWidth(displayed);
    QVERIFY2(qAbs(dSpanMm - PixelMm * SourceSize.width()) <= PixelMm * SourceSize.width() * 0.01,
             qPrintable(QStringLiteral("%1 mm").arg(dSpanMm)));
}

void TestAppScaleBar::pastedImageTakesAScaleBarFromTheFigureMenu()
{
    CHostFixture host;
    QVERIFY(QTest::qWaitForWindowExposed(host.window()));
    host.window()->openImageFiles({dicomPath()});
    QTRY_VERIFY(host.imageWindow(0) != nullptr);
    QMdiSubWindow* pImage = host.imageSubWindows().first();

    CVXUtilityFns::getAction(QStringLiteral("Image Layout Window"))->trigger();
    QMdiSubWindow* pLayoutSubWindow = host.layoutSubWindow();
    QVERIFY(pLayoutSubWindow && pLayoutSubWindow->isVisible());
    host.area()->setActiveSubWindow(pImage);
    host.area()->setActiveSubWindow(pLayoutSubWindow);
    auto* pPaste = pLayoutSubWindow->widget()->findChild<QAction*>(QStringLiteral("m_pPasteActiveDSetAction"));
    QVERIFY(pPaste && pPaste->isEnabled());
    pPaste->trigger();
    QTRY_COMPARE(host.layoutItemCount(), 1);

    // Figure > Add Scale Bar, on the image the paste left selected: measured from the pixel
    // size the image brought along, so no message asks for one, and the step is the layout's.
    QAction* pAdd = figureCommand(host, "actionAddScaleBar");
    QVERIFY(pAdd);
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
    pAdd->trigger();
    QTRY_COMPARE(host.action(QStringLiteral("actionUndo"))->text(), QStringLiteral("&Undo Add Scale Bar"));
    QVERIFY2(!seen.m_bShown, qPrintable(seen.m_strText));
}

QTEST_MAIN(TestAppScaleBar)
#include "tst_app_scalebar.moc"
