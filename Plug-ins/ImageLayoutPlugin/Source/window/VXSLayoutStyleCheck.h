#pragma once

#include <QCoreApplication>

class QWidget;
class CVXSLayoutManager;

// Whether the page may change to a layout style: a grid style needs a cell for every
// image on the page. Free style always may.
class CVXSLayoutStyleCheck
{
    // The texts are the window's and are translated in its context.
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutWindow)
public:
    explicit CVXSLayoutStyleCheck(CVXSLayoutManager& mngr);

    // When not, says so over pParent.
    bool allows(int nStyle, QWidget* pParent) const;

private:
    int imageCount() const;

    CVXSLayoutManager& m_mngr;
};
