#include "figure/VXSFigureMarks.h"

#include "figure/VXSFigureController.h"
#include "figure/VXSPanelLabelOptions.h"
#include "figure/properties/VXSPixelSizeDialog.h"
#include "undo/VXSLayoutChange.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutItemImage.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutView.h"
#include "VXSLayoutWindow.h"

#include <VXImageProvenance.h>
#include <VXSMessageBox.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QMessageBox>
#include <QGraphicsScene>

#include <algorithm>

using namespace VXSLayout;

namespace {

QString sourceName(const CVXSLayoutItemImage& image)
{
    const QString strSource = image.image().text(QString::fromLatin1(CVXImageProvenance::Source));
    return strSource.isEmpty() ? CVXSFigureMarks::tr("The image") : QStringLiteral("\"%1\"").arg(strSource);
}

bool isCalibrated(const CVXSLayoutItemImage* pImage)
{
    return CVXSItemFigure::of(*pImage).pixelSizeMm(pImage->image()) > 0.0;
}

} // namespace

CVXSFigureMarks::CVXSFigureMarks(CVXSFigureController& controller)
    : QObject(&controller)
    , m_controller(controller)
{
    m_pLabelPanels = addCommand(tr("Label Panels"), "actionLabelPanels");
    m_pAddScaleBar = addCommand(tr("Add Scale Bar"), "actionAddScaleBar");
    m_pRemoveScaleBar = addCommand(tr("Remove Scale Bar"), "actionRemoveScaleBar");
    m_pSetPixelSize = addCommand(tr("Set Pixel Size..."), "actionSetPixelSize");
    connect(m_pLabelPanels, &QAction::triggered, this, &CVXSFigureMarks::labelPanels);
    connect(m_pAddScaleBar, &QAction::triggered, this, [this] { setScaleBarsShown(true); });
    connect(m_pRemoveScaleBar, &QAction::triggered, this, [this] { setScaleBarsShown(false); });
    connect(m_pSetPixelSize, &QAction::triggered, this, &CVXSFigureMarks::askPixelSize);
    connect(&m_controller, &CVXSFigureController::changed, this, &CVXSFigureMarks::watchScene);
}

QAction* CVXSFigureMarks::addCommand(const QString& strText, const char* pObjectName)
{
    auto* pAction = new QAction(strText, this);
    pAction->setObjectName(QString::fromLatin1(pObjectName));
    m_controller.addCommand(pAction, QLatin1String(CVXSFigureController::FigureMenu));
    return pAction;
}

QList<CVXSLayoutItemImage*> CVXSFigureMarks::images() const
{
    QList<CVXSLayoutItemImage*> found;
    CVXSLayoutManager* pManager = m_controller.manager();
    if (!pManager)
        return found;
    const QList<QGraphicsItem*> items = pManager->getScene()->items(Qt::AscendingOrder);
    for (QGraphicsItem* pItem : items) {
        if (pItem->type() == ImageItemType)
            found << static_cast<CVXSLayoutItemImage*>(pItem);
    }
    return found;
}

QList<CVXSLayoutItemImage*> CVXSFigureMarks::targets() const
{
    QGraphicsItem* pSelected = m_controller.selectedItem();
    if (!pSelected)
        return images();
    if (pSelected->type() == ImageItemType)
        return {static_cast<CVXSLayoutItemImage*>(pSelected)};
    return {};
}

QString CVXSFigureMarks::missingPixelSizeText(const QList<CVXSLayoutItemImage*>& images)
{
    QStringList lines;
    for (const CVXSLayoutItemImage* pImage : images) {
        if (!isCalibrated(pImage))
            lines << tr("%1 has no pixel size; use Set Pixel Size... to give it one.").arg(sourceName(*pImage));
    }
    return lines.join(QLatin1Char('\n'));
}

bool CVXSFigureMarks::labelPanels()
{
    const QList<CVXSLayoutItemImage*> all = images();
    if (all.isEmpty()) {
        tell(tr("There are no images to label: paste images into the layout first."));
        return false;
    }
    const CVXSPanelLabelOptions options = CVXSPanelLabelOptions::stored();
    return apply([&] { options.letter(all); }, tr("Label Panels"));
}

bool CVXSFigureMarks::setScaleBarsShown(bool bShown)
{
    const QList<CVXSLayoutItemImage*> chosen = targets();
    if (chosen.isEmpty()) {
        tell(m_controller.selectedItem() ? tr("Select an image for its scale bar.")
                                         : tr("There are no images for scale bars: paste images into the layout first."));
        return false;
    }
    QList<FigureChange> changes;
    for (CVXSLayoutItemImage* pImage : chosen) {
        CVXSItemFigure figure = CVXSItemFigure::of(*pImage);
        if (bShown && !isCalibrated(pImage))
            continue;
        figure.scaleBar.bShown = bShown;
        changes << FigureChange(pImage, figure);
    }
    const bool bApplied = apply(changes, bShown ? tr("Add Scale Bar") : tr("Remove Scale Bar"));
    if (bShown && changes.size() < chosen.size())
        tell(missingPixelSizeText(chosen));
    return bApplied;
}

