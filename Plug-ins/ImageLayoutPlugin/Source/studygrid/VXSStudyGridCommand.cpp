#include "studygrid/VXSStudyGridCommand.h"

#include "figure/VXSFigureController.h"
#include "file/VXSLayoutFileCommands.h"
#include "host/VXSLayoutTranslator.h"
#include "studygrid/VXSStudyGrid.h"
#include "studygrid/VXSStudyGridDialog.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutWindow.h"

#include <VXSMessageBox.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QApplication>
#include <QGraphicsScene>

CVXSStudyGridCommand::CVXSStudyGridCommand(CVXSFigureController& controller,
                                           std::function<CVXSLayoutManager*()> showLayout)
    : QObject(&controller)
    , m_showLayout(std::move(showLayout))
    , m_pAction(new QAction(this))
{
    // The host's menus show the command before the tool has built its window.
    CVXSLayoutTranslator::install();
    m_pAction->setObjectName(QStringLiteral("actionNewStudyGrid"));
    m_pAction->setText(tr("New Study Grid..."));
    m_pAction->setToolTip(tr("Lays out a study's images as animals by time points under one display range"));
    connect(m_pAction, &QAction::triggered, this, &CVXSStudyGridCommand::newStudyGrid);
    controller.addCommand(m_pAction, QLatin1String(CVXSFigureController::FileMenu));
}

QAction* CVXSStudyGridCommand::action() const
{
    return m_pAction;
}

bool CVXSStudyGridCommand::newStudyGrid()
{
    CVXSStudyGridDialog dialog(QApplication::activeWindow());
    return dialog.exec() == QDialog::Accepted && build(dialog);
}

bool CVXSStudyGridCommand::build(const CVXSStudyGridDialog& dialog)
{
    QStringList problems;
    const QVector<CVXImagePage> pages = dialog.openImages() + CVXSStudyGrid::readFiles(dialog.files(), problems);
    if (!problems.isEmpty()) {
        tell(problems.join(QLatin1Char('\n')));
        return false;
    }
    CVXSLayoutManager* pManager = m_showLayout();
    if (!pManager)
        return false;
    CVXSStudyGrid grid(dialog.rowKey(), dialog.columnKey());
    grid.setColourBar(dialog.hasColourBar());
    if (dialog.hasRange())
        grid.setRange(dialog.minimum(), dialog.maximum());
    if (!grid.build(pages, pManager->getScene()->sceneRect().size().toSize())) {
        tell((grid.warnings() << grid.errorText()).join(QLatin1Char('\n')));
        return false;
    }
    if (!pManager->fileCommands()->openNew(grid.document()))
        return false;
    if (!grid.warnings().isEmpty())
        tell(grid.warnings().join(QLatin1Char('\n')));
    return true;
}

void CVXSStudyGridCommand::tell(const QString& strText) const
{
    CVXSMessageBox::warning(QApplication::activeWindow(), CVXUtilityFns::getAppName(), strText, QString());
}
