// Measures how long a layout file of a full "Layout 4x4" page of large images takes to write
// and to read: 16 RGB32 images of 4096 x 4096, fifteen smooth gradients (different in each)
// and one of noise. It also times the write with a single thread, which shows what encoding
// the images in parallel gains, and one PNG encode of a gradient and of the noise by the layout
// file's own encoder (libpng: "up" filter, run-length zlib at level 1) against Qt's PNG writer
// at zlib levels 0, 1 and 6.
// Times are medians of several runs.
//
// Run offscreen:  QT_QPA_PLATFORM=offscreen build/bin/bench_layout_file [--runs N] [--side S]

#include "TestPictures.h"

#include <VXSLayoutConstants.h>
#include <file/VXSLayoutFile.h>
#include <file/VXSLayoutImageCodec.h>

#include <QBuffer>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QThreadPool>
#include <QtConcurrent>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr int ImageCount = 16;
constexpr int Layout4x4 = 8;
constexpr double MiB = 1024.0 * 1024.0;

QImage gradientImage(int nSide, int nIndex)
{
    QImage image(nSide, nSide, QImage::Format_RGB32);
    for (int y = 0; y < nSide; ++y) {
        auto* pLine = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < nSide; ++x)
            pLine[x] = qRgb(x * 255 / nSide, (y * 255 / nSide + nIndex * 16) % 256, (x + y) * 127 / nSide);
    }
    return image;
}

CVXSLayoutDocument fullPage(int nSide)
{
    CVXSLayoutDocument document;
    document.nStyle = Layout4x4;
    document.pageSize = QSize(1000, 800);
    for (int i = 0; i < ImageCount; ++i) {
        CVXSLayoutItemState item;
        item.nType = VXSLayout::ImageItemType;
        item.rect = QRectF((i % 4) * 250 + 40, (i / 4) * 200 + 32, 160, 160);
        item.z = VXSLayout::BaseZ + 1 + i;
        item.image = i == ImageCount - 1 ? noiseImage(QSize(nSide, nSide), 4096) : gradientImage(nSide, i);
        item.nCellIndex = i;
        document.items.append(item);
    }
    return document;
}

double medianMs(int nRuns, const std::function<bool()>& step)
{
    std::vector<double> times;
    for (int i = 0; i < nRuns; ++i) {
        QElapsedTimer timer;
        timer.start();
        if (!step())
            return -1;
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void printEncodeTimes(const char* pName, const QImage& image, int nRuns)
{
    QByteArray encoded;
    const double dOwnMs = medianMs(nRuns, [&] {
        encoded = CVXSLayoutImageCodec::encode(image);
        return !encoded.isEmpty();
    });
    std::printf("PNG encode, %-9s layout file: %8.0f ms, %8.2f MiB\n", pName, dOwnMs, encoded.size() / MiB);
    // Qt's PNG writer maps quality 100 to zlib level 0 and leaves level 6 when no quality is set.
    const std::pair<const char*, int> levels[] = {
        {"level 0 ", 100}, {"level 1 ", CVXSLayoutImageCodec::PngQuality}, {"level 6 ", -1}};
    for (const auto& level : levels) {
        QByteArray png;
        const double dMs = medianMs(nRuns, [&] {
            png.clear();
            QBuffer buffer(&png);
            buffer.open(QIODevice::WriteOnly);
            QImageWriter writer(&buffer, "png");
            writer.setQuality(level.second);
            return writer.write(image);
        });
        std::printf("PNG encode, %-9s Qt %s: %8.0f ms, %8.2f MiB\n", pName, level.first, dMs, png.size() / MiB);
    }
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({QStringLiteral("runs"), QStringLiteral("Runs per figure (median)."), QStringLiteral("N"),
                      QStringLiteral("3")});
    parser.addOption({QStringLiteral("side"), QStringLiteral("Side of the images in pixels."), QStringLiteral("S"),
                      QStringLiteral("4096")});
    parser.process(app);
    const int nRuns = qMax(1, parser.value(QStringLiteral("runs")).toInt());
    const int nSide = qMax(16, parser.value(QStringLiteral("side")).toInt());

    const CVXSLayoutDocument document = fullPage(nSide);
    QTemporaryDir dir;
    const QString strPath = dir.filePath(QStringLiteral("bench.vxlayout"));
    CVXSLayoutFile file;
    const int nThreads = QThreadPool::globalInstance()->maxThreadCount();
    std::printf("%d RGB32 images of %d x %d (15 gradients, 1 noise), %.0f MiB decoded; %d threads; median of %d runs\n",
                ImageCount, nSide, nSide, ImageCount * double(nSide) * nSide * 4 / MiB, nThreads, nRuns);

    const double dWriteMs = medianMs(nRuns, [&] { return file.write(strPath, document); });
    std::printf("write, %d threads: %8.0f ms, file %.1f MiB\n", nThreads, dWriteMs, QFileInfo(strPath).size() / MiB);
    CVXSLayoutDocument read;
    const double dReadMs = medianMs(nRuns, [&] { return file.read(strPath, read); });
    std::printf("read,  %d threads: %8.0f ms\n", nThreads, dReadMs);
    bool bSame = read.items.size() == document.items.size();
    for (int i = 0; bSame && i < read.items.size(); ++i)
        bSame = read.items.at(i).image == document.items.at(i).image;
    std::printf("read back identical: %s\n", bSame ? "yes" : "no");

    QVector<QImage> images;
    for (const CVXSLayoutItemState& item : document.items)
        images.append(item.image);
    const auto encodeAll = [&] {
        const QVector<QByteArray> pngs =
            QtConcurrent::blockingMapped<QVector<QByteArray>>(images, &CVXSLayoutImageCodec::encode);
        return std::none_of(pngs.cbegin(), pngs.cend(), [](const QByteArray& png) { return png.isEmpty(); });
    };
    std::printf("PNG encode of all images, %d threads: %8.0f ms\n", nThreads, medianMs(nRuns, encodeAll));
    QThreadPool::globalInstance()->setMaxThreadCount(1);
    const double dSerialMs = medianMs(nRuns, [&] { return file.write(strPath, document); });
    std::printf("write, 1 thread:  %8.0f ms\n", dSerialMs);
    std::printf("PNG encode of all images, 1 thread:  %8.0f ms\n", medianMs(nRuns, encodeAll));
    QThreadPool::globalInstance()->setMaxThreadCount(nThreads);

    printEncodeTimes("gradient", document.items.first().image, nRuns);
    printEncodeTimes("noise", document.items.last().image, nRuns);
    if (!file.errorText().isEmpty())
        std::printf("error: %s\n", qPrintable(file.errorText()));
    return bSame && dWriteMs >= 0 && dReadMs >= 0 ? 0 : 1;
}
