#include "VXSExportMetadata.h"

#include "VXImageProvenance.h"

#include <QCoreApplication>

namespace {

QString key(const char* pKey)
{
    return QString::fromLatin1(pKey);
}

} // namespace

QStringList CVXSExportMetadata::sourcePrefixes(const QImage& image)
{
    QStringList prefixes = {QString()};
    const int nImages = image.text(key(CVXImageProvenance::ImageCount)).toInt();
    for (int n = 1; n <= nImages; ++n)
        prefixes << CVXImageProvenance::imageKey(n, QString());
    return prefixes;
}

QStringList CVXSExportMetadata::sources(const QImage& image)
{
    QStringList sources;
    for (const QString& strPrefix : sourcePrefixes(image)) {
        const QString strSource = image.text(strPrefix + key(CVXImageProvenance::Source));
        if (!strSource.isEmpty())
            sources << strSource;
    }
    return sources;
}

QString CVXSExportMetadata::description(const QImage& image)
{
    QStringList sources;
    for (const QString& strPrefix : sourcePrefixes(image)) {
        const QString strSource = image.text(strPrefix + key(CVXImageProvenance::Source));
        const QString strFrame = image.text(strPrefix + key(CVXImageProvenance::Frame));
        if (!strSource.isEmpty())
            sources << (strFrame.isEmpty() ? strSource : QStringLiteral("%1 frame %2").arg(strSource, strFrame));
    }
    const QString strImages = image.text(key(CVXImageProvenance::ImageCount));
    if (!strImages.isEmpty()) {
        return QStringLiteral("Image layout of %1 %2: %3")
            .arg(strImages, strImages == QLatin1String("1") ? QStringLiteral("image") : QStringLiteral("images"),
                 sources.join(QStringLiteral("; ")));
    }
    return sources.isEmpty() ? QString() : QStringLiteral("Exported from %1").arg(sources.join(QStringLiteral("; ")));
}

QString CVXSExportMetadata::software(const QImage& image)
{
    const QString strSoftware = image.text(key(CVXImageProvenance::Software));
    if (strSoftware.isEmpty())
        return QCoreApplication::applicationName();
    return (strSoftware + QLatin1Char(' ') + image.text(key(CVXImageProvenance::SoftwareVersion))).trimmed();
}

QDateTime CVXSExportMetadata::created(const QImage& image)
{
    QDateTime date = QDateTime::fromString(image.text(key(CVXImageProvenance::Date)), Qt::ISODate);
    if (!date.isValid())
        date = QDateTime::currentDateTime();
    return date.toOffsetFromUtc(date.offsetFromUtc());
}
