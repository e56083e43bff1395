#include "VXHostCommandLine.h"

CVXHostCommandLine::CVXHostCommandLine()
    : m_help(m_parser.addHelpOption())
    , m_version(m_parser.addVersionOption())
{
    m_parser.setApplicationDescription(
        tr("Pre-clinical optical and X-ray imaging.") + QStringLiteral("\n\n")
        + tr("Images (PNG, JPEG, BMP, TIFF, DICOM) open in windows of their own, layout files (*.vxlayout) "
             "in the Image Layout window."));
    m_parser.addOption(m_noSamples);
    m_quitAfter.setFlags(QCommandLineOption::HiddenFromHelp);
    m_parser.addOption(m_quitAfter);
    m_parser.addPositionalArgument(QStringLiteral("files"), tr("Images to open."), QStringLiteral("[files...]"));
}

bool CVXHostCommandLine::asksForInformation(const QStringList& arguments)
{
    CVXHostCommandLine commandLine;
    return commandLine.parse(arguments)
           && (commandLine.m_parser.isSet(commandLine.m_help) || commandLine.m_parser.isSet(commandLine.m_version)
               || commandLine.m_parser.isSet(QStringLiteral("help-all")));
}

void CVXHostCommandLine::process(const QCoreApplication& application)
{
    m_parser.process(application);
}

bool CVXHostCommandLine::parse(const QStringList& arguments)
{
    return m_parser.parse(arguments);
}

bool CVXHostCommandLine::opensSamples() const
{
    return !m_parser.isSet(m_noSamples);
}

QStringList CVXHostCommandLine::files() const
{
    return m_parser.positionalArguments();
}

int CVXHostCommandLine::quitAfterMs() const
{
    return m_parser.isSet(m_quitAfter) ? m_parser.value(m_quitAfter).toInt() : -1;
}
