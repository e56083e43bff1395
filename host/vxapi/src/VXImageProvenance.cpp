#include "VXImageProvenance.h"

#include <QWidget>

QStringList CVXImageProvenance::keys()
{
    return {QString::fromLatin1(Source),           QString::fromLatin1(Frame),
            QString::fromLatin1(FrameCount),       QString::fromLatin1(Window),
            QString::fromLatin1(Tab),              QString::fromLatin1(SequenceFrame),
            QString::fromLatin1(ImageSize),        QString::fromLatin1(PatientId),
            QString::fromLatin1(AcquisitionDate),  QString::fromLatin1(AcquisitionTime),
            QString::fromLatin1(Modality),         QString::fromLatin1(PixelSpacing),
            QString::fromLatin1(StudyInstanceUid), QString::fromLatin1(SeriesInstanceUid),
            QString::fromLatin1(SopInstanceUid),   QString::fromLatin1(SopClassUid),
            QString::fromLatin1(StudyRow),         QString::fromLatin1(StudyColumn)};
}

QString CVXImageProvenance::imageKey(int nImage, const QString& strKey)
{
    return QStringLiteral("Image %1 %2").arg(nImage).arg(strKey);
}

void CVXImageProvenance::setKey(QImage& image, const QString& strKey, const QString& strValue)
{
    if (!strValue.isEmpty())
        image.setText(strKey, strValue);
}

void CVXImageProvenance::copyKeys(const QImage& from, QImage& to)
{
    for (const QString& strKey : from.textKeys())
        to.setText(strKey, from.text(strKey));
}

void CVXImageProvenance::markHandedOver(QImage& image, const QString& strWindow)
{
    if (image.isNull())
        return;
    setKey(image, QString::fromLatin1(Window), strWindow);
    image.setText(QString::fromLatin1(ImageSize),
                  QStringLiteral("%1 x %2 pixels").arg(image.width()).arg(image.height()));
}

QString CVXImageProvenance::windowTitleOf(const QWidget* pWidget)
{
    for (; pWidget; pWidget = pWidget->parentWidget()) {
        if (!pWidget->windowTitle().isEmpty())
            return pWidget->windowTitle();
    }
    return QString();
}
