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

// An outside program that reads back what we wrote, run to its end: what it printed and how
// it ended.
class OutsideProgram
{
public:
    // Where its standard error goes: into the output, or apart, for output that is parsed.
    enum class Errors { InOutput, Apart };

    OutsideProgram(const QString& strProgram, const QStringList& arguments, Errors errors = Errors::InOutput);

    // Ended by itself, in time.
    bool finished() const;
    bool succeeded() const;
    QByteArray output() const;
    // Empty unless kept apart.
    QByteArray errors() const;
    // The program, its exit code and all it printed, for a failure message.
    QString report() const;

    static bool isInstalled(const QString& strProgram);

private:
    QString m_strProgram;
    bool m_bFinished = false;
    int m_nExitCode = -1;
    QByteArray m_output;
    QByteArray m_errors;
};
