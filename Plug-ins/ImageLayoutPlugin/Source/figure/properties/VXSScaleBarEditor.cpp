#include "figure/properties/VXSScaleBarEditor.h"

#include "figure/properties/VXSColourButton.h"
#include "figure/VXSItemFigure.h"
#include "VXSLayoutItemImage.h"

#include <VXPixelSize.h>
#include <VXSMessageBox.h>
#include <VXUtilityFns.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>

CVXSScaleBarEditor::CVXSScaleBarEditor(QWidget* pParent)
    : QWidget(pParent)
{
    auto* pForm = new QFormLayout(this);
    pForm->setContentsMargins(0, 0, 0, 0);
    m_pShown = new QCheckBox(tr("Show a scale bar"), this);
    m_pShown->setObjectName(QStringLiteral("figureScaleBarOn"));
    m_pAuto = new QCheckBox(tr("Automatic length"), this);
    m_pAuto->setObjectName(QStringLiteral("figureScaleBarAuto"));
    m_pLength = new QLineEdit(this);
    m_pLength->setObjectName(QStringLiteral("figureScaleBarLength"));
    m_pLength->setPlaceholderText(tr("e.g. 500 um or 2 mm"));
    m_pCorner = new QComboBox(this);
    m_pCorner->setObjectName(QStringLiteral("figureScaleBarCorner"));
    m_pCorner->addItem(tr("Bottom right"), int(CVXSScaleBar::BottomRight));
    m_pCorner->addItem(tr("Bottom left"), int(CVXSScaleBar::BottomLeft));
    m_pCorner->addItem(tr("Top right"), int(CVXSScaleBar::TopRight));
    m_pCorner->addItem(tr("Top left"), int(CVXSScaleBar::TopLeft));
    m_pColour = new CVXSColourButton(QStringLiteral("figureScaleBarColour"), this);
    m_pThickness = new QDoubleSpinBox(this);
    m_pThickness->setObjectName(QStringLiteral("figureScaleBarThickness"));
    m_pThickness->setDecimals(2);
    m_pThickness->setSingleStep(0.25);
    m_pThickness->setSuffix(tr(" pt"));
    m_pThickness->setKeyboardTracking(false);
    m_pLabel = new QCheckBox(tr("Show the length"), this);
    m_pLabel->setObjectName(QStringLiteral("figureScaleBarLabel"));
    m_pPixelSize = new QLabel(this);
    m_pPixelSize->setObjectName(QStringLiteral("figurePixelSize"));
    auto* pSetPixelSize = new QPushButton(tr("Set Pixel Size..."), this);
    pSetPixelSize->setObjectName(QStringLiteral("figureSetPixelSize"));

    pForm->addRow(m_pShown);
    pForm->addRow(tr("Length:"), m_pAuto);
    pForm->addRow(QString(), m_pLength);
    pForm->addRow(tr("Corner:"), m_pCorner);
    pForm->addRow(tr("Colour:"), m_pColour);
    pForm->addRow(tr("Thickness:"), m_pThickness);
    pForm->addRow(QString(), m_pLabel);
    pForm->addRow(tr("Pixel size:"), m_pPixelSize);
    pForm->addRow(QString(), pSetPixelSize);
    connect(pSetPixelSize, &QPushButton::clicked, this, &CVXSScaleBarEditor::setPixelSizeClicked);
    connectControls();
}

void CVXSScaleBarEditor::connectControls()
{
    connect(m_pShown, &QCheckBox::toggled, this,
            [this](bool bOn) { edited(bOn ? tr("Add Scale Bar") : tr("Remove Scale Bar")); });
    connect(m_pAuto, &QCheckBox::toggled, this, [this] { edited(tr("Change Scale Bar Length")); });
    connect(m_pLength, &QLineEdit::editingFinished, this, &CVXSScaleBarEditor::lengthEdited);
    connect(m_pCorner, QOverload<int>::of(&QComboBox::activated), this,
            [this] { edited(tr("Change Scale Bar Corner")); });
    connect(m_pColour, &CVXSColourButton::colourChosen, this, [this] { edited(tr("Change Scale Bar Colour")); });
    connect(m_pThickness, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            [this] { edited(tr("Change Scale Bar Thickness")); });
    connect(m_pLabel, &QCheckBox::toggled, this, [this] { edited(tr("Change Scale Bar Label")); });
}

