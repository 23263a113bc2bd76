#pragma once

#include "frame/menu.h"
#include "frame/workplace.h"
#include "platform/ui/form/window_places.h"

#include <QMainWindow>
#include <QMdiArea>
#include <QMenu>
#include <QPointer>

#include <array>

class QLabel;
class QMdiSubWindow;
class QToolButton;

namespace quilla {

class frmLook;

/// The main window: menu, toolbar, status bar, and the registered screens in its client area. A
/// screen is made at its first use and comes to the front when it is asked for again.
class LtMainFrm final : public QMainWindow, public ScreenHost {
    Q_OBJECT

public:
    /// `screens` must outlive the window.
    LtMainFrm(const Outputs& outputs, Session& session, const ScreenRegister& screens,
        const ActionRegister& actions = {});

    /// What follows the first appearance: the status bar and the question about overdue loans.
    void openUp();

    QWidget* openScreen(const QString& target, const QString& mode = {}) override;
    bool hasScreen(const QString& target) const override;
    /// Where the hidden edit menu sends its next command.
    void registerChild(QWidget* child) override;

    /// Shows in the status bar that the backup failed, with the cause; an empty text takes that away.
    void tellBackup(const QString& failure);

    QToolBar* Toolbar1;
    QStatusBar* StatusBar1;
    QMdiArea Client;
    QMenu EditMenu;
    QAction* mnuCopy;
    QAction* mnuPaste;
    QAction* mnuDelete;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void makeMenu();
    void makeToolbar();
    void makeStatusBar();
    QToolButton* makeStatusButton(const QString& name, const QString& caption);
    void makeBackupWarning();
    void turnSoundsTo(bool on);
    void askForHelp();
    void makeEditMenu();
    QAction* makeAction(const MenuEntry& entry);
    void perform(const MenuEntry& entry);
    void act(const QString& action);
    QMdiSubWindow* frameOf(QWidget* screen);
    void settle(QMdiSubWindow& window, const QString& target);
    QWidget* showBeside(const QString& target, const QString& key, QWidget* screen);
    void sendDelete();
    void chooseRegion();
    void choosePrinter();

    const Screen* screenOf(const QString& target) const;

    const Workplace m_place;
    Session& m_session;
    const ScreenRegister& m_screens;
    const ActionRegister m_commands;
    QHash<QString, QPointer<QWidget>> m_open; ///< screens by target and mode
    QHash<QString, QAction*> m_actions; ///< by menu caption
    std::array<QLabel*, 3> m_panels {};
    QToolButton* m_backupWarning = nullptr;
    QPointer<QWidget> m_child;
    WindowPlaces m_places; ///< goes first: what is torn down was not left by the operator
};

} // namespace quilla
