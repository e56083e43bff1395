#include "VXHostMainWindow.h"

#include "VXDocumentMenus.h"
#include "VXFileDrops.h"
#include "VXFileOpener.h"
#include "VXHelpMenu.h"
#include "VXRecentFilesMenu.h"
#include "VXSampleData.h"
#include "VXToolPanels.h"
#include "VXToolPluginLoader.h"
#include "VXToolWindowPlacement.h"

#include <VXImageFileReader.h>
#include <VXImageWindowing.h>
#include <VXPreference.h>
#include <VXSChildWindow.h>
#include <VXSDataset.h>
#include <VXSMdiSubWindow.h>
#include <VXSMessageBox.h>
#include <VXSSequenceDataset.h>
#include <VXSSequenceWindow.h>
#include <VXSSettings.h>
#include <VXSWorkspace.h>
#include <VXSubWindowGeometry.h>
#include <VXToolPluginBase.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QMdiArea>
#include <QMenuBar>
#include <QStyle>
#include <QtMath>

#include <algorithm>

namespace {
// A workspace that has not been laid out yet reports a tiny viewport; windows get at
// least this much room.
const QSize kMinimumRoom(640, 480);
// Tiny images get a window the user can still grab; the image window scales them up.
const QSize kSmallestContent(200, 150);
const QString kGeometryKey = QStringLiteral("MainWindow/geometry");

// The largest of the four bands of the room beside the obstacle.
QRect largestBandBeside(const QRect& room, const QRect& obstacle)
{
    const QRect bands[] = {
        QRect(room.topLeft(), QPoint(obstacle.left() - 1, room.bottom())),
        QRect(QPoint(obstacle.right() + 1, room.top()), room.bottomRight()),
        QRect(room.topLeft(), QPoint(room.right(), obstacle.top() - 1)),
        QRect(QPoint(room.left(), obstacle.bottom() + 1), room.bottomRight()),
    };
    QRect best;
    for (const QRect& band : bands) {
        const QRect inside = band.intersected(room);
        if (inside.isValid() && qint64(inside.width()) * inside.height() > qint64(best.width()) * best.height())
            best = inside;
    }
    return best;
}

} // namespace

CVXHostMainWindow::CVXHostMainWindow(QWidget* pParent)
    : QMainWindow(pParent)
    , m_pArea(new QMdiArea(this))
{
    setObjectName(QStringLiteral("CVXHostMainWindow"));
    setWindowTitle(CVXUtilityFns::getAppName());
    m_pArea->setObjectName(QStringLiteral("mdiArea"));
    setCentralWidget(m_pArea);
    CVXSWorkspace::instance()->setMdiArea(m_pArea);

    m_pDocumentMenus = new CVXDocumentMenus(m_tools, m_pArea, this);
    m_pFileOpener = new CVXFileOpener(m_tools, this);
    m_pRecentFiles = new CVXRecentFilesMenu(*CVXPreference::getSettings(), this);
    connect(m_pFileOpener, &CVXFileOpener::fileOpened, m_pRecentFiles, &CVXRecentFilesMenu::addFile);
    connect(m_pDocumentMenus, &CVXDocumentMenus::documentFileUsed, m_pRecentFiles, &CVXRecentFilesMenu::addFile);
    connect(m_pRecentFiles, &CVXRecentFilesMenu::fileChosen, this, [this](const QString& strPath) { openFiles({strPath}); });
    new CVXFileDrops(this, m_pFileOpener);
    new CVXToolWindowPlacement(*CVXPreference::getSettings(), m_pArea, this);
    QMenu* pFileMenu = createFileMenu();
    createEditMenu();
    createToolsMenu();
    createWindowMenu();
    new CVXHelpMenu(m_tools, menuBar(), this);
    // Tools' file commands go before the recent files.
    QAction* pRecent = pFileMenu->findChild<QAction*>(QStringLiteral("actionOpenRecent"));
    m_pToolPanels = new CVXToolPanels(*this, pFileMenu, pRecent, m_pToolsMenu->menuAction());
}

CVXHostMainWindow::~CVXHostMainWindow()
{
    // Tools delete their sub-windows themselves, so they have to go while the area still
    // holds those sub-windows.
    m_tools.clear();
    // The area's last activations must not rebuild a menu that is going.
    disconnect(m_pArea, nullptr, this, nullptr);
    if (CVXSWorkspace::instance()->mdiArea() == m_pArea)
        CVXSWorkspace::instance()->setMdiArea(nullptr);
}

