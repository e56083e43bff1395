#pragma once

#include "VxApiGlobal.h"

#include <QImage>
#include <QString>

// One image dataset opened in the host.
class VXAPI_EXPORT CVXSDataset
{
public:
    CVXSDataset(const QString& strName, const QImage& image);
    virtual ~CVXSDataset();

    QString name() const;
    void setName(const QString& strName);
    const QImage& image() const;
    void setImage(const QImage& image);

private:
    QString m_strName;
    QImage m_image;
};
