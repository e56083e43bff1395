#include "VXHostMainWindow.h"

#include "VXBuiltinLayoutTool.h"
#include <VXImageFileReader.h>
#include <VXImageWindowing.h>
#include "VXSampleData.h"
#include "VXSubWindowGeometry.h"

#include <VXSChildWindow.h>
#include <VXSMdiSubWindow.h>
#include <VXSMessageBox.h>
#include <VXSSequenceWindow.h>
#include <VXSWorkspace.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMdiArea>
#include <QMenuBar>

namespace {
// A workspace that has not been laid out yet reports a tiny viewport; windows get at
// least this much room.
const QSize kMinimumRoom(640, 480);
// Tiny images get a window the user can still grab; the image window scales them up.
const QSize kSmallestContent(200, 150);
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

    createFileMenu();
    createToolsMenu();
    createWindowMenu();

    m_pLayoutTool = std::make_unique<CVXBuiltinLayoutTool>();
    attachTool(m_pLayoutTool.get());
}

CVXHostMainWindow::~CVXHostMainWindow()
{
    // The layout manager deletes its sub-window itself, so it has to go while the area
    // still holds that sub-window.
    m_pLayoutTool.reset();
    if (CVXSWorkspace::instance()->mdiArea() == m_pArea)
        CVXSWorkspace::instance()->setMdiArea(nullptr);
}

QMdiArea* CVXHostMainWindow::mdiArea() const
{
    return m_pArea;
}

void CVXHostMainWindow::openImageFiles(const QStringList& paths)
{
    QStringList failures;
    for (const QString& strPath : paths) {
        const QVector<QImage> pages = readFile(strPath, failures);
        if (!pages.isEmpty())
            openFrames(pages, QFileInfo(strPath).fileName());
    }
    reportUnreadable(failures, QString());
}

void CVXHostMainWindow::openSequenceFiles(const QStringList& paths)
{
    QStringList failures;
    QVector<QImage> frames;
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
    addImageWindow(new CVXSSequenceWindow(frames), frames.first().size(), strTitle);
}

void CVXHostMainWindow::openSamples()
{
    const QImage xray = CVXImageWindowing::toDisplay(CVXSampleData::xrayPhantom());
    addImageWindow(new CVXSChildWindow(xray), xray.size(), tr("Sample X-ray"));
    const QImage luminescence = CVXSampleData::luminescence();
    addImageWindow(new CVXSChildWindow(luminescence), luminescence.size(), tr("Sample Luminescence"));
    const QVector<QImage> fluorescence = CVXSampleData::fluorescenceSequence();
    addImageWindow(new CVXSSequenceWindow(fluorescence), fluorescence.first().size(),
                   tr("Sample Fluorescence Sequence"));
}

void CVXHostMainWindow::attachTool(CVXToolPluginBase* pTool)
{
    // Asking for the entry makes the tool announce it, which lands it in the Tools menu.
    QAction* pAction = pTool->getToolAction();
    if (!pAction)
        return;
    connect(pAction, &QAction::toggled, pTool, [pTool] {
        // Tools build their windows on first use; later calls return at once.
        if (pTool->initializeTool())
            pTool->onToolActionToggled();
    });
}

void CVXHostMainWindow::createFileMenu()
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
    QAction* pQuit = addMenuAction(pMenu, QStringLiteral("actionQuit"), tr("&Quit"));
    pQuit->setShortcut(QKeySequence::Quit);
    connect(pQuit, &QAction::triggered, this, &QWidget::close);
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
    QMenu* pMenu = menuBar()->addMenu(tr("&Window"));
    pMenu->setObjectName(QStringLiteral("menuWindow"));
    connect(addMenuAction(pMenu, QStringLiteral("actionTile"), tr("&Tile")), &QAction::triggered, m_pArea,
            &QMdiArea::tileSubWindows);
    connect(addMenuAction(pMenu, QStringLiteral("actionCascade"), tr("&Cascade")), &QAction::triggered, m_pArea,
            &QMdiArea::cascadeSubWindows);
}

QAction* CVXHostMainWindow::addMenuAction(QMenu* pMenu, const QString& strObjectName, const QString& strText)
{
    QAction* pAction = pMenu->addAction(strText);
    pAction->setObjectName(strObjectName);
    return pAction;
}

void CVXHostMainWindow::chooseImageFiles()
{
    openImageFiles(QFileDialog::getOpenFileNames(this, tr("Open Images"), QString(),
                                                 CVXImageFileReader::dialogFilter()));
}

void CVXHostMainWindow::chooseSequenceFiles()
{
    openSequenceFiles(QFileDialog::getOpenFileNames(this, tr("Open Sequence"), QString(),
                                                    CVXImageFileReader::dialogFilter()));
}

void CVXHostMainWindow::addToolAction(QAction* pAction)
{
    if (!m_pToolsMenu->actions().contains(pAction))
        m_pToolsMenu->addAction(pAction);
}

QVector<QImage> CVXHostMainWindow::readFile(const QString& strPath, QStringList& failures)
{
    QString strError;
    const QVector<QImage> pages = CVXImageFileReader::read(strPath, strError);
    if (pages.isEmpty())
        failures << QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(strPath), strError);
    return pages;
}

void CVXHostMainWindow::openFrames(const QVector<QImage>& frames, const QString& strTitle)
{
    CVXSChildWindow* pWindow = frames.size() == 1 ? new CVXSChildWindow(frames.first())
                                                  : new CVXSSequenceWindow(frames);
    addImageWindow(pWindow, frames.first().size(), strTitle);
}

void CVXHostMainWindow::addImageWindow(CVXSChildWindow* pWindow, const QSize& imageSize,
                                        const QString& strTitle)
{
    auto* pSubWindow = new CVXSMdiSubWindow; // owned by the area once added
    pSubWindow->setWidget(pWindow);
    pSubWindow->setAttribute(Qt::WA_DeleteOnClose);
    pSubWindow->setWindowTitle(strTitle);
    m_pArea->addSubWindow(pSubWindow);
    CVXSubWindowGeometry::resizeForContent(pSubWindow, initialContentSize(imageSize));
    pSubWindow->showWindow();
}

QSize CVXHostMainWindow::initialContentSize(const QSize& imageSize) const
{
    // Large images start scaled down so the window fits the workspace.
    const QSize room = m_pArea->viewport()->size().expandedTo(kMinimumRoom) * 3 / 4;
    const bool bFits = imageSize.width() <= room.width() && imageSize.height() <= room.height();
    return (bFits ? imageSize : imageSize.scaled(room, Qt::KeepAspectRatio)).expandedTo(kSmallestContent);
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
