#pragma once

#include <QCoreApplication>
#include <QSize>
#include <QStringList>

#include <functional>

class CVXSLayoutItemImage;

// The sources of a raster page, each decoded a band of rows at a time straight into its
// reduction to its place on the page, as many at once as there are cores: memory holds the
// page, the reduced pictures and a few rows of each source being read, however many and large
// the sources are. The pixels are those of the whole source reduced on the page.
class CVXLayoutStreamedSources
{
    Q_DECLARE_TR_FUNCTIONS(CVXLayoutStreamedSources)
public:
    // Makes the item of a source of the size, placed as a paste places it.
    using PlaceItem = std::function<CVXSLayoutItemImage*(const QSize& size)>;

    // Places an item for every source whose header reads, in order, then gives each its
    // picture. Returns one reason per source, empty where it was read.
    static QStringList place(const QStringList& paths, const PlaceItem& placeItem);
};
