#include "VXAppIcon.h"
#include "VXHostMainWindow.h"
#include "VXToolPluginLoader.h"

#include <VXLogging.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    CVXLogging::showWarningsAndErrorsOnly();
    QApplication::setOrganizationName(QStringLiteral("Halvard"));
    QApplication::setApplicationName(QStringLiteral("Vexor"));
    QApplication::setApplicationDisplayName(QStringLiteral("Vexor"));
    QApplication::setWindowIcon(CVXAppIcon::create());

    QCommandLineParser parser;
    parser.setApplicationDescription(QApplication::translate("main", "Pre-clinical optical and X-ray imaging."));
    parser.addHelpOption();
    const QCommandLineOption noSamples(QStringLiteral("no-samples"),
                                       QApplication::translate("main", "Do not open the built-in samples."));
    parser.addOption(noSamples);
    // Lets automated runs start the whole application and end it unattended.
    QCommandLineOption quitAfter(QStringLiteral("quit-after-ms"), QString(), QStringLiteral("ms"));
    quitAfter.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(quitAfter);
    parser.addPositionalArgument(QStringLiteral("files"), QApplication::translate("main", "Images to open."),
                                 QStringLiteral("[files...]"));
    parser.process(app);

    CVXHostMainWindow window;
    window.showWithLastGeometry();
    // Opening may show a message box; its loop must run inside the application's loop so
    // that quitting ends both.
    const bool bSamples = !parser.isSet(noSamples);
    const QStringList files = parser.positionalArguments();
    QTimer::singleShot(0, &window, [&window, bSamples, files] {
        window.loadToolPlugins(CVXToolPluginLoader::defaultFolders());
        if (bSamples)
            window.openSamples();
        window.showDocumentTools();
        window.openImageFiles(files);
        window.offerRecovery();
    });
    if (parser.isSet(quitAfter))
        QTimer::singleShot(parser.value(quitAfter).toInt(), &app, &QCoreApplication::quit);
    return QApplication::exec();
}