bool CVXSFigureMarks::setScaleBar(const CVXSScaleBar& bar, const QString& strText)
{
    const QList<CVXSLayoutItemImage*> chosen = targets();
    if (chosen.size() != 1 || !m_controller.selectedItem())
        return false;
    if (bar.bShown && !isCalibrated(chosen.first())) {
        tell(missingPixelSizeText(chosen));
        emit m_controller.changed();
        return false;
    }
    CVXSItemFigure figure = CVXSItemFigure::of(*chosen.first());
    figure.scaleBar = bar;
    return apply({FigureChange(chosen.first(), figure)}, strText);
}

bool CVXSFigureMarks::askPixelSize()
{
    const QList<CVXSLayoutItemImage*> chosen = targets();
    if (chosen.isEmpty()) {
        tell(m_controller.selectedItem() ? tr("Select an image to give its pixel size.")
                                         : tr("There are no images: paste images into the layout first."));
        return false;
    }
    const double dCurrent = CVXSItemFigure::of(*chosen.first()).pixelSizeMm(chosen.first()->image());
    CVXSPixelSizeDialog dialog(dCurrent, dialogParent());
    return dialog.exec() == QDialog::Accepted && setPixelSize(dialog.pixelSizeMm());
}

bool CVXSFigureMarks::setPixelSize(double dMm)
{
    QList<FigureChange> changes;
    for (CVXSLayoutItemImage* pImage : targets()) {
        CVXSItemFigure figure = CVXSItemFigure::of(*pImage);
        figure.dPixelSizeMm = dMm;
        changes << FigureChange(pImage, figure);
    }
    return apply(changes, tr("Set Pixel Size"));
}

bool CVXSFigureMarks::apply(const QList<FigureChange>& changes, const QString& strText)
{
    if (changes.isEmpty()) {
        emit m_controller.changed();
        return false;
    }
    return apply(
        [&changes] {
            for (const FigureChange& figureChange : changes)
                figureChange.second.applyTo(*figureChange.first);
        },
        strText);
}

bool CVXSFigureMarks::apply(const std::function<void()>& change, const QString& strText)
{
    CVXSLayoutManager* pManager = m_controller.manager();
    if (!pManager || !m_controller.canChange()) {
        emit m_controller.changed();
        return false;
    }
    {
        const CVXSLayoutChange step(pManager, strText);
        change();
    }
    pManager->getScene()->update();
    emit m_controller.changed();
    return true;
}

void CVXSFigureMarks::tell(const QString& strText) const
{
    CVXSMessageBox::information(dialogParent(), CVXUtilityFns::getAppName(), strText, QMessageBox::Ok);
}

QWidget* CVXSFigureMarks::dialogParent() const
{
    CVXSLayoutManager* pManager = m_controller.manager();
    return pManager ? pManager->getLayoutWindow() : nullptr;
}

bool CVXSFigureMarks::hasOutsideLetters() const
{
    const QList<CVXSLayoutItemImage*> all = images();
    return std::any_of(all.cbegin(), all.cend(), [](const CVXSLayoutItemImage* pImage) {
        const CVXSPanelLabel& label = CVXSItemFigure::of(*pImage).panelLabel;
        return label.isShown() && label.nCorner == CVXSPanelLabel::OutsideTopLeft;
    });
}

void CVXSFigureMarks::watchScene()
{
    // Letters above their images lie outside the images' bounds, and the scene repaints no
    // more than the bounds of what changed; so while any such letter is on the page, every
    // change repaints the whole page. Only then: a scene heard of delivers its changes later.
    QGraphicsScene* pScene = m_controller.manager() && hasOutsideLetters() ? m_controller.manager()->getScene() : nullptr;
    if (pScene == m_pWatchedScene)
        return;
    disconnect(m_sceneConnection);
    m_pWatchedScene = pScene;
    if (pScene)
        m_sceneConnection = connect(pScene, &QGraphicsScene::changed, this, &CVXSFigureMarks::sceneChanged);
}

void CVXSFigureMarks::sceneChanged(const QList<QRectF>& regions)
{
    const QRectF page = m_pWatchedScene->sceneRect();
    const bool bWhole = std::any_of(regions.cbegin(), regions.cend(), [&page](const QRectF& region) {
        return region.contains(page);
    });
    if (!bWhole)
        m_pWatchedScene->update();
}
