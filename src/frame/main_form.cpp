#include "frame/main_form.h"

#include "frame/look_form.h"
#include "frame/main_ops.h"
#include "frame/platform_panels.h"
#include "platform/ui/form/form.h"
#include "platform/ui/grid/list_screen.h"
#include "platform/ui/look/icons.h"
#include "platform/ui/look/theme.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>

namespace quilla {

namespace {

const QString ProgramTitle = u"Quilla青简总馆V4.1-----------------------青简台"_s;

} // namespace

LtMainFrm::LtMainFrm(
    const Outputs& outputs, Session& session, const ScreenRegister& screens, const ActionRegister& actions)
    : Toolbar1(new QToolBar)
    , StatusBar1(statusBar())
    , m_place {outputs, session, *this}
    , m_session(session)
    , m_screens(screens)
    , m_commands(actions)
    , m_places(session.settings)
{
    QUILLA_NAMES(Client, EditMenu);
    Toolbar1->setObjectName(u"Toolbar1"_s);
    StatusBar1->setObjectName(u"StatusBar1"_s);
    setObjectName(u"LtMainFrm"_s);
    setWindowTitle(ProgramTitle);
    setCentralWidget(&Client);
    Client.setFocus(); // not in the status bar, where the space bar would turn the sounds off
    Client.setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    Client.setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    Client.setBackground(palette().window());
    makeMenu();
    makeToolbar();
    makeStatusBar();
    makeEditMenu();
    resize(pixelsOf(16200, *this), pixelsOf(10800, *this));
}

void LtMainFrm::makeMenu()
{
    QMenu* menu = nullptr;
    for (const MenuEntry& entry : mainMenu()) {
        QAction* action = makeAction(entry);
        if (entry.item.isEmpty()) {
            menuBar()->addAction(action);
            continue;
        }
        if (!menu || menu->title() != entry.menu) menu = menuBar()->addMenu(entry.menu);
        menu->addAction(action);
    }
}

QAction* LtMainFrm::makeAction(const MenuEntry& entry)
{
    auto* action = new QAction(entry.item.isEmpty() ? entry.menu : entry.item, this);
    if (!entry.objectName.isEmpty()) action->setObjectName(entry.objectName);
    const bool works = entry.opening == Opening::Action
        ? m_commands.contains(entry.target) || isOwnAction(entry.target)
        : hasScreen(entry.target);
    action->setEnabled(works);
    connect(action, &QAction::triggered, this, [this, &entry] { perform(entry); });
    m_actions.insert(action->text(), action);
    return action;
}

void LtMainFrm::makeToolbar()
{
    addToolBar(Toolbar1);
    Toolbar1->setMovable(false);
    Toolbar1->setContextMenuPolicy(Qt::PreventContextMenu); // its menu would hide it for good
    Toolbar1->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    Toolbar1->setIconSize(QSize(32, 32));
    for (const ToolEntry& tool : toolbar()) {
        const MenuEntry* entry = menuEntry(tool.item);
        const QAction* menuAction = m_actions.value(entry->item.isEmpty() ? entry->menu : entry->item);
        QAction* action = Toolbar1->addAction(toolbarIcon(tool.key), tool.item);
        action->setObjectName(tool.key);
        action->setEnabled(menuAction->isEnabled());
        connect(action, &QAction::triggered, this, [this, entry] { perform(*entry); });
    }
}

void LtMainFrm::makeStatusBar()
{
    StatusBar1->setContentsMargins(10, 0, 0, 0); // flush with the forms above
    for (QLabel*& panel : m_panels) {
        panel = new QLabel;
        panel->setObjectName(u"Panel%1"_s.arg(&panel - m_panels.data() + 1));
        panel->setTextFormat(Qt::PlainText);
        StatusBar1->addWidget(panel, panel == m_panels.back() ? 1 : 0);
    }
    auto* sounds = new QCheckBox(u"提示音"_s);
    sounds->setObjectName(u"chkSounds"_s);
    sounds->setToolTip(u"借还成功、拒绝和提问时播放声音"_s);
    sounds->setFocusPolicy(Qt::TabFocus); // a click leaves the focus in the box that is scanned into
    sounds->setChecked(soundsAreOn(m_session.settings));
    connect(sounds, &QCheckBox::toggled, this, &LtMainFrm::turnSoundsTo);
    StatusBar1->addPermanentWidget(sounds);
    makeBackupWarning();
    QToolButton* help = makeStatusButton(u"cmdHelp"_s, u"手册 F1"_s);
    help->setToolTip(u"打开使用手册中当前窗口的一节"_s);
    connect(help, &QToolButton::clicked, this, &LtMainFrm::askForHelp);
}

QToolButton* LtMainFrm::makeStatusButton(const QString& name, const QString& caption)
{
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setText(caption);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    StatusBar1->addPermanentWidget(button);
    return button;
}

void LtMainFrm::makeBackupWarning()
{
    m_backupWarning = makeStatusButton(u"cmdBackupWarning"_s, u"备份没有成功"_s);
    m_backupWarning->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_backupWarning->setIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning));
    m_backupWarning->hide();
    connect(m_backupWarning, &QToolButton::clicked, this,
        [this] { m_session.prompt.warn(m_backupWarning->toolTip(), OperationTitle); });
}

void LtMainFrm::tellBackup(const QString& failure)
{
    m_backupWarning->setToolTip(failure);
    m_backupWarning->setVisible(!failure.isEmpty());
}

