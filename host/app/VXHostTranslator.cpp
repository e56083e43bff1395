#include "VXHostTranslator.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

// The host's catalogues live in its static library; naming the resource keeps the linker
// from dropping them.
static void initTranslationResources()
{
    Q_INIT_RESOURCE(vxhost_translations);
}

void CVXHostTranslator::install()
{
    // The application object owns what is installed, so a later one gets its own.
    static QPointer<QCoreApplication> s_pInstalledInto;
    QCoreApplication* pApplication = QCoreApplication::instance();
    if (!pApplication || s_pInstalledInto == pApplication)
        return;
    s_pInstalledInto = pApplication;
    initTranslationResources();
    installCatalogue(QStringLiteral("vxhost"), QStringLiteral(":/i18n"));
    installCatalogue(QStringLiteral("qtbase"), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
}

void CVXHostTranslator::installCatalogue(const QString& strName, const QString& strFolder)
{
    auto* pTranslator = new QTranslator(QCoreApplication::instance());
    if (!pTranslator->load(QLocale::system(), strName, QStringLiteral("_"), strFolder)) {
        delete pTranslator;
        return;
    }
    QCoreApplication::installTranslator(pTranslator);
}
