#pragma once

#include <QStringList>

// Class and object names of the top-level widgets still alive once pending deferred
// deletions have run; empty when a test left no window behind.
QStringList leakedTopLevelWidgets();

// Fails the current test, naming them, when top-level widgets are left behind.
#define VERIFY_NO_LEAKED_WINDOWS()                                                               \
    do {                                                                                         \
        const QStringList leakedWindows = leakedTopLevelWidgets();                               \
        QVERIFY2(leakedWindows.isEmpty(), qPrintable(leakedWindows.join(QStringLiteral(", ")))); \
    } while (false)
