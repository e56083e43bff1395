#include "figure/export/VXSFigureExportCommand.h"

#include "figure/export/VXSFigureExportDialog.h"
#include "figure/VXSFigureController.h"
#include "host/VXSLayoutTranslator.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutWindow.h"

#include <QAction>

CVXSFigureExportCommand::CVXSFigureExportCommand(CVXSFigureController& controller)
    : QObject(&controller)
    , m_controller(controller)
{
    // The host asks for the commands before the tool has been used.
    CVXSLayoutTranslator::install();
    m_pAction = new QAction(tr("Export Figure..."), this);
    m_pAction->setObjectName(QStringLiteral("actionExportFigure"));
    connect(m_pAction, &QAction::triggered, this, &CVXSFigureExportCommand::exportFigure);
    connect(&controller, &CVXSFigureController::changed, this, &CVXSFigureExportCommand::updateEnabled);
    controller.addCommand(m_pAction, QLatin1String(CVXSFigureController::FileMenu));
    controller.addCommand(m_pAction, QLatin1String(CVXSFigureController::FigureMenu));
    updateEnabled();
}

QAction* CVXSFigureExportCommand::action() const
{
    return m_pAction;
}

void CVXSFigureExportCommand::updateEnabled()
{
    m_pAction->setEnabled(m_controller.manager() != nullptr);
}

void CVXSFigureExportCommand::exportFigure()
{
    const CVXSLayoutManager* pManager = m_controller.manager();
    if (!pManager)
        return;
    CVXSFigureExportDialog dialog(*pManager, m_controller.page(), pManager->getLayoutWindow());
    dialog.exec();
}
