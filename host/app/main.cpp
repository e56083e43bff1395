#include "VXAppIcon.h"
#include "VXHostMainWindow.h"

#include <VXUtilityFns.h>

#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QScreen>
#include <QTimer>

namespace {

const QSize kPreferredSize(1280, 800);

// The preferred size where the screen has room for it, the whole screen otherwise.
void showMainWindow(CVXHostMainWindow& window)
{
    const QScreen* pScreen = QGuiApplication::primaryScreen();
    const QSize available = pScreen ? pScreen->availableSize() : QSize();
    if (available.width() < kPreferredSize.width() || available.height() < kPreferredSize.height()) {
        window.showMaximized();
        return;
    }
    window.resize(kPreferredSize);
    window.show();
}

void showLayoutWindow()
{
    if (QAction* pAction = CVXUtilityFns::getAction(QStringLiteral("Image Layout Window")))
        pAction->setChecked(true);
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
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
    showMainWindow(window);
    // Opening may show a message box; its loop must run inside the application's loop so
    // that quitting ends both.
    const bool bSamples = !parser.isSet(noSamples);
    const QStringList files = parser.positionalArguments();
    QTimer::singleShot(0, &window, [&window, bSamples, files] {
        if (bSamples)
            window.openSamples();
        showLayoutWindow();
        window.openImageFiles(files);
    });
    if (parser.isSet(quitAfter))
        QTimer::singleShot(parser.value(quitAfter).toInt(), &app, &QCoreApplication::quit);
    return QApplication::exec();
}
