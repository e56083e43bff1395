#include "WidgetTestCase.h"

#include "ModalDialogAnswer.h"

#include <QApplication>
#include <QWidget>

QStringList leakedTopLevelWidgets()
{
    // The test is over: answers for dialogs that never came must not meet the next test's.
    cancelPendingDialogAnswers();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QStringList names;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget* pWidget : widgets)
        names << QString::fromLatin1(pWidget->metaObject()->className()) + QLatin1Char('/')
                     + pWidget->objectName();
    return names;
}

void CWidgetTestCase::endTest()
{
}

void CWidgetTestCase::cleanup()
{
    endTest();
    VERIFY_NO_LEAKED_WINDOWS();
}
