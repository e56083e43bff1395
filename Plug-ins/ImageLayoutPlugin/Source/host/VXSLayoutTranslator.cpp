#include "host/VXSLayoutTranslator.h"

#include <QCoreApplication>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

// The catalogues live in the static core library; naming the resource keeps the linker
// from dropping them.
static void initTranslationResources()
{
    Q_INIT_RESOURCE(vximagelayout_translations);
}

void CVXSLayoutTranslator::install()
{
    // Owned by the application, so a later application object gets its own.
    static QPointer<QTranslator> s_pTranslator;
    QCoreApplication* pApplication = QCoreApplication::instance();
    if (s_pTranslator || !pApplication)
        return;
    initTranslationResources();
    auto* pTranslator = new QTranslator(pApplication);
    if (!pTranslator->load(QLocale::system(), QStringLiteral("vximagelayout"), QStringLiteral("_"),
                           QStringLiteral(":/i18n"))) {
        delete pTranslator;
        return;
    }
    QCoreApplication::installTranslator(pTranslator);
    s_pTranslator = pTranslator;
}
