#include "figure/VXSImageSourceName.h"

#include <VXImageProvenance.h>

QString CVXSImageSourceName::of(const QImage& image)
{
    const QString strSource = image.text(QString::fromLatin1(CVXImageProvenance::Source));
    const QString strFrame = image.text(QString::fromLatin1(CVXImageProvenance::Frame));
    const QString strName = strSource.isEmpty() ? tr("an image without a name") : strSource;
    return strFrame.isEmpty() ? strName : tr("%1 frame %2").arg(strName, strFrame);
}
