#include "VXSDisplayRangeSharing.h"

#include "VXDisplayRange.h"
#include "VXImageProvenance.h"
#include "VXSChildWindow.h"
#include "VXSWorkspace.h"

#include <QMdiArea>
#include <QMdiSubWindow>

CVXSDisplayRangeSharing::CVXSDisplayRangeSharing(CVXSChildWindow* pSource)
{
    const CVXDisplayRange range = pSource->displayRange();
    const QMdiArea* pArea = CVXSWorkspace::instance()->mdiArea();
    if (!range.hasRange() || !pArea)
        return;
    const QList<QMdiSubWindow*> windows = pArea->subWindowList(QMdiArea::CreationOrder);
    for (const QMdiSubWindow* pSubWindow : windows) {
        auto* pWindow = qobject_cast<CVXSChildWindow*>(pSubWindow->widget());
        if (!pWindow || pWindow == pSource)
            continue;
        const QString strReason = reasonToSkip(pWindow, range);
        if (!strReason.isEmpty())
            m_skipped << QStringLiteral("%1: %2").arg(CVXImageProvenance::windowTitleOf(pWindow), strReason);
        else if (pWindow->setDisplayRange(range.minimum(), range.maximum(), range.tableName()))
            ++m_nApplied;
    }
}

int CVXSDisplayRangeSharing::appliedCount() const
{
    return m_nApplied;
}

QStringList CVXSDisplayRangeSharing::skipped() const
{
    return m_skipped;
}

QString CVXSDisplayRangeSharing::report() const
{
    QString strReport = tr("The display range was applied to %n other window(s).", nullptr, m_nApplied);
    if (!m_skipped.isEmpty()) {
        strReport += QStringLiteral("\n\n")
                     + tr("%n window(s) were left as they were, because their images are not measured on the same scale:",
                          nullptr, m_skipped.size())
                     + QStringLiteral("\n") + m_skipped.join(QLatin1Char('\n'));
    }
    return strReport;
}

QString CVXSDisplayRangeSharing::reasonToSkip(CVXSChildWindow* pWindow, const CVXDisplayRange& range)
{
    if (!pWindow->hasLevels())
        return tr("a colour image, without values to show through a range");
    const CVXDisplayRange other = pWindow->displayRange();
    if (other.sharesScaleWith(range))
        return QString();
    return tr("%1, not %2").arg(scaleOf(other), scaleOf(range));
}

QString CVXSDisplayRangeSharing::scaleOf(const CVXDisplayRange& range)
{
    const QString strModality = range.modality().isEmpty() ? tr("no modality") : tr("modality %1").arg(range.modality());
    const QString strUnit = range.unit().isEmpty() ? tr("no unit") : tr("unit %1").arg(range.unit());
    return QStringLiteral("%1, %2").arg(strModality, strUnit);
}
