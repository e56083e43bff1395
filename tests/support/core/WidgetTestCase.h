#pragma once

#include <QObject>
#include <QStringList>
#include <QtTest>

// Class and object names of the top-level widgets still alive once the answers still waiting
// for a dialog are cancelled and pending deferred deletions have run; empty when a test left
// no window behind.
QStringList leakedTopLevelWidgets();

// Fails the current test, naming them, when top-level widgets are left behind.
#define VERIFY_NO_LEAKED_WINDOWS()                                                               \
    do {                                                                                         \
        const QStringList leakedWindows = leakedTopLevelWidgets();                               \
        QVERIFY2(leakedWindows.isEmpty(), qPrintable(leakedWindows.join(QStringLiteral(", ")))); \
    } while (false)

// The base of the tests that show widgets: every test function ends with no dialog answer
// waiting and no top-level widget left behind. A test class keeps no cleanup() of its own
// (it would hide this one); what it must end first goes into endTest().
class CWidgetTestCase : public QObject
{
    Q_OBJECT
protected:
    // Ends what the test function left for the class to end: a host, a fixture, a workspace.
    virtual void endTest();

private slots:
    void cleanup();
};
