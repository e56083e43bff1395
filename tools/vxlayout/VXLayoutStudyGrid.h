#pragma once

#include "VXLayoutStudyGridOptions.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

class CVXSLayoutManager;

// vxlayout's study grid: reads the image files, sorts them into rows and columns by their
// keys (CVXSStudyGrid) and puts the grid on the manager's page as the window would show it.
class CVXLayoutStudyGrid
{
    Q_DECLARE_TR_FUNCTIONS(CVXLayoutStudyGrid)
public:
    // The page must have its size already. Images left out and cells given twice are
    // reported on standard error; false with errorText() when no grid can be made.
    bool place(CVXSLayoutManager& manager, const CVXLayoutStudyGridOptions& options, const QStringList& paths);
    QString errorText() const;

private:
    QString m_strError;
};
