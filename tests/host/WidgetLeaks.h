#pragma once

#include <QStringList>

// Class and object names of the top-level widgets still alive once pending deferred
// deletions have run; empty when a test left no window behind.
QStringList leakedTopLevelWidgets();
