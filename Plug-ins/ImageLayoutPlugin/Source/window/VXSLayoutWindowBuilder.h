#pragma once

#include <QCoreApplication>

#include <initializer_list>

class QAction;
class QMenu;
class QString;
class QToolButton;
class QWidget;
class CVXSLayoutWindow;

// Builds the layout window: its central area, actions, toolbar, popup menus and
// layout-style box, fills the window's members with them, connects them to the window's
// slots and sets their texts. It keeps nothing of its own, so the window makes one for
// each step whenever it needs it.
class CVXSLayoutWindowBuilder
{
    // The texts are the window's and are translated in its context.
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutWindow)
public:
    explicit CVXSLayoutWindowBuilder(CVXSLayoutWindow& window);

    // The central area with the frame for the view and the annotation box, the actions
    // with their provisional texts, and the size grip.
    void buildControls();
    void connectControls();
    // The toolbar with its popup buttons and the layout-style box, the icons, tips and
    // shortcuts of what it holds, and their connections.
    void buildToolBar();
    // The texts languageChange sets anew.
    void setTexts();

private:
    void buildCentralArea();
    void buildAnnotationGroup(QWidget* pParent);
    void createActions();
    void createSizeGrip();
    void createPasteActiveDatasetAction();
    void setToolBarIcons();
    // One entry of a popup menu: the window's member that holds it, its object name, the
    // number it stands for (an arrow kind or a Z command), its text (translated; null for
    // none), its icon and its what's-this.
    struct PopupEntry
    {
        QAction* CVXSLayoutWindow::*pMember;
        const char* pObjectName;
        int nValue;
        const char* pText;
        const char* pIconPath;
        const char* pWhatsThis;
    };

    // The entries are made in the order given; the first is the menu's active entry.
    QMenu* createPopup(const char* pObjectName, std::initializer_list<PopupEntry> entries);
    void createArrowMenu();
    void createMoveZMenu();
    void createLayoutStyleBox();
    void setAnnotationButtons();
    void setShortcuts();
    void fillToolBar();
    void connectToolBar();
    QAction* createAction(const char* pObjectName);
    QToolButton* createPopupButton(const char* pObjectName, QMenu* pMenu, const QString& strIconPath);

    CVXSLayoutWindow& m_window;
};
