#include "figure/properties/VXSPageEditor.h"

#include "figure/properties/VXSFigurePresets.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSpinBox>
#include <QVBoxLayout>

CVXSPageEditor::CVXSPageEditor(QWidget* pParent)
    : QWidget(pParent)
{
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    auto* pForm = new QFormLayout;
    pLayout->addLayout(pForm);

    m_pWidthPresets = new QComboBox(this);
    m_pWidthPresets->setObjectName(QStringLiteral("figureWidthPreset"));
    m_pWidth = new QDoubleSpinBox(this);
    m_pWidth->setObjectName(QStringLiteral("figureWidthMm"));
    m_pWidth->setRange(CVXSFigurePage::MinWidthMm, CVXSFigurePage::MaxWidthMm);
    m_pWidth->setDecimals(1);
    m_pWidth->setSuffix(tr(" mm"));
    m_pWidth->setKeyboardTracking(false);
    m_pDpiPresets = new QComboBox(this);
    m_pDpiPresets->setObjectName(QStringLiteral("figureDpiPreset"));
    m_pDpi = new QSpinBox(this);
    m_pDpi->setObjectName(QStringLiteral("figureDpi"));
    m_pDpi->setRange(CVXSFigurePage::MinDpi, CVXSFigurePage::MaxDpi);
    m_pDpi->setSuffix(tr(" dpi"));
    m_pDpi->setKeyboardTracking(false);
    m_pSize = new QLabel(this);
    m_pSize->setObjectName(QStringLiteral("figureSize"));
    fillPresets();
    pForm->addRow(tr("Figure width:"), m_pWidthPresets);
    pForm->addRow(QString(), m_pWidth);
    pForm->addRow(tr("Resolution:"), m_pDpiPresets);
    pForm->addRow(QString(), m_pDpi);
    pForm->addRow(tr("Size:"), m_pSize);

    m_pCommands = new QVBoxLayout;
    pLayout->addLayout(m_pCommands);

    CVXSFigurePresets::drive(m_pWidthPresets, m_pWidth);
    CVXSFigurePresets::drive(m_pDpiPresets, m_pDpi);
    connect(m_pWidth, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            [this] { edited(tr("Change Figure Width")); });
    connect(m_pDpi, QOverload<int>::of(&QSpinBox::valueChanged), this, [this] { edited(tr("Change Resolution")); });
}

void CVXSPageEditor::fillPresets()
{
    CVXSFigurePresets::addWidths(m_pWidthPresets);
    CVXSFigurePresets::addResolutions(m_pDpiPresets);
}

void CVXSPageEditor::addCommand(QAction* pAction)
{
    auto* pButton = new QPushButton(pAction->text(), this);
    pButton->setObjectName(pAction->objectName() + QStringLiteral("Button"));
    connect(pButton, &QPushButton::clicked, pAction, &QAction::trigger);
    connect(pAction, &QAction::changed, pButton, [pButton, pAction] {
        pButton->setText(pAction->text());
        pButton->setEnabled(pAction->isEnabled());
    });
    pButton->setEnabled(pAction->isEnabled());
    m_pCommands->addWidget(pButton);
}

void CVXSPageEditor::showPage(const CVXSFigurePage& page, const QSizeF& pageUnits)
{
    const QScopedValueRollback<bool> showing(m_bShowing, true);
    m_page = page;
    m_pWidth->setValue(page.dWidthMm);
    m_pDpi->setValue(page.nDpi);
    CVXSFigurePresets::select(m_pWidthPresets, page.dWidthMm);
    CVXSFigurePresets::select(m_pDpiPresets, page.nDpi);
    m_pSize->setText(sizeText(page, pageUnits));
}

QString CVXSPageEditor::sizeText(const CVXSFigurePage& page, const QSizeF& pageUnits)
{
    const QSizeF mm = page.sizeMm(pageUnits);
    const QSize pixels = page.pixelSize(pageUnits);
    return tr("%1 x %2 mm, %3 x %4 pixels")
        .arg(mm.width(), 0, 'f', 1)
        .arg(mm.height(), 0, 'f', 1)
        .arg(pixels.width())
        .arg(pixels.height());
}

void CVXSPageEditor::edited(const QString& strText)
{
    if (m_bShowing)
        return;
    CVXSFigurePage page = m_page;
    page.dWidthMm = m_pWidth->value();
    page.nDpi = m_pDpi->value();
    if (page != m_page)
        emit pageEdited(page, strText);
}
