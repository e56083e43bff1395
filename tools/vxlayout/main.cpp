// vxlayout: builds an image layout page from image files and exports it, without a window.
// See CVXLayoutBatchOptions::helpText or run vxlayout --help.

#include "VXLayoutBatch.h"
#include "VXLayoutBatchOptions.h"

#include <VXLogging.h>
#include <VXVersion.h>

#include <QApplication>
#include <QTextStream>

#include <cstdio>

int main(int argc, char** argv)
{
    // Nothing is ever shown, so no display is needed unless the caller chose a platform.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    CVXLogging::showWarningsAndErrorsOnly();
    QApplication::setApplicationName(QStringLiteral("vxlayout"));

    QTextStream out(stdout);
    QTextStream err(stderr);
    CVXLayoutBatchOptions options;
    if (!options.parse(QApplication::arguments())) {
        err << "vxlayout: " << options.errorText() << "\n"
            << QApplication::translate("main", "Run vxlayout --help for the usage.") << "\n";
        return 1;
    }
    CVXLayoutBatch batch;
    if (options.isHelpRequested()) {
        out << CVXLayoutBatchOptions::helpText(batch.styleNames());
        return 0;
    }
    if (options.isVersionRequested()) {
        out << "vxlayout " << VX_VERSION_STRING << "\n";
        return 0;
    }
    if (!batch.run(options)) {
        for (const QString& strLine : batch.errorText().split(QLatin1Char('\n')))
            err << "vxlayout: " << strLine << "\n";
        return 1;
    }
    out << batch.reportLine() << "\n";
    if (options.isProvenanceRequested()) {
        out.flush();
        // UTF-8 whatever the locale: the values are names and IDs that must arrive intact.
        std::fwrite(batch.provenance().constData(), 1, size_t(batch.provenance().size()), stdout);
    }
    return 0;
}
