#include "figure/properties/VXSFigureProperties.h"

#include "figure/properties/VXSColourBarEditor.h"
#include "figure/properties/VXSGeometryEditor.h"
#include "figure/properties/VXSItemStyleEditor.h"
#include "figure/properties/VXSPageEditor.h"
#include "figure/properties/VXSPanelLabelEditor.h"
#include "figure/properties/VXSScaleBarEditor.h"
#include "figure/VXSFigureMarks.h"
#include "figure/VXSFigureController.h"
#include "figure/VXSItemFigure.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutItemArrow.h"
#include "VXSLayoutItemImage.h"

#include <QGroupBox>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace VXSLayout;

namespace {
constexpr double PointsPerMm = 72.0 / 25.4;
enum Page { FigurePage, ItemPage, NoLayoutPage };
} // namespace

CVXSFigureProperties::CVXSFigureProperties(CVXSFigureController& controller, QWidget* pParent)
    : QWidget(pParent)
    , m_controller(controller)
{
    setObjectName(QStringLiteral("figureProperties"));
    setWindowTitle(tr("Figure"));
    auto* pLayout = new QVBoxLayout(this);
    m_pTitle = new QLabel(this);
    m_pTitle->setObjectName(QStringLiteral("figurePropertiesTitle"));
    QFont bold = m_pTitle->font();
    bold.setBold(true);
    m_pTitle->setFont(bold);
    pLayout->addWidget(m_pTitle);

    m_pPages = new QStackedWidget(this);
    m_pPages->insertWidget(FigurePage, buildFigurePage());
    m_pPages->insertWidget(ItemPage, buildItemPage());
    m_pPages->insertWidget(NoLayoutPage, new QLabel(tr("Open the Image Layout window to make a figure."), m_pPages));
    pLayout->addWidget(m_pPages);
    pLayout->addStretch();

    for (QAction* pAction : controller.menuActions(QLatin1String(CVXSFigureController::FigureMenu)))
        m_pPageEditor->addCommand(pAction);
    connect(m_pPageEditor, &CVXSPageEditor::pageEdited, &m_controller, &CVXSFigureController::setPage);
    connect(m_pStyleEditor, &CVXSItemStyleEditor::styleEdited, &m_controller, &CVXSFigureController::applyStyle);
    connect(m_pStyleEditor, &CVXSItemStyleEditor::useAsDefaultClicked, &m_controller,
            &CVXSFigureController::useAsDefault);
    connect(m_pStyleEditor, &CVXSItemStyleEditor::resetDefaultsClicked, &m_controller,
            &CVXSFigureController::resetDefaults);
    connect(m_pGeometryEditor, &CVXSGeometryEditor::geometryEdited, &m_controller,
            &CVXSFigureController::setGeometryMm);
    connect(m_pScaleBarEditor, &CVXSScaleBarEditor::scaleBarEdited, controller.marks(), &CVXSFigureMarks::setScaleBar);
    connect(m_pScaleBarEditor, &CVXSScaleBarEditor::setPixelSizeClicked, controller.marks(),
            &CVXSFigureMarks::askPixelSize);
    connect(m_pColourBarEditor, &CVXSColourBarEditor::orientationEdited, &m_controller,
            &CVXSFigureController::setColourBarOrientation);
    connect(&m_controller, &CVXSFigureController::changed, this, &CVXSFigureProperties::refresh);
    refresh();
}

CVXSPageEditor* CVXSFigureProperties::pageEditor() const
{
    return m_pPageEditor;
}

QWidget* CVXSFigureProperties::buildFigurePage()
{
    auto* pPage = new QWidget(m_pPages);
    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->setContentsMargins(0, 0, 0, 0);
    m_pPageEditor = new CVXSPageEditor(pPage);
    auto* pLabelGroup = new QGroupBox(tr("Panel letters"), pPage);
    auto* pLabelLayout = new QVBoxLayout(pLabelGroup);
    m_pPanelLabelEditor = new CVXSPanelLabelEditor(pLabelGroup);
    pLabelLayout->addWidget(m_pPanelLabelEditor);
    pLayout->addWidget(m_pPageEditor);
    pLayout->addWidget(pLabelGroup);
    return pPage;
}

QWidget* CVXSFigureProperties::buildItemPage()
{
    auto* pPage = new QWidget(m_pPages);
    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->setContentsMargins(0, 0, 0, 0);
    auto* pStyleGroup = new QGroupBox(tr("Look"), pPage);
    auto* pStyleLayout = new QVBoxLayout(pStyleGroup);
    m_pStyleEditor = new CVXSItemStyleEditor(pStyleGroup);
    pStyleLayout->addWidget(m_pStyleEditor);
    auto* pGeometryGroup = new QGroupBox(tr("Place and size"), pPage);
    auto* pGeometryLayout = new QVBoxLayout(pGeometryGroup);
    m_pGeometryEditor = new CVXSGeometryEditor(pGeometryGroup);
    pGeometryLayout->addWidget(m_pGeometryEditor);
    auto* pScaleBarGroup = new QGroupBox(tr("Scale bar"), pPage);
    auto* pScaleBarLayout = new QVBoxLayout(pScaleBarGroup);
    m_pScaleBarEditor = new CVXSScaleBarEditor(pScaleBarGroup);
    pScaleBarLayout->addWidget(m_pScaleBarEditor);
    m_pScaleBarGroup = pScaleBarGroup;
    m_pColourBarEditor = new CVXSColourBarEditor(pPage);
    pLayout->addWidget(pStyleGroup);
    pLayout->addWidget(pGeometryGroup);
    pLayout->addWidget(pScaleBarGroup);
    pLayout->addWidget(m_pColourBarEditor);
    return pPage;
}

QString CVXSFigureProperties::kindName(int nType)
{
    switch (nType) {
    case ImageItemType: return tr("Image");
    case TextItemType: return tr("Text");
    case RectangleItemType: return tr("Rectangle");
    case EllipseItemType: return tr("Ellipse");
    case ArrowItemType: return tr("Line or arrow");
    default: return QString();
    }
}

void CVXSFigureProperties::refresh()
{
    if (!m_controller.manager()) {
        m_pTitle->setText(tr("Figure"));
        m_pPages->setCurrentIndex(NoLayoutPage);
        return;
    }
    const QGraphicsItem* pItem = m_controller.selectedItem();
    if (!pItem) {
        m_pTitle->setText(tr("Figure"));
        m_pPageEditor->showPage(m_controller.page(), m_controller.pageUnits());
        m_pPanelLabelEditor->showStored();
        m_pPages->setCurrentIndex(FigurePage);
        return;
    }
    m_pTitle->setText(kindName(pItem->type()));
    m_pStyleEditor->showItem(*pItem, m_controller.mmPerUnit() * PointsPerMm);
    const bool bInCell = pItem->type() == ImageItemType
                      && static_cast<const CVXSLayoutItemImage*>(pItem)->getCellIndex() != -1;
    m_pGeometryEditor->showGeometry(m_controller.geometryMm(*pItem), !bInCell);
    m_pScaleBarGroup->setVisible(pItem->type() == ImageItemType);
    if (pItem->type() == ImageItemType)
        m_pScaleBarEditor->showImage(*pItem, m_controller.mmPerUnit() * PointsPerMm);
    const CVXSColourBar bar = CVXSItemFigure::of(*pItem).colourBar;
    m_pColourBarEditor->setVisible(bar.isShown());
    if (bar.isShown())
        m_pColourBarEditor->showBar(bar);
    m_pPages->setCurrentIndex(ItemPage);
}
