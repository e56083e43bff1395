#include "VXLayoutStreamedSources.h"

#include <VXImageBandReader.h>
#include <VXSLayoutItemImage.h>
#include <output/VXSBandResampler.h>
#include <output/VXSExportFormats.h>
#include <output/VXSLayoutRenderer.h>

#include <QtConcurrent>

#include <numeric>

namespace {

// Rows decoded at a time: a few MiB of the widest sources.
constexpr int BandRows = 64;

struct SourceHeader
{
    QSize size;
    QString strError;
};

struct ReducedSource
{
    QImage image;
    QString strError;
};

SourceHeader readHeader(const QString& strPath)
{
    CVXImageBandReader reader(strPath);
    return reader.open() ? SourceHeader {reader.size(), QString()} : SourceHeader {QSize(), reader.errorString()};
}

// The source reduced to the size of its place, band by band, carrying the source's text keys.
ReducedSource reduce(const QString& strPath, const QSize& size)
{
    ReducedSource reduced;
    CVXImageBandReader reader(strPath);
    if (!reader.open()) {
        reduced.strError = reader.errorString();
        return reduced;
    }
    CVXSBandResampler resampler(reader.size(), size);
    while (!reader.atEnd()) {
        const QImage band = reader.readBand(BandRows);
        if (band.isNull()) {
            reduced.strError = reader.errorString();
            return reduced;
        }
        resampler.addRows(band);
    }
    // A place too small for a pixel shows nothing, as on the window's export; its picture
    // still carries the keys.
    reduced.image = size.isEmpty() ? QImage(1, 1, QImage::Format_RGB32) : resampler.result();
    if (reduced.image.isNull()) {
        reduced.strError = CVXLayoutStreamedSources::tr("There is not enough memory to reduce the image to %1 x %2 pixels.")
                               .arg(size.width())
                               .arg(size.height());
        return reduced;
    }
    const QMap<QString, QString> texts = reader.texts();
    for (auto it = texts.cbegin(); it != texts.cend(); ++it)
        reduced.image.setText(it.key(), it.value());
    return reduced;
}

} // namespace

QStringList CVXLayoutStreamedSources::place(const QStringList& paths, const PlaceItem& placeItem)
{
    // The headers give each image its place on the page before any pixel is decoded.
    const QVector<SourceHeader> headers = QtConcurrent::blockingMapped<QVector<SourceHeader>>(paths, readHeader);
    QStringList reasons;
    QVector<int> placed;
    QVector<CVXSLayoutItemImage*> items;
    QVector<QSize> targets;
    for (int i = 0; i < paths.size(); ++i) {
        reasons << headers[i].strError;
        if (!headers[i].strError.isEmpty())
            continue;
        const QSize size = headers[i].size;
        qDebug("Read %s: %d x %d pixels", qPrintable(paths[i]), size.width(), size.height());
        items << placeItem(size);
        targets << CVXSLayoutRenderer::imageTarget(items.last(), VXSExportFormats::ExportScale).size();
        placed << i;
    }
    const std::function<ReducedSource(int)> reduceOne = [&](int n) { return reduce(paths[placed[n]], targets[n]); };
    QVector<int> order(placed.size());
    std::iota(order.begin(), order.end(), 0);
    const QVector<ReducedSource> reduced = QtConcurrent::blockingMapped<QVector<ReducedSource>>(order, reduceOne);
    for (int n = 0; n < placed.size(); ++n) {
        reasons[placed[n]] = reduced[n].strError;
        items[n]->getImage() = reduced[n].image;
    }
    return reasons;
}
