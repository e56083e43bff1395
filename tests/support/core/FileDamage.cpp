#include "FileDamage.h"

#include <QRandomGenerator>

quint32 FileDamage::seed(quint32 nDefault)
{
    bool bOk = false;
    const quint32 nSeed = qEnvironmentVariable("VX_CORRUPT_SEED").toUInt(&bOk);
    return bOk ? nSeed : nDefault;
}

int FileDamage::changedFiles(int nDefault)
{
    bool bOk = false;
    const int nFiles = qEnvironmentVariableIntValue("VX_CORRUPT_FILES", &bOk);
    return bOk && nFiles > 0 ? nFiles : nDefault;
}

QByteArray FileDamage::withRandomChanges(QByteArray bytes, const QVector<Range>& ranges, int nMaxChanges,
                                         QRandomGenerator& random)
{
    const int nChanges = 1 + int(random.bounded(nMaxChanges));
    for (int i = 0; i < nChanges && !bytes.isEmpty(); ++i) {
        int nPos = int(random.bounded(bytes.size()));
        if (!ranges.isEmpty() && random.bounded(2) == 0) {
            const Range& range = ranges.at(int(random.bounded(ranges.size())));
            nPos = qMin(bytes.size() - 1, range.first + int(random.bounded(qMax(1, range.second - range.first))));
        }
        auto& byte = reinterpret_cast<quint8&>(bytes.data()[nPos]);
        switch (random.bounded(3)) {
        case 0:
            byte ^= quint8(1u << random.bounded(8));
            break;
        case 1:
            byte = quint8(random.bounded(256));
            break;
        default:
            // Extremes make lengths, counts and offsets as large or as small as they get.
            byte = random.bounded(2) == 0 ? 0x00 : 0xff;
            break;
        }
    }
    return bytes;
}
