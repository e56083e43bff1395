// Makes the README's pictures of the host: the samples open, the Image Layout window shown
// with three of them in "Layout 2x2" and a label; with --figure, the same page finished as a
// figure (panel letters and scale bars from the Figure menu) beside the Figure panel
// showing the selected image. The layout tool is built into this program from the plugin's
// sources so that it can fill the page directly.
//
//     QT_QPA_PLATFORM=offscreen build/bin/vxhost_screenshot docs/images/host.png
//     QT_QPA_PLATFORM=offscreen build/bin/vxhost_screenshot --figure docs/images/figure-properties.png

#include <VXImageLayoutPlugin.h>
#include <VXSLayoutConstants.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutItemText.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <VXAppIcon.h>
#include <VXHostMainWindow.h>
#include <VXPixelSize.h>
#include <VXSChildWindow.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGraphicsScene>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTimer>

#include <cstdio>

namespace {

const QSize kMainWindowSize(1560, 900);
constexpr int kLayout2x2 = 3;
// The samples state no pixel size; the figure's scale bars are drawn for 0.1 mm a pixel of
// the pictures pasted.
constexpr double kSamplePixelMm = 0.1;

void fillLayout(CVXSLayoutManager* pManager, const QList<QMdiSubWindow*>& imageWindows)
{
    QComboBox* pStyles = pManager->getLayoutWindow()->layoutStyleCombo();
    pStyles->setCurrentIndex(kLayout2x2);
    emit pStyles->activated(kLayout2x2);
    for (QMdiSubWindow* pSubWindow : imageWindows) {
        auto* pChild = qobject_cast<CVXSChildWindow*>(pSubWindow->widget());
        QImage picture = pChild->grabImage(false).convertToFormat(QImage::Format_ARGB32);
        CVXPixelSize::set(picture, kSamplePixelMm);
        auto* pItem = new CVXSLayoutItemImage(picture);
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

// The window's own actions, or a tool's in the window's menus (the tool keeps those).
QAction* findAction(QWidget& window, const QString& strName)
{
    if (auto* pAction = window.findChild<QAction*>(strName))
        return pAction;
    const QList<QMenu*> menus = window.findChildren<QMenu*>();
    for (QMenu* pMenu : menus) {
        const QList<QAction*> actions = pMenu->actions();
        for (QAction* pAction : actions) {
            if (pAction->objectName() == strName)
                return pAction;
        }
    }
    return nullptr;
}

void trigger(QWidget& window, const char* pObjectName)
{
    if (QAction* pAction = findAction(window, QLatin1String(pObjectName)))
        pAction->trigger();
    else
        std::fprintf(stderr, "no action %s\n", pObjectName);
}

// What a user does from the Figure menu, with the layout window filling the workspace and the
// panel showing the first image.
void finishFigure(QWidget& window, CVXSLayoutManager* pManager)
{
    if (auto* pSubWindow = qobject_cast<QMdiSubWindow*>(pManager->getLayoutWindow()->parentWidget()))
        pSubWindow->showMaximized();
    trigger(window, "actionShow_figureProperties");
    trigger(window, "actionLabelPanels");
    trigger(window, "actionAddScaleBar");
    const QList<QGraphicsItem*> items = pManager->getScene()->items(Qt::AscendingOrder);
    for (QGraphicsItem* pItem : items) {
        if (pItem->type() == VXSLayout::ImageItemType) {
            pManager->getLayoutView()->selectItem(pItem);
            break;
        }
    }
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Vexor"));
    QApplication::setWindowIcon(CVXAppIcon::create());
    const bool bFigure = argc == 3 && qstrcmp(argv[1], "--figure") == 0;
    if (argc != 2 && !bFigure) {
        std::fprintf(stderr, "usage: %s [--figure] OUTPUT.png\n", argv[0]);
        return 2;
    }
    const QString strOutput = QString::fromLocal8Bit(argv[argc - 1]);

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
        if (bFigure)
            finishFigure(window, pTool->layoutManager());
        else
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
