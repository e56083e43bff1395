// Makes the README's picture of the host: the samples open, the Image Layout window shown
// with three of them in "Layout 2x2" and a label. The layout tool is built into this
// program from the plugin's sources so that it can fill the page directly.
//
//     QT_QPA_PLATFORM=offscreen build/bin/vxhost_screenshot docs/images/host.png

#include <VXImageLayoutPlugin.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutItemText.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <VXAppIcon.h>
#include <VXHostMainWindow.h>
#include <VXSChildWindow.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTimer>

#include <cstdio>

namespace {

const QSize kMainWindowSize(1560, 900);
constexpr int kLayout2x2 = 3;

void fillLayout(CVXSLayoutManager* pManager, const QList<QMdiSubWindow*>& imageWindows)
{
    QComboBox* pStyles = pManager->getLayoutWindow()->layoutStyleCombo();
    pStyles->setCurrentIndex(kLayout2x2);
    emit pStyles->activated(kLayout2x2);
    for (QMdiSubWindow* pSubWindow : imageWindows) {
        auto* pChild = qobject_cast<CVXSChildWindow*>(pSubWindow->widget());
        auto* pItem = new CVXSLayoutItemImage(pChild->grabImage(false).convertToFormat(QImage::Format_ARGB32));
        pManager->getScene()->addItem(pItem);
        pManager->addImageItem(pItem, true);
    }
    // A label in the free fourth cell.
    QRect cell;
    pManager->getCellRect(3, cell, false);
    auto* pLabel = new CVXSLayoutItemText(QStringLiteral("Mouse 3, day 7"));
    pLabel->setRect(QRectF(cell).adjusted(20, cell.height() / 3.0, -20, -cell.height() / 3.0));
    pLabel->setFont(QFont(QStringLiteral("DejaVu Sans"), 16));
    pManager->getScene()->addItem(pLabel);
    pLabel->setZValue(pManager->getLayoutView()->nextZ());
    pManager->getLayoutView()->setTopZ(int(pLabel->zValue()));
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Vexor"));
    QApplication::setWindowIcon(CVXAppIcon::create());
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s OUTPUT.png\n", argv[0]);
        return 2;
    }
    const QString strOutput = QString::fromLocal8Bit(argv[1]);

    CVXHostMainWindow window;
    window.resize(kMainWindowSize);
    window.show();
    auto* pTool = new CVXImageLayoutPlugin;
    window.attachTool(pTool); // the window owns it
    int nResult = 1;
    QTimer::singleShot(0, &window, [&] {
        window.openSamples();
        const QList<QMdiSubWindow*> imageWindows = window.mdiArea()->subWindowList(QMdiArea::CreationOrder);
        CVXUtilityFns::getAction(pTool->getToolName())->trigger();
        fillLayout(pTool->layoutManager(), imageWindows);
        window.findChild<QAction*>(QStringLiteral("actionTile"))->trigger();
        // Let the view lay the page out at its shown size before taking the picture.
        QTimer::singleShot(200, &window, [&] {
            nResult = window.grab().save(strOutput) ? 0 : 1;
            if (nResult != 0)
                std::fprintf(stderr, "cannot write %s\n", qPrintable(strOutput));
            QApplication::quit();
        });
    });
    QApplication::exec();
    return nResult;
}
