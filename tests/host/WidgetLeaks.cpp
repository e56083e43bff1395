#include "WidgetLeaks.h"

#include <QApplication>
#include <QWidget>

QStringList leakedTopLevelWidgets()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QStringList names;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget* pWidget : widgets)
        names << QString::fromLatin1(pWidget->metaObject()->className()) + QLatin1Char('/')
                     + pWidget->objectName();
    return names;
}