QMdiArea* CVXHostMainWindow::mdiArea() const
{
    return m_pArea;
}

QStringList CVXHostMainWindow::openImageFiles(const QStringList& paths, QStringList failures)
{
    QStringList opened;
    for (const QString& strPath : paths) {
        const QVector<CVXImagePage> pages = readFile(strPath, failures);
        if (pages.isEmpty())
            continue;
        addImageWindow(newImageWindow(pages, false), pages.first().picture.size(), QFileInfo(strPath).fileName());
        opened << strPath;
    }
    reportUnreadable(failures, QString());
    return opened;
}

void CVXHostMainWindow::openFiles(const QStringList& paths)
{
    m_pFileOpener->open(paths);
}

void CVXHostMainWindow::openSequenceFiles(const QStringList& paths)
{
    QStringList failures;
    QVector<CVXImagePage> frames;
    for (const QString& strPath : paths)
        frames += readFile(strPath, failures);
    if (!failures.isEmpty()) {
        reportUnreadable(failures, tr("The sequence was not opened."));
        return;
    }
    if (frames.isEmpty())
        return;
    const QString strFirst = QFileInfo(paths.first()).fileName();
    const QString strTitle = paths.size() == 1 ? strFirst : tr("%1 (%n files)", nullptr, paths.size()).arg(strFirst);
    addImageWindow(newImageWindow(frames, true), frames.first().picture.size(), strTitle);
}

void CVXHostMainWindow::openSamples()
{
    const QImage xrayCounts = CVXSampleData::xrayPhantom();
    const QImage xray = CVXImageWindowing::toDisplay(xrayCounts);
    addImageWindow(newImageWindow({{xray, xrayCounts}}, false), xray.size(), tr("Sample X-ray"));
    const QImage luminescence = CVXSampleData::luminescence();
    addImageWindow(new CVXSChildWindow(luminescence), luminescence.size(), tr("Sample Luminescence"));
    const QVector<QImage> fluorescence = CVXSampleData::fluorescenceSequence();
    addImageWindow(new CVXSSequenceWindow(fluorescence), fluorescence.first().size(),
                   tr("Sample Fluorescence Sequence"));
}

void CVXHostMainWindow::showWithLastGeometry()
{
    const QByteArray geometry = CVXPreference::getSettings()->value(kGeometryKey).toByteArray();
    if (geometry.isEmpty() || !restoreGeometry(geometry)) {
        showMaximized();
        return;
    }
    show();
}

void CVXHostMainWindow::loadToolPlugins(const QStringList& folders)
{
    QStringList failures;
    const QVector<CVXToolPluginBase*> plugins = CVXToolPluginLoader::load(folders, failures);
    for (CVXToolPluginBase* pPlugin : plugins)
        attachTool(pPlugin);
    if (failures.isEmpty())
        return;
    CVXSMessageBox::warning(this, CVXUtilityFns::getAppName(),
                            tr("These tool plugins could not be loaded:") + QStringLiteral("\n\n")
                                + failures.join(QLatin1Char('\n')),
                            QString());
}

void CVXHostMainWindow::attachTool(CVXToolPluginBase* pTool)
{
    // A plugin library loaded again gives the object it gave before.
    const auto attached = [pTool](const std::unique_ptr<CVXToolPluginBase>& pOwned) { return pOwned.get() == pTool; };
    if (std::any_of(m_tools.cbegin(), m_tools.cend(), attached))
        return;
    m_tools.emplace_back(pTool);
    m_pToolPanels->attach(*pTool);
    const CVXSWorkspace* pWorkspace = CVXSWorkspace::instance();
    connect(pWorkspace, &CVXSWorkspace::datasetChanged, pTool, &CVXToolPluginBase::onSignalDatasetChanged);
    connect(pWorkspace, &CVXSWorkspace::datasetRemoved, pTool, &CVXToolPluginBase::onSignalDatasetRemoved);
    connect(pWorkspace, &CVXSWorkspace::sequenceAdded, pTool, &CVXToolPluginBase::onSignalSequenceAdded);
    connect(pWorkspace, &CVXSWorkspace::sequenceChanged, pTool, &CVXToolPluginBase::onSignalSequenceChanged);
    connect(pWorkspace, &CVXSWorkspace::sequenceRemoved, pTool, &CVXToolPluginBase::onSignalSequenceRemoved);
    // Asking for the entry makes the tool announce it, which lands it in the Tools menu.
    m_pDocumentMenus->updateFileActions();
    QAction* pAction = pTool->getToolAction();
    if (!pAction)
        return;
    connect(pAction, &QAction::toggled, pTool, [pTool] {
        // Tools build their windows on first use; later calls return at once.
        if (pTool->initializeTool())
            pTool->onToolActionToggled();
    });
}