void LtMainFrm::askForHelp()
{
    QWidget* focus = QApplication::focusWidget();
    QKeyEvent key(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
    QCoreApplication::sendEvent(focus ? focus : this, &key);
}

void LtMainFrm::turnSoundsTo(bool on)
{
    try {
        turnSounds(m_session.settings, on);
    } catch (const Error& error) {
        m_session.prompt.warn(error.text, OperationTitle);
    }
}

void LtMainFrm::makeEditMenu()
{
    mnuCopy = EditMenu.addAction(u"复制"_s);
    mnuPaste = EditMenu.addAction(u"粘贴"_s);
    mnuDelete = EditMenu.addAction(u"删除"_s);
    connect(mnuDelete, &QAction::triggered, this, [this] { sendDelete(); });
}

void LtMainFrm::openUp()
{
    new frmLook(ProgramTitle, *Client.viewport());
    const bool look = openingSteps(m_session, [this](const std::array<QString, 3>& texts) {
        for (std::size_t panel = 0; panel < texts.size(); ++panel)
            m_panels[panel]->setText(texts[panel]);
    });
    const MenuEntry* overdue = menuEntry(u"超期管理");
    if (look && hasScreen(overdue->target)) perform(*overdue);
}

const Screen* LtMainFrm::screenOf(const QString& target) const
{
    const auto found = std::find_if(m_screens.begin(), m_screens.end(),
        [&](const Screen& screen) { return screen.name == target && screen.make; });
    return found == m_screens.end() ? nullptr : &*found;
}

bool LtMainFrm::hasScreen(const QString& target) const
{
    return screenOf(target) != nullptr;
}

void LtMainFrm::registerChild(QWidget* child)
{
    m_child = child;
}

void LtMainFrm::perform(const MenuEntry& entry)
{
    if (entry.opening == Opening::Action)
        act(entry.target);
    else
        openScreen(entry.target, entry.mode);
}

QWidget* LtMainFrm::openScreen(const QString& target, const QString& mode)
{
    const QString key = target + u'/' + mode;
    if (QWidget* open = m_open.value(key)) return showBeside(target, key, open);
    const Screen* wanted = screenOf(target);
    if (!wanted) return nullptr;
    QWidget* screen = wanted->make(m_place, mode, this);
    auto* dialog = qobject_cast<QDialog*>(screen);
    if (!dialog) return showBeside(target, key, screen);
    const std::unique_ptr<QDialog> modal(dialog);
    modal->exec();
    return nullptr;
}

/// A window of the client area around the screen, which keeps the size that the screen gave itself, as far
/// as there is room. The client area scrolls where there is not even room for the smallest size.
QMdiSubWindow* LtMainFrm::frameOf(QWidget* screen)
{
    if (!screen->testAttribute(Qt::WA_Resized)) screen->adjustSize();
    const QSize wanted = screen->size();
    QMdiSubWindow* window = Client.addSubWindow(screen);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowIcon(windowIcon());
    const QMargins border = window->contentsMargins();
    const int title = window->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, window);
    const QSize whole
        = wanted.grownBy({border.left(), title + border.bottom(), border.right(), border.bottom()});
    const QSize room = Client.viewport()->size().expandedTo(window->minimumSizeHint());
    window->resize(Client.isVisible() ? whole.boundedTo(room) : whole);
    return window;
}

/// Where the operator left it; else the lists stand in the corner, as does whatever would not be seen whole
/// elsewhere.
void LtMainFrm::settle(QMdiSubWindow& window, const QString& target)
{
    if (Client.isVisible() && m_places.putBack(window)) return;
    if (screenOf(target)->fillsRoom) window.setGeometry(Client.viewport()->rect());
    const bool isList = qobject_cast<ListScreen*>(window.widget());
    const bool whole = Client.viewport()->rect().contains(window.geometry());
    if (!window.isMaximized() && (isList || !whole)) window.move(0, 0);
}

/// A screen that is already open comes to the front.
QWidget* LtMainFrm::showBeside(const QString& target, const QString& key, QWidget* screen)
{
    auto* window = qobject_cast<QMdiSubWindow*>(screen->parentWidget());
    if (!window) {
        window = frameOf(screen);
        m_open.insert(key, screen);
        window->show();
        settle(*window, target);
    }
    window->isMinimized() ? window->showNormal() : window->show();
    window->raise();
    Client.setActiveSubWindow(window);
    return screen;
}

void LtMainFrm::act(const QString& action)
{
    if (action == MenuAction::Quit)
        close();
    else if (action == MenuAction::RegionalSettings)
        chooseRegion();
    else if (action == MenuAction::PrinterSetup)
        choosePrinter();
    else if (const auto command = m_commands.value(action))
        command(m_place);
}

void LtMainFrm::chooseRegion()
{
    m_session.prompt.inform(u"请选择日期标签，将【短日期样式】修改为【yyyy-MM-dd】"_s, OperationTitle);
    if (!startRegionalSettings())
        m_session.prompt.inform(u"没有找到系统的区域设置面板，请在系统设置中修改。"_s, OperationTitle);
}

void LtMainFrm::choosePrinter()
{
    showPrinterSetup(m_session.settings, this);
}

void LtMainFrm::sendDelete()
{
    if (auto* client = dynamic_cast<MenuClient*>(m_child.data())) client->MenuClick(u"Delete"_s);
    m_child.clear();
}

void LtMainFrm::closeEvent(QCloseEvent* event)
{
    if (!confirmExit(m_session)) return event->ignore();
    event->accept();
    QCoreApplication::quit();
}

} // namespace quilla
