#include "VXSSequenceDataset.h"

CVXSSequenceDataset::CVXSSequenceDataset(const QString& strName, const QVector<QImage>& frames)
    : m_strName(strName)
    , m_frames(frames)
{
}

CVXSSequenceDataset::~CVXSSequenceDataset() = default;

QString CVXSSequenceDataset::name() const
{
    return m_strName;
}

void CVXSSequenceDataset::setName(const QString& strName)
{
    m_strName = strName;
}

int CVXSSequenceDataset::frameCount() const
{
    return m_frames.size();
}

QImage CVXSSequenceDataset::frame(int nIndex) const
{
    return m_frames.value(nIndex);
}
