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

QStringList CVXSDisplayRangeSharing::skipped() const
{
    return m_skipped;
}

QString CVXSDisplayRangeSharing::report() const
{
    QString strReport = appliedText();
    if (!m_skipped.isEmpty()) {
        strReport += QStringLiteral("\n\n")
                     + (m_skipped.size() == 1
                            ? tr("1 window was left as it was, because its image is not measured on the same scale:")
                            : tr("%1 windows were left as they were, because their images are not measured on the same scale:")
                                  .arg(m_skipped.size()))
                     + QStringLiteral("\n") + m_skipped.join(QLatin1Char('\n'));
    }
    return strReport;
}

QString CVXSDisplayRangeSharing::appliedText() const
{
    return m_nApplied == 1 ? tr("The display range was applied to 1 other window.")
                           : tr("The display range was applied to %1 other windows.").arg(m_nApplied);
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
