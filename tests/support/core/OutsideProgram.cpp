#include "OutsideProgram.h"

#include <QProcess>
#include <QStandardPaths>

namespace {

constexpr int kProgramMs = 60000;

} // namespace

OutsideProgram::OutsideProgram(const QString& strProgram, const QStringList& arguments, Errors errors)
    : m_strProgram(strProgram)
{
    QProcess process;
    if (errors == Errors::InOutput)
        process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(strProgram, arguments);
    m_bFinished = process.waitForFinished(kProgramMs) && process.exitStatus() == QProcess::NormalExit;
    m_nExitCode = process.exitCode();
    m_output = process.readAllStandardOutput();
    m_errors = process.readAllStandardError();
}

bool OutsideProgram::finished() const
{
    return m_bFinished;
}

bool OutsideProgram::succeeded() const
{
    return m_bFinished && m_nExitCode == 0;
}

QByteArray OutsideProgram::output() const
{
    return m_output;
}

QByteArray OutsideProgram::errors() const
{
    return m_errors;
}

QString OutsideProgram::report() const
{
    return QStringLiteral("%1 (exit code %2):\n%3").arg(m_strProgram).arg(m_nExitCode).arg(QString::fromLocal8Bit(m_output + m_errors));
}

bool OutsideProgram::isInstalled(const QString& strProgram)
{
    return !QStandardPaths::findExecutable(strProgram).isEmpty();
}