void CVXSScaleBarEditor::showImage(const QGraphicsItem& image, double dPointsPerUnit)
{
    const QScopedValueRollback<bool> showing(m_bShowing, true);
    const CVXSItemFigure figure = CVXSItemFigure::of(image);
    const double dPixelMm = figure.pixelSizeMm(static_cast<const CVXSLayoutItemImage&>(image).image());
    m_bar = figure.scaleBar;
    m_dPointsPerUnit = dPointsPerUnit > 0 ? dPointsPerUnit : 1.0;
    m_pShown->setChecked(m_bar.bShown);
    m_pAuto->setChecked(m_bar.dLengthMm <= 0.0);
    m_pLength->setText(m_bar.dLengthMm > 0.0 ? CVXPixelSize::text(m_bar.dLengthMm) : QString());
    m_pCorner->setCurrentIndex(m_pCorner->findData(m_bar.nCorner));
    m_pColour->setColour(m_bar.colour);
    m_pThickness->setRange(0.0, CVXSScaleBar::MaxThickness * m_dPointsPerUnit);
    m_pThickness->setValue(m_bar.dThickness * m_dPointsPerUnit);
    m_dShownThickness = m_pThickness->value();
    m_pLabel->setChecked(m_bar.bLabel);
    m_pPixelSize->setText(dPixelMm > 0.0 ? CVXPixelSize::text(dPixelMm) : tr("none"));
    enableControls();
}

void CVXSScaleBarEditor::enableControls()
{
    for (QWidget* pControl : {static_cast<QWidget*>(m_pAuto), static_cast<QWidget*>(m_pCorner),
                              static_cast<QWidget*>(m_pColour), static_cast<QWidget*>(m_pThickness),
                              static_cast<QWidget*>(m_pLabel)})
        pControl->setEnabled(m_bar.bShown);
    m_pLength->setEnabled(m_bar.bShown && !m_pAuto->isChecked());
}

void CVXSScaleBarEditor::lengthEdited()
{
    if (m_bShowing || !m_pLength->isModified())
        return;
    m_pLength->setModified(false);
    double dMm = 0.0;
    QString strError;
    if (!CVXPixelSize::parse(m_pLength->text(), dMm, strError)) {
        CVXSMessageBox::warning(this, CVXUtilityFns::getAppName(), strError, QString());
        m_pLength->setText(m_bar.dLengthMm > 0.0 ? CVXPixelSize::text(m_bar.dLengthMm) : QString());
        return;
    }
    CVXSScaleBar bar = m_bar;
    bar.dLengthMm = dMm;
    if (bar != m_bar)
        emit scaleBarEdited(bar, tr("Change Scale Bar Length"));
}

void CVXSScaleBarEditor::edited(const QString& strText)
{
    if (m_bShowing)
        return;
    CVXSScaleBar bar = m_bar;
    bar.bShown = m_pShown->isChecked();
    // Unticking "Automatic length" keeps the bar as it is until a length is typed.
    bar.dLengthMm = m_pAuto->isChecked() ? 0.0 : m_bar.dLengthMm;
    bar.nCorner = m_pCorner->currentData().toInt();
    bar.colour = m_pColour->colour();
    // The box shows the thickness rounded; it is taken back only when the user changed it.
    if (m_pThickness->value() != m_dShownThickness)
        bar.dThickness = m_pThickness->value() / m_dPointsPerUnit;
    bar.bLabel = m_pLabel->isChecked();
    if (bar != m_bar)
        emit scaleBarEdited(bar, strText);
    enableControls();
}
