#pragma once

#include <QString>
#include <QStringList>

// Another program run by a benchmark: its time and its own peak memory.
struct ProcessRun
{
    double dSeconds = 0;
    long nMaxRssKiB = 0;
    bool bOk = false;
};

// Runs the command with its output discarded; its peak memory comes from wait4.
ProcessRun runProcess(const QStringList& command);

// The program's path on the PATH, or empty after saying which Debian package brings it.
QString findTool(const char* pName, const char* pPackage);
