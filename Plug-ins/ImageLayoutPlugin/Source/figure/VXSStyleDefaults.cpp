#include "figure/VXSStyleDefaults.h"

#include "VXSLayoutConstants.h"

#include <VXPreference.h>
#include <VXSSettings.h>

#include <QGraphicsItem>

using namespace VXSLayout;

namespace {

const QString kGroup = QStringLiteral("Figure/Defaults/");

QString keyOf(int nType, const char* pField)
{
    return kGroup + QString::number(nType) + QLatin1Char('/') + QLatin1String(pField);
}

} // namespace

bool CVXSStyleDefaults::hasDefault(int nType)
{
    return nType == RectangleItemType || nType == EllipseItemType || nType == ArrowItemType;
}

std::optional<CVXSItemStyle> CVXSStyleDefaults::stored(int nType)
{
    const CVXSSettings* pSettings = CVXPreference::getSettings();
    if (!hasDefault(nType) || !pSettings->value(keyOf(nType, "line")).isValid())
        return std::nullopt;
    CVXSItemStyle style = CVXSItemStyle::standard(nType);
    const QColor line(pSettings->value(keyOf(nType, "line")).toString());
    const QColor fill(pSettings->value(keyOf(nType, "fill")).toString());
    const double dWidth = pSettings->value(keyOf(nType, "lineWidth")).toDouble();
    const double dHead = pSettings->value(keyOf(nType, "headSize"), style.dHeadSize).toDouble();
    // A damaged settings file gives the standard look rather than an invisible shape.
    if (!line.isValid() || !fill.isValid() || dWidth < 0 || dWidth > CVXSItemStyle::MaxLineWidth
        || dHead < CVXSItemStyle::MinHeadSize || dHead > CVXSItemStyle::MaxHeadSize)
        return std::nullopt;
    style.lineColour = line;
    style.fillColour = fill;
    style.dLineWidth = dWidth;
    style.dHeadSize = dHead;
    return style;
}

void CVXSStyleDefaults::store(const QGraphicsItem& item)
{
    const int nType = item.type();
    if (!hasDefault(nType))
        return;
    const CVXSItemStyle style = CVXSItemStyle::of(item);
    CVXSSettings* pSettings = CVXPreference::getSettings();
    pSettings->setValue(keyOf(nType, "line"), style.lineColour.name(QColor::HexArgb));
    pSettings->setValue(keyOf(nType, "fill"), style.fillColour.name(QColor::HexArgb));
    pSettings->setValue(keyOf(nType, "lineWidth"), style.dLineWidth);
    pSettings->setValue(keyOf(nType, "headSize"), style.dHeadSize);
    pSettings->sync();
}

void CVXSStyleDefaults::resetAll()
{
    CVXSSettings* pSettings = CVXPreference::getSettings();
    for (const int nType : {RectangleItemType, EllipseItemType, ArrowItemType}) {
        for (const char* pField : {"line", "fill", "lineWidth", "headSize"})
            pSettings->remove(keyOf(nType, pField));
    }
    pSettings->sync();
}

void CVXSStyleDefaults::applyStored(QGraphicsItem& item)
{
    if (const std::optional<CVXSItemStyle> style = stored(item.type()))
        style->applyTo(item);
}
