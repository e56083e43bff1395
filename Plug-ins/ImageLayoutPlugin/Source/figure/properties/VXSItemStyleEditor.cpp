#include "figure/properties/VXSItemStyleEditor.h"

#include "figure/properties/VXSColourButton.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutItemArrow.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFontDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSpinBox>

using namespace VXSLayout;

namespace {

constexpr double MaxPoints = 100.0;
constexpr double PointStep = 0.25;

QWidget* rowOf(QWidget* pParent, std::initializer_list<QWidget*> widgets)
{
    auto* pRow = new QWidget(pParent);
    auto* pLayout = new QHBoxLayout(pRow);
    pLayout->setContentsMargins(0, 0, 0, 0);
    for (QWidget* pWidget : widgets) {
        pWidget->setParent(pRow);
        pLayout->addWidget(pWidget);
    }
    pLayout->addStretch();
    return pRow;
}

QDoubleSpinBox* pointBox(const QString& strObjectName, double dMin)
{
    auto* pBox = new QDoubleSpinBox;
    pBox->setObjectName(strObjectName);
    pBox->setRange(dMin, MaxPoints);
    pBox->setSingleStep(PointStep);
    pBox->setDecimals(2);
    pBox->setSuffix(CVXSItemStyleEditor::tr(" pt"));
    pBox->setKeyboardTracking(false);
    return pBox;
}

} // namespace

CVXSItemStyleEditor::CVXSItemStyleEditor(QWidget* pParent)
    : QWidget(pParent)
{
    m_pGrid = new QGridLayout(this);
    m_pGrid->setContentsMargins(0, 0, 0, 0);

    m_pLineOn = new QCheckBox;
    m_pLineOn->setObjectName(QStringLiteral("figureLineOn"));
    m_pLineColour = new CVXSColourButton(QStringLiteral("figureLineColour"), nullptr);
    m_pLineWidth = pointBox(QStringLiteral("figureLineWidth"), 0.0);
    m_pLineWidth->setSpecialValueText(tr("Hairline"));
    addRow(LineRow, rowOf(this, {m_pLineOn, m_pLineColour, m_pLineWidth}));

    m_pFillOn = new QCheckBox;
    m_pFillOn->setObjectName(QStringLiteral("figureFillOn"));
    m_pFillColour = new CVXSColourButton(QStringLiteral("figureFillColour"), nullptr);
    m_pFillOpacity = new QSpinBox;
    m_pFillOpacity->setObjectName(QStringLiteral("figureFillOpacity"));
    m_pFillOpacity->setRange(0, 100);
    m_pFillOpacity->setSuffix(tr(" %"));
    m_pFillOpacity->setKeyboardTracking(false);
    addRow(FillRow, rowOf(this, {m_pFillOn, m_pFillColour, m_pFillOpacity}));

    m_pHeadSize = pointBox(QStringLiteral("figureHeadSize"), 0.25);
    addRow(HeadRow, rowOf(this, {m_pHeadSize}));

    m_pTextColour = new CVXSColourButton(QStringLiteral("figureTextColour"), nullptr);
    addRow(TextColourRow, rowOf(this, {m_pTextColour}));

    m_pFont = new QPushButton;
    m_pFont->setObjectName(QStringLiteral("figureFont"));
    addRow(FontRow, rowOf(this, {m_pFont}));

    auto* pUseAsDefault = new QPushButton(tr("Use as Default"));
    pUseAsDefault->setObjectName(QStringLiteral("figureUseAsDefault"));
    auto* pResetDefaults = new QPushButton(tr("Reset Defaults"));
    pResetDefaults->setObjectName(QStringLiteral("figureResetDefaults"));
    addRow(DefaultsRow, rowOf(this, {pUseAsDefault, pResetDefaults}));
    connect(pUseAsDefault, &QPushButton::clicked, this, &CVXSItemStyleEditor::useAsDefaultClicked);
    connect(pResetDefaults, &QPushButton::clicked, this, &CVXSItemStyleEditor::resetDefaultsClicked);
    connectControls();
}

void CVXSItemStyleEditor::addRow(Row row, QWidget* pField)
{
    m_labels[row] = new QLabel(this);
    m_fields[row] = pField;
    m_pGrid->addWidget(m_labels[row], row, 0);
    m_pGrid->addWidget(pField, row, 1);
}

void CVXSItemStyleEditor::connectControls()
{
    connect(m_pLineOn, &QCheckBox::toggled, this, [this] { edited(tr("Change Border")); });
    connect(m_pLineColour, &CVXSColourButton::colourChosen, this, [this] { edited(tr("Change Line Colour")); });
    connect(m_pLineWidth, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            [this] { edited(tr("Change Line Width")); });
    connect(m_pFillOn, &QCheckBox::toggled, this, [this] { edited(tr("Change Fill")); });
    connect(m_pFillColour, &CVXSColourButton::colourChosen, this, [this] { edited(tr("Change Fill")); });
    connect(m_pFillOpacity, QOverload<int>::of(&QSpinBox::valueChanged), this, [this] { edited(tr("Change Fill")); });
    connect(m_pHeadSize, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            [this] { edited(tr("Change Head Size")); });
    connect(m_pTextColour, &CVXSColourButton::colourChosen, this, [this] { edited(tr("Change Colour")); });
    connect(m_pFont, &QPushButton::clicked, this, &CVXSItemStyleEditor::chooseFont);
}