void CVXHostMainWindow::offerRecovery()
{
    m_pDocumentMenus->offerRecovery();
}

void CVXHostMainWindow::showDocumentTools()
{
    for (const std::unique_ptr<CVXToolPluginBase>& pTool : m_tools) {
        QAction* pAction = pTool->hasDocuments() ? pTool->getToolAction() : nullptr;
        if (pAction)
            pAction->setChecked(true);
    }
}

void CVXHostMainWindow::closeEvent(QCloseEvent* pEvent)
{
    if (!m_pDocumentMenus->queryClose()) {
        pEvent->ignore();
        return;
    }
    CVXPreference::getSettings()->setValue(kGeometryKey, saveGeometry());
    m_pToolPanels->saveVisibility();
    CVXPreference::getSettings()->sync();
    QMainWindow::closeEvent(pEvent);
}

QMenu* CVXHostMainWindow::createFileMenu()
{
    QMenu* pMenu = menuBar()->addMenu(tr("&File"));
    pMenu->setObjectName(QStringLiteral("menuFile"));
    QAction* pOpen = addMenuAction(pMenu, QStringLiteral("actionOpenImages"), tr("&Open Images..."));
    pOpen->setShortcut(QKeySequence::Open);
    connect(pOpen, &QAction::triggered, this, &CVXHostMainWindow::chooseImageFiles);
    connect(addMenuAction(pMenu, QStringLiteral("actionOpenSequence"), tr("Open &Sequence...")),
            &QAction::triggered, this, &CVXHostMainWindow::chooseSequenceFiles);
    connect(addMenuAction(pMenu, QStringLiteral("actionOpenSamples"), tr("Open Samples")),
            &QAction::triggered, this, &CVXHostMainWindow::openSamples);
    pMenu->addSeparator();
    m_pDocumentMenus->addFileActions(pMenu);
    pMenu->addSeparator();
    m_pRecentFiles->addTo(pMenu);
    pMenu->addSeparator();
    QAction* pQuit = addMenuAction(pMenu, QStringLiteral("actionQuit"), tr("&Quit"));
    pQuit->setShortcut(QKeySequence::Quit);
    connect(pQuit, &QAction::triggered, this, &QWidget::close);
    return pMenu;
}

void CVXHostMainWindow::createEditMenu()
{
    QMenu* pMenu = menuBar()->addMenu(tr("&Edit"));
    pMenu->setObjectName(QStringLiteral("menuEdit"));
    m_pDocumentMenus->fillEditMenu(pMenu);
}

void CVXHostMainWindow::createToolsMenu()
{
    m_pToolsMenu = menuBar()->addMenu(tr("&Tools"));
    m_pToolsMenu->setObjectName(QStringLiteral("menuTools"));
    connect(CVXSWorkspace::instance(), &CVXSWorkspace::toolActionAnnounced, this,
            &CVXHostMainWindow::addToolAction);
}

void CVXHostMainWindow::createWindowMenu()
{
    m_pWindowMenu = menuBar()->addMenu(tr("&Window"));
    m_pWindowMenu->setObjectName(QStringLiteral("menuWindow"));
    connect(addMenuAction(m_pWindowMenu, QStringLiteral("actionTile"), tr("&Tile")), &QAction::triggered, this,
            &CVXHostMainWindow::tileWindows);
    connect(addMenuAction(m_pWindowMenu, QStringLiteral("actionCascade"), tr("&Cascade")), &QAction::triggered,
            this, &CVXHostMainWindow::cascadeWindows);
    m_pWindowMenu->addSeparator();
    m_pWindowList = new QActionGroup(this);
    connect(m_pWindowMenu, &QMenu::aboutToShow, this, &CVXHostMainWindow::updateWindowMenu);
    connect(m_pArea, &QMdiArea::subWindowActivated, this, &CVXHostMainWindow::updateWindowMenu);
}

