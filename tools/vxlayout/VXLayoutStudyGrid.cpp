#include "VXLayoutStudyGrid.h"

#include <VXSLayoutManager.h>
#include <studygrid/VXSStudyGrid.h>

#include <QGraphicsScene>

#include <cstdio>

bool CVXLayoutStudyGrid::place(CVXSLayoutManager& manager, const CVXLayoutStudyGridOptions& options,
                               const QStringList& paths)
{
    QStringList errors;
    const QVector<CVXImagePage> pages = CVXSStudyGrid::readFiles(paths, errors);
    if (!errors.isEmpty()) {
        m_strError = errors.join(QLatin1Char('\n'));
        return false;
    }
    CVXSStudyGrid grid(options.rowKey(), options.columnKey());
    grid.setColourBar(options.hasColourBar());
    if (options.hasRange())
        grid.setRange(options.minimum(), options.maximum());
    const bool bBuilt = grid.build(pages, manager.getScene()->sceneRect().size().toSize());
    for (const QString& strWarning : grid.warnings())
        std::fprintf(stderr, "vxlayout: %s\n", strWarning.toLocal8Bit().constData());
    if (!bBuilt) {
        m_strError = grid.errorText();
        return false;
    }
    manager.replaceLayout(grid.document());
    return true;
}

QString CVXLayoutStudyGrid::errorText() const
{
    return m_strError;
}
