#pragma once

#include <QCoreApplication>
#include <QStringList>

class CVXDisplayRange;
class CVXSChildWindow;

// "Apply to All": gives the display range and colour table of one image window to every
// other open image window whose images have the same modality and unit (images without a
// unit only to others without one), and says which windows it left alone and why.
class CVXSDisplayRangeSharing
{
    Q_DECLARE_TR_FUNCTIONS(CVXSDisplayRangeSharing)
public:
    // Shares the range at once.
    explicit CVXSDisplayRangeSharing(CVXSChildWindow* pSource);

    // One line per window left alone: its title and the reason.
    QStringList skipped() const;
    // For the user: how many windows took the range.
    QString appliedText() const;
    // The same, and how many were left alone and why.
    QString report() const;

private:
    // Empty where the window can take the range.
    static QString reasonToSkip(CVXSChildWindow* pWindow, const CVXDisplayRange& range);
    static QString scaleOf(const CVXDisplayRange& range);

    int m_nApplied = 0;
    QStringList m_skipped;
};
