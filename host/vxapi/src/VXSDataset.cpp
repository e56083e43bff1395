#include "VXSDataset.h"

CVXSDataset::CVXSDataset(const QString& strName, const QImage& image)
    : m_strName(strName)
    , m_image(image)
{
}

CVXSDataset::~CVXSDataset() = default;

QString CVXSDataset::name() const
{
    return m_strName;
}

void CVXSDataset::setName(const QString& strName)
{
    m_strName = strName;
}

const QImage& CVXSDataset::image() const
{
    return m_image;
}

void CVXSDataset::setImage(const QImage& image)
{
    m_image = image;
}
