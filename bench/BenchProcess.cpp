#include "BenchProcess.h"

#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>

#include <cstdio>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

ProcessRun runProcess(const QStringList& command)
{
    std::vector<QByteArray> encoded;
    for (const QString& strArgument : command)
        encoded.push_back(QFile::encodeName(strArgument));
    std::vector<char*> argv;
    for (QByteArray& argument : encoded)
        argv.push_back(argument.data());
    argv.push_back(nullptr);

    ProcessRun run;
    QElapsedTimer timer;
    timer.start();
    const pid_t pid = fork();
    if (pid == 0) {
        const int devNull = open("/dev/null", O_WRONLY);
        dup2(devNull, STDOUT_FILENO);
        execvp(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    struct rusage usage = {};
    if (pid < 0 || wait4(pid, &status, 0, &usage) != pid)
        return run;
    run.dSeconds = timer.nsecsElapsed() / 1e9;
    run.nMaxRssKiB = usage.ru_maxrss;
    run.bOk = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return run;
}

QString findTool(const char* pName, const char* pPackage)
{
    const QString strPath = QStandardPaths::findExecutable(QString::fromLatin1(pName));
    if (strPath.isEmpty())
        std::printf("  %s not found on the PATH: install the Debian package %s\n", pName, pPackage);
    return strPath;
}
