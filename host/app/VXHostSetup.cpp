#include "VXHostSetup.h"

#include "VXAppIcon.h"
#include "VXHostTranslator.h"

#include <VXLogging.h>
#include <VXVersion.h>

#include <QApplication>

void CVXHostSetup::beforeApplication()
{
    QApplication::setOrganizationName(QStringLiteral("Halvard"));
    QApplication::setApplicationName(QStringLiteral("Vexor"));
    QApplication::setApplicationDisplayName(QStringLiteral("Vexor"));
    QApplication::setApplicationVersion(QStringLiteral(VX_VERSION_STRING));
    // The installed vxhost.desktop, which names the icon the desktop shows for the windows.
    QApplication::setDesktopFileName(QStringLiteral("vxhost"));
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}

void CVXHostSetup::afterApplication()
{
    CVXLogging::showWarningsAndErrorsOnly();
    CVXHostTranslator::install();
    QApplication::setWindowIcon(CVXAppIcon::create());
}
