#pragma once

#include "VxApiGlobal.h"

#include <QImage>
#include <QString>
#include <QVector>

// A sequence of frames (a multi-frame file or a set of images) opened in the host.
class VXAPI_EXPORT CVXSSequenceDataset
{
public:
    CVXSSequenceDataset(const QString& strName, const QVector<QImage>& frames);
    virtual ~CVXSSequenceDataset();

    QString name() const;
    void setName(const QString& strName);
    int frameCount() const;
    // The frame at the index, a null image outside 0..frameCount()-1.
    QImage frame(int nIndex) const;

private:
    QString m_strName;
    QVector<QImage> m_frames;
};
