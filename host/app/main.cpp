#include "VXHostCommandLine.h"
#include "VXHostMainWindow.h"
#include "VXHostSetup.h"
#include "VXHostStartup.h"
#include "VXHostTranslator.h"

#include <QApplication>
#include <QTimer>

namespace {

QStringList argumentsOf(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

} // namespace

int main(int argc, char* argv[])
{
    CVXHostSetup::beforeApplication();
    // The help and the version are printed without a display.
    if (CVXHostCommandLine::asksForInformation(argumentsOf(argc, argv))) {
        QCoreApplication application(argc, argv);
        CVXHostTranslator::install();
        CVXHostCommandLine().process(application); // prints and ends the program
        return 0;
    }

    QApplication app(argc, argv);
    CVXHostSetup::afterApplication();
    CVXHostCommandLine commandLine;
    commandLine.process(app);

    CVXHostMainWindow window;
    window.showWithLastGeometry();
    // Opening may show a message box; its loop must run inside the application's loop so
    // that quitting ends both.
    QTimer::singleShot(0, &window, [&window, &commandLine] { CVXHostStartup::run(window, commandLine); });
    if (commandLine.quitAfterMs() >= 0)
        QTimer::singleShot(commandLine.quitAfterMs(), &app, &QCoreApplication::quit);
    return QApplication::exec();
}