void CVXHostMainWindow::updateWindowMenu()
{
    qDeleteAll(m_pWindowList->actions());
    const QList<QMdiSubWindow*> windows = shownSubWindows();
    for (int i = 0; i < windows.size(); ++i) {
        QMdiSubWindow* pSubWindow = windows.at(i);
        QAction* pAction = m_pWindowMenu->addAction(QStringLiteral("&%1 %2").arg(i + 1).arg(pSubWindow->windowTitle()));
        pAction->setObjectName(QStringLiteral("actionWindow%1").arg(i + 1));
        pAction->setCheckable(true);
        pAction->setChecked(pSubWindow == m_pArea->activeSubWindow());
        m_pWindowList->addAction(pAction);
        connect(pAction, &QAction::triggered, pSubWindow, [this, pSubWindow] {
            if (pSubWindow->isMinimized())
                pSubWindow->showNormal();
            m_pArea->setActiveSubWindow(pSubWindow);
        });
    }
}

QList<QMdiSubWindow*> CVXHostMainWindow::shownSubWindows() const
{
    QList<QMdiSubWindow*> shown;
    const QList<QMdiSubWindow*> all = m_pArea->subWindowList(QMdiArea::CreationOrder);
    for (QMdiSubWindow* pSubWindow : all) {
        if (!pSubWindow->isHidden())
            shown << pSubWindow;
    }
    return shown;
}

void CVXHostMainWindow::cascadeWindows()
{
    // Each window keeps its size as far as the room below and right of its step allows,
    // so every one still shows its content; steps start over where too little is left.
    const QRect room = m_pArea->viewport()->rect();
    const int nStep = style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this) + 4;
    QPoint offset;
    const QList<QMdiSubWindow*> windows = shownSubWindows();
    for (QMdiSubWindow* pSubWindow : windows) {
        pSubWindow->showNormal();
        const QSize least = pSubWindow->minimumSizeHint().expandedTo(kSmallestContent + CVXSubWindowGeometry::frameExtent(pSubWindow));
        if (room.width() - offset.x() < least.width() || room.height() - offset.y() < least.height())
            offset = QPoint();
        const QSize size = pSubWindow->size().boundedTo(room.size() - QSize(offset.x(), offset.y())).expandedTo(least);
        pSubWindow->setGeometry(QRect(CVXSubWindowGeometry::keptInside(room, size, room.topLeft() + offset), size));
        offset += QPoint(nStep, nStep);
    }
}

void CVXHostMainWindow::tileWindows()
{
    // Cells of the viewport as it is; a window that cannot be that small keeps its
    // minimum size inside the viewport rather than making the main window grow.
    const QRect room = m_pArea->viewport()->rect();
    const QList<QMdiSubWindow*> windows = shownSubWindows();
    if (windows.isEmpty())
        return;
    const int nColumns = qCeil(qSqrt(windows.size()));
    const int nRows = (windows.size() + nColumns - 1) / nColumns;
    const QSize cell(room.width() / nColumns, room.height() / nRows);
    for (int i = 0; i < windows.size(); ++i) {
        QMdiSubWindow* pSubWindow = windows.at(i);
        pSubWindow->showNormal();
        const QSize size = cell.expandedTo(pSubWindow->minimumSizeHint()).expandedTo(pSubWindow->minimumSize());
        const QPoint wanted(room.left() + (i % nColumns) * cell.width(), room.top() + (i / nColumns) * cell.height());
        pSubWindow->setGeometry(QRect(CVXSubWindowGeometry::keptInside(room, size, wanted), size));
    }
}

QAction* CVXHostMainWindow::addMenuAction(QMenu* pMenu, const QString& strObjectName, const QString& strText)
{
    QAction* pAction = pMenu->addAction(strText);
    pAction->setObjectName(strObjectName);
    return pAction;
}

void CVXHostMainWindow::chooseImageFiles()
{
    openFiles(m_pFileOpener->choose(tr("Open Images"), CVXImageFileReader::dialogFilter()));
}

void CVXHostMainWindow::chooseSequenceFiles()
{
    openSequenceFiles(m_pFileOpener->choose(tr("Open Sequence"), CVXImageFileReader::dialogFilter()));
}

void CVXHostMainWindow::addToolAction(QAction* pAction)
{
    if (!m_pToolsMenu->actions().contains(pAction))
        m_pToolsMenu->addAction(pAction);
}

QVector<CVXImagePage> CVXHostMainWindow::readFile(const QString& strPath, QStringList& failures)
{
    QString strError;
    const QVector<CVXImagePage> pages = CVXImageFileReader::readWithLevels(strPath, strError);
    if (pages.isEmpty())
        failures << QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(strPath), strError);
    return pages;
}

