#include "figure/VXSPanelLabel.h"

QString CVXSPanelLabel::letters(int nPanel, bool bLowerCase)
{
    // Bijective base 26: after Z comes AA, as spreadsheet columns count.
    const QChar first = bLowerCase ? QLatin1Char('a') : QLatin1Char('A');
    QString strLetters;
    for (int n = nPanel; n > 0; n = (n - 1) / 26)
        strLetters.prepend(QChar(first.unicode() + (n - 1) % 26));
    return strLetters;
}

bool CVXSPanelLabel::operator==(const CVXSPanelLabel& other) const
{
    return strText == other.strText && bBold == other.bBold && dPoints == other.dPoints && nCorner == other.nCorner;
}
