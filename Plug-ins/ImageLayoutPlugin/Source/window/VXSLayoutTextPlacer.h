#pragma once

#include <QColor>
#include <QFont>
#include <QString>

class CVXSLayoutView;

// Puts a new text item on the page at a random place where it fits, above every other
// item, and selects it with its handles shown.
class CVXSLayoutTextPlacer
{
public:
    explicit CVXSLayoutTextPlacer(CVXSLayoutView& view);

    void place(const QString& strText, const QFont& font, const QColor& color, Qt::Alignment textFlags) const;

private:
    // A random start in [0, nFreeRange); a text larger than the page (a negative range)
    // starts within the page's first units.
    static int randomStart(int nFreeRange);

    CVXSLayoutView& m_view;
};
