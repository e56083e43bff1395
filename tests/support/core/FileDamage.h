#pragma once

#include <QByteArray>
#include <QPair>
#include <QVector>

class QRandomGenerator;

// Damaged copies of files for the corrupt-input tests, the same again for the same seed.
namespace FileDamage {

using Range = QPair<int, int>; // first byte, one past the last

// The seed VX_CORRUPT_SEED and the number of changed files VX_CORRUPT_FILES ask for, or the
// defaults when they are not set to a number.
quint32 seed(quint32 nDefault);
int changedFiles(int nDefault);
// One to nMaxChanges bytes changed, each half of the time inside one of the ranges (where
// sizes and offsets sit), else anywhere.
QByteArray withRandomChanges(QByteArray bytes, const QVector<Range>& ranges, int nMaxChanges, QRandomGenerator& random);

} // namespace FileDamage
