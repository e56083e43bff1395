#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QtTest>

// Checks that read our files back need programs from outside; without them they cannot run.
#define VX_REQUIRE_PROGRAM(name)                                                                   \
    do {                                                                                           \
        if (!OutsideProgram::isInstalled(QStringLiteral(name)))                                    \
            QSKIP(name " is not installed; scripts/install-deps.sh installs it");                  \
    } while (false)

// An outside program that reads back what we wrote, run to its end: what it printed
// (standard output and error together) and how it ended.
class OutsideProgram
{
public:
    OutsideProgram(const QString& strProgram, const QStringList& arguments);

    bool succeeded() const;
    QByteArray output() const;
    // The program, its exit code and its output, for a failure message.
    QString report() const;

    static bool isInstalled(const QString& strProgram);

private:
    QString m_strProgram;
    bool m_bFinished = false;
    int m_nExitCode = -1;
    QByteArray m_output;
};
