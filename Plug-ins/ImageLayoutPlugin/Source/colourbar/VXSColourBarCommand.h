#pragma once

#include <QObject>
#include <QRectF>
#include <QVector>

class QAction;
class CVXSFigureController;
class CVXSLayoutItemImage;

// "Add Colour Bar" in the host's Figure menu: a colour bar for the selected image, or for
// every image of the layout when none is selected, beside it on the page as one undo
// step. Images that are not shown through one and the same display range get no bar but a
// message naming them: a bar that fits only some of them would mislead.
class CVXSColourBarCommand : public QObject
{
    Q_OBJECT
public:
    // Adds its action to the controller's Figure menu; the controller owns the command.
    explicit CVXSColourBarCommand(CVXSFigureController& controller);

    QAction* action() const;
    // False, with the reason shown to the user, when no bar was added.
    bool addColourBar();

private:
    QVector<CVXSLayoutItemImage*> chosenImages() const;
    // The message for images without one shared range; empty when they share one.
    QString rangeProblem(const QVector<CVXSLayoutItemImage*>& images) const;
    QRectF barRect(const QVector<CVXSLayoutItemImage*>& images) const;
    void refuse(const QString& strText) const;

    CVXSFigureController& m_controller;
    QAction* m_pAction = nullptr; // child of the command
};
