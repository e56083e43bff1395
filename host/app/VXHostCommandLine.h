#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStringList>

// The host's command line: the files to open and whether to open the samples. The help
// and the version are answered without a display: they need no GUI application.
class CVXHostCommandLine
{
    Q_DECLARE_TR_FUNCTIONS(CVXHostCommandLine)
public:
    CVXHostCommandLine();

    // Whether the arguments (the program's name first) ask only for the help or the
    // version. Arguments this parser does not know, such as Qt's own options, leave the
    // answer to the GUI application.
    static bool asksForInformation(const QStringList& arguments);
    // Parses the application's arguments. Prints the help, the version or what is wrong
    // with the arguments and ends the program where they call for it.
    void process(const QCoreApplication& application);
    // Parses the arguments (the program's name first) without acting on them; false when
    // they are not usable.
    bool parse(const QStringList& arguments);

    bool opensSamples() const;
    // Images and tools' documents, as given.
    QStringList files() const;
    // How long the host runs before it quits by itself; -1 for as long as the user likes.
    int quitAfterMs() const;

private:
    QCommandLineParser m_parser;
    QCommandLineOption m_noSamples {QStringLiteral("no-samples"), tr("Do not open the built-in samples.")};
    // Lets automated runs start the whole application and end it unattended.
    QCommandLineOption m_quitAfter {QStringLiteral("quit-after-ms"), QString(), QStringLiteral("ms")};
    QCommandLineOption m_help;
    QCommandLineOption m_version;
};