CVXSChildWindow* CVXHostMainWindow::newImageWindow(const QVector<CVXImagePage>& pages, bool bSequence)
{
    if (pages.size() == 1 && !bSequence) {
        auto* pWindow = new CVXSChildWindow(pages.first().picture);
        pWindow->setLevels(pages.first().levels);
        return pWindow;
    }
    QVector<QImage> pictures;
    QVector<QImage> levels;
    for (const CVXImagePage& page : pages) {
        pictures << page.picture;
        levels << page.levels;
    }
    auto* pSequence = new CVXSSequenceWindow(pictures);
    pSequence->setFrameLevels(levels);
    return pSequence;
}

void CVXHostMainWindow::addImageWindow(CVXSChildWindow* pWindow, const QSize& imageSize,
                                        const QString& strTitle)
{
    auto* pSubWindow = new CVXSMdiSubWindow; // owned by the area once added
    pSubWindow->setWidget(pWindow);
    pSubWindow->setAttribute(Qt::WA_DeleteOnClose);
    pSubWindow->setWindowTitle(strTitle);
    if (auto* pSequence = qobject_cast<CVXSSequenceWindow*>(pWindow)) {
        pSequence->sequenceDataset()->setName(strTitle);
        connect(pSequence, &CVXSSequenceWindow::currentFrameChanged, pSequence,
                [pSequence] { CVXSWorkspace::instance()->notifyWindowChanged(pSequence); });
    } else {
        pWindow->dataset()->setName(strTitle);
    }
    const QRect room = freeRoom();
    m_pArea->addSubWindow(pSubWindow);
    CVXSubWindowGeometry::resizeForContent(pSubWindow, initialContentSize(imageSize, room.size() - CVXSubWindowGeometry::frameExtent(pSubWindow)));
    placeNewWindow(pSubWindow, room);
    pSubWindow->showWindow();
    CVXSWorkspace::instance()->notifyWindowOpened(pWindow);
}

QSize CVXHostMainWindow::initialContentSize(const QSize& imageSize, const QSize& room) const
{
    // Large images start scaled down so the window fits the free part of the workspace.
    const QSize fit = room.expandedTo(kSmallestContent) * 3 / 4;
    const bool bFits = imageSize.width() <= fit.width() && imageSize.height() <= fit.height();
    return (bFits ? imageSize : imageSize.scaled(fit, Qt::KeepAspectRatio)).expandedTo(kSmallestContent);
}

void CVXHostMainWindow::placeNewWindow(QMdiSubWindow* pSubWindow, const QRect& room)
{
    // Windows step down and right from the room's corner as they are opened, the steps
    // starting over where the next would leave the room.
    const int nStep = style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this) + 4;
    const int nShown = shownSubWindows().size();
    const QSize slack = room.size() - pSubWindow->size();
    const int nSteps = qMax(1, qMin(slack.width(), slack.height()) / nStep + 1);
    const int nOffset = (nShown % nSteps) * nStep;
    pSubWindow->move(CVXSubWindowGeometry::keptInside(room, pSubWindow->size(), room.topLeft() + QPoint(nOffset, nOffset)));
}

QRect CVXHostMainWindow::freeRoom() const
{
    QRect room = m_pArea->viewport()->rect();
    // A workspace that has not been laid out yet reports a tiny viewport.
    if (room.width() < kSmallestContent.width() || room.height() < kSmallestContent.height())
        room = QRect(QPoint(), kMinimumRoom);
    const QList<QMdiSubWindow*> windows = shownSubWindows();
    for (const QMdiSubWindow* pSubWindow : windows) {
        const bool bToolWindow = !qobject_cast<CVXSChildWindow*>(pSubWindow->widget());
        if (!bToolWindow || pSubWindow->isMinimized() || !pSubWindow->geometry().intersects(room))
            continue;
        const QRect band = largestBandBeside(room, pSubWindow->geometry());
        // Beside a tool window that leaves no usable room, new windows share the whole room.
        if (band.width() >= kSmallestContent.width() && band.height() >= kSmallestContent.height())
            room = band;
    }
    return room;
}

void CVXHostMainWindow::reportUnreadable(const QStringList& failures, const QString& strConsequence)
{
    if (failures.isEmpty())
        return;
    QString strText = tr("These files could not be opened:") + QStringLiteral("\n\n")
                      + failures.join(QLatin1Char('\n'));
    if (!strConsequence.isEmpty())
        strText += QStringLiteral("\n\n") + strConsequence;
    CVXSMessageBox::warning(this, CVXUtilityFns::getAppName(), strText, QString());
}
