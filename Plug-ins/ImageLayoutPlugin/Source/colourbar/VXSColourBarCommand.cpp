#include "colourbar/VXSColourBarCommand.h"

#include "colourbar/VXSColourBar.h"
#include "figure/VXSFigureController.h"
#include "figure/VXSImageSourceName.h"
#include "figure/VXSItemFigure.h"
#include "host/VXSLayoutTranslator.h"
#include "scene/VXSLayoutPens.h"
#include "undo/VXSLayoutChange.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutItemImage.h"
#include "VXSLayoutItemRectangle.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutView.h"
#include "VXSLayoutWindow.h"

#include <VXDisplayRange.h>
#include <VXSMessageBox.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QGraphicsScene>

#include <algorithm>

using namespace VXSLayout;

namespace {
// The bar's width as a share of the images' height, and the gap to them as a share of that width.
constexpr double BarWidthShare = 0.25;
constexpr double GapShare = 0.2;

bool sameRange(const CVXDisplayRange& a, const CVXDisplayRange& b)
{
    return a.sharesScaleWith(b) && a.minimum() == b.minimum() && a.maximum() == b.maximum()
        && a.tableName() == b.tableName();
}
} // namespace

CVXSColourBarCommand::CVXSColourBarCommand(CVXSFigureController& controller)
    : QObject(&controller)
    , m_controller(controller)
    , m_pAction(new QAction(this))
{
    m_pAction->setObjectName(QStringLiteral("actionAddColourBar"));
    // The host's menus show the command before the tool has built its window.
    CVXSLayoutTranslator::install();
    m_pAction->setText(tr("Add Colour Bar"));
    m_pAction->setToolTip(tr("Adds a colour bar for the selected image, or for all images when none is selected"));
    connect(m_pAction, &QAction::triggered, this, &CVXSColourBarCommand::addColourBar);
    controller.addCommand(m_pAction, QLatin1String(CVXSFigureController::FigureMenu));
}

QAction* CVXSColourBarCommand::action() const
{
    return m_pAction;
}

QVector<CVXSLayoutItemImage*> CVXSColourBarCommand::chosenImages() const
{
    QVector<CVXSLayoutItemImage*> images;
    QGraphicsItem* pSelected = m_controller.selectedItem();
    if (pSelected && pSelected->type() == ImageItemType)
        return {static_cast<CVXSLayoutItemImage*>(pSelected)};
    for (QGraphicsItem* pItem : m_controller.manager()->layoutItems()) {
        if (pItem->type() == ImageItemType)
            images << static_cast<CVXSLayoutItemImage*>(pItem);
    }
    // In the order of the page, top to bottom and left to right, as the message names them.
    std::sort(images.begin(), images.end(), [](const CVXSLayoutItemImage* a, const CVXSLayoutItemImage* b) {
        const QPointF pa = a->mapRectToScene(a->rect()).normalized().topLeft();
        const QPointF pb = b->mapRectToScene(b->rect()).normalized().topLeft();
        return pa.y() != pb.y() ? pa.y() < pb.y() : pa.x() < pb.x();
    });
    return images;
}

QString CVXSColourBarCommand::rangeProblem(const QVector<CVXSLayoutItemImage*>& images) const
{
    QStringList without;
    QStringList others;
    const CVXDisplayRange first = CVXDisplayRange::fromImage(images.first()->image());
    for (const CVXSLayoutItemImage* pImage : images) {
        const CVXDisplayRange range = CVXDisplayRange::fromImage(pImage->image());
        const QString strName = CVXSImageSourceName::of(pImage->image());
        if (!range.hasRange())
            without << strName;
        else if (!first.hasRange() || !sameRange(range, first))
            others << strName;
    }
    if (!without.isEmpty())
        return tr("No colour bar was added: these images have no display range to show: %1.")
            .arg(without.join(QStringLiteral(", ")));
    if (!others.isEmpty())
        return tr("No colour bar was added: these images are not shown through the same display range as %1: %2. "
                  "Select one image, or give them one range in their windows first.")
            .arg(CVXSImageSourceName::of(images.first()->image()), others.join(QStringLiteral(", ")));
    return QString();
}

QRectF CVXSColourBarCommand::barRect(const QVector<CVXSLayoutItemImage*>& images) const
{
    QRectF around;
    for (const CVXSLayoutItemImage* pImage : images)
        around |= pImage->mapRectToScene(pImage->rect()).normalized();
    const QRectF page = m_controller.manager()->getScene()->sceneRect();
    const double dWidth = std::max(8.0, around.height() * BarWidthShare);
    // Right of the images where the page has room, else at the page's right edge.
    const double dLeft = std::min(around.right() + dWidth * GapShare, page.right() - dWidth);
    return QRectF(dLeft, around.top(), dWidth, around.height());
}

void CVXSColourBarCommand::refuse(const QString& strText) const
{
    CVXSMessageBox::warning(m_controller.manager()->getLayoutWindow(), CVXUtilityFns::getAppName(), strText, QString());
}

bool CVXSColourBarCommand::addColourBar()
{
    CVXSLayoutManager* pManager = m_controller.manager();
    if (!pManager || !pManager->getLayoutView() || pManager->getLayoutView()->isGestureOpen())
        return false;
    const QVector<CVXSLayoutItemImage*> images = chosenImages();
    if (images.isEmpty()) {
        refuse(tr("No colour bar was added: the layout has no image to make one for."));
        return false;
    }
    const QString strProblem = rangeProblem(images);
    if (!strProblem.isEmpty()) {
        refuse(strProblem);
        return false;
    }
    CVXSLayoutView* pView = pManager->getLayoutView();
    auto* pBar = new CVXSLayoutItemRectangle(barRect(images), nullptr);
    pBar->setPen(VXSLayoutPens::thinBlack());
    CVXSItemFigure figure;
    figure.colourBar = CVXSColourBar::fromRange(CVXDisplayRange::fromImage(images.first()->image()));
    figure.applyTo(*pBar);
    {
        CVXSLayoutChange change(pManager, tr("Add Colour Bar"));
        pManager->getScene()->addItem(pBar);
        const int nZ = pView->nextZ();
        pBar->setZValue(nZ);
        pView->setTopZ(nZ);
    }
    pView->presentNewItem(pBar);
    return true;
}
