#include "window/VXSLayoutWindowTitle.h"

#include "VXSLayoutConstants.h"

#include <QCoreApplication>
#include <QWidget>

CVXSLayoutWindowTitle::CVXSLayoutWindowTitle(QWidget& window)
    : m_window(window)
{
}

CVXSLayoutWindowTitle::~CVXSLayoutWindowTitle()
{
    QObject::disconnect(m_stackConnection);
}

void CVXSLayoutWindowTitle::follow(QUndoStack* pStack)
{
    m_pStack = pStack;
    m_stackConnection = QObject::connect(pStack, &QUndoStack::cleanChanged, &m_window, [this] { update(); });
    update();
}

void CVXSLayoutWindowTitle::setDocumentName(const QString& strName)
{
    m_strDocumentName = strName;
    update();
}

void CVXSLayoutWindowTitle::update()
{
    QString strTitle = QCoreApplication::translate(VXSLayout::ToolNameContext, VXSLayout::ToolName);
    if (!m_strDocumentName.isEmpty())
        strTitle += QStringLiteral(" - ") + m_strDocumentName;
    if (m_pStack && !m_pStack->isClean())
        strTitle += QLatin1Char('*');
    m_window.setWindowTitle(strTitle);
}