void CVXSItemStyleEditor::showItem(const QGraphicsItem& item, double dPointsPerUnit)
{
    m_style = CVXSItemStyle::of(item);
    m_nType = item.type();
    m_dPointsPerUnit = dPointsPerUnit > 0 ? dPointsPerUnit : 1.0;
    const bool bHeads = m_nType == ArrowItemType
                     && (static_cast<const CVXSLayoutItemArrow&>(item).hasStartHead()
                         || static_cast<const CVXSLayoutItemArrow&>(item).hasEndHead());
    // Showing the values is no edit.
    const QScopedValueRollback<bool> showing(m_bShowing, true);
    m_pLineOn->setChecked(m_style.lineColour.alpha() > 0);
    m_pLineColour->setColour(m_style.lineColour.alpha() > 0 ? m_style.lineColour : QColor(Qt::black));
    m_pLineWidth->setValue(m_style.dLineWidth * m_dPointsPerUnit);
    m_pFillOn->setChecked(m_style.fillColour.alpha() > 0);
    QColor fill = m_style.fillColour.alpha() > 0 ? m_style.fillColour : QColor(Qt::white);
    m_pFillOpacity->setValue(qRound(fill.alphaF() * 100));
    fill.setAlpha(255);
    m_pFillColour->setColour(fill);
    m_pHeadSize->setValue(m_style.dHeadSize * m_dPointsPerUnit);
    m_pTextColour->setColour(m_style.textColour);
    m_pFont->setText(m_style.font.family() + QStringLiteral(", ") + QString::number(m_style.font.pointSizeF()));
    setLabels(m_nType);
    showRows(m_nType, bHeads);
}

void CVXSItemStyleEditor::setLabels(int nType)
{
    m_labels[LineRow]->setText(nType == ImageItemType ? tr("Border:") : nType == ArrowItemType ? tr("Line:") : tr("Outline:"));
    m_labels[FillRow]->setText(nType == TextItemType ? tr("Background:") : tr("Fill:"));
    m_labels[HeadRow]->setText(tr("Head size:"));
    m_labels[TextColourRow]->setText(tr("Colour:"));
    m_labels[FontRow]->setText(tr("Font:"));
}

void CVXSItemStyleEditor::showRows(int nType, bool bHeads)
{
    const bool bShape = nType == RectangleItemType || nType == EllipseItemType;
    const bool bText = nType == TextItemType;
    const bool visible[RowCount] = {
        bShape || nType == ArrowItemType || nType == ImageItemType, // line
        bShape || bText,                                            // fill
        bHeads,                                                     // head
        bText,                                                      // text colour
        bText,                                                      // font
        bShape || nType == ArrowItemType,                           // defaults
    };
    for (int row = 0; row < RowCount; ++row) {
        m_labels[row]->setVisible(visible[row]);
        m_fields[row]->setVisible(visible[row]);
    }
    // Only an image's border may be switched off; shapes and lines always have their line.
    m_pLineOn->setVisible(nType == ImageItemType);
}

QColor CVXSItemStyleEditor::fillColour() const
{
    if (!m_pFillOn->isChecked())
        return QColor(0, 0, 0, 0);
    QColor fill = m_pFillColour->colour();
    fill.setAlphaF(m_pFillOpacity->value() / 100.0);
    return fill;
}

void CVXSItemStyleEditor::edited(const QString& strText)
{
    if (m_bShowing)
        return;
    CVXSItemStyle style = m_style;
    const bool bLine = m_nType != ImageItemType || m_pLineOn->isChecked();
    style.lineColour = bLine ? m_pLineColour->colour() : QColor(0, 0, 0, 0);
    style.dLineWidth = m_pLineWidth->value() / m_dPointsPerUnit;
    style.fillColour = fillColour();
    style.dHeadSize = m_pHeadSize->value() / m_dPointsPerUnit;
    style.textColour = m_pTextColour->colour();
    if (style == m_style)
        return;
    m_style = style;
    emit styleEdited(style, strText);
}

void CVXSItemStyleEditor::chooseFont()
{
    bool bChosen = false;
    const QFont font = QFontDialog::getFont(&bChosen, m_style.font, this);
    if (!bChosen || font == m_style.font)
        return;
    CVXSItemStyle style = m_style;
    style.font = font;
    m_style = style;
    m_pFont->setText(font.family() + QStringLiteral(", ") + QString::number(font.pointSizeF()));
    emit styleEdited(style, tr("Change Font"));
}
