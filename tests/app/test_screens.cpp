#include "app/gallery_command.h"
#include "app/screen_register.h"
#include "desk/desk_form.h"
#include "frame/login_form.h"
#include "frame/main_form.h"
#include "frame/odbc_form.h"
#include "frame/password_form.h"
#include "platform/db/connection_text.h"
#include "platform/report/report_preview.h"
#include "platform/ui/form/dialog_prompt.h"
#include "platform/ui/form/input_rules.h"
#include "platform/ui/look/theme.h"
#include "readers/reader_list_form.h"
#include "reservations/reservation_form.h"
#include "support/screen_test.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QSignalSpy>
#include <QToolBar>

using namespace quilla;

namespace {

class OnePage final : public PrintedPages {
public:
    QString title() const override { return u"一页"_s; }
    Paper paper() const override { return Paper::Upright; }
    int pageCount() const override { return 1; }
    ReportPage page(int) const override { return {}; }
};

const QSize SmallScreen(
    1366 * 4 / 5, 768 * 4 / 5 - 70); ///< at 125 %, less a title bar and the system's panel

/// The control that Tab leads to after `control` in a form.
QWidget* afterTab(QWidget* control)
{
    QWidget* next = control;
    do {
        next = next->nextInFocusChain();
    } while (next != control
        && !(next->focusPolicy() & Qt::TabFocus && next->isEnabled() && next->isVisible()
            && !next->focusProxy() && next->window() == control->window()));
    return next;
}

/// Whether an eye that reads comes to `first` before `second`: it stands above it, or left of it.
bool readsBefore(const QRect& first, const QRect& second)
{
    const bool sameLine = first.top() < second.bottom() && second.top() < first.bottom();
    return sameLine ? first.left() <= second.left()
                    : first.top() < second.top() || first.right() < second.left();
}

/// Where Tab leads back on the page: "Text1 > cmdQuit".
QStringList backwardSteps(QWidget& form)
{
    QStringList steps;
    QWidget* const start = afterTab(&form);
    for (QWidget* at = start; afterTab(at) != start; at = afterTab(at)) {
        QWidget* next = afterTab(at);
        const auto place
            = [&](QWidget* control) { return QRect(control->mapTo(&form, QPoint()), control->size()); };
        if (!readsBefore(place(at), place(next)))
            steps.append(at->objectName() + u" > "_s + next->objectName());
        if (steps.size() > 50) break;
    }
    return steps;
}

/// Complains of each form that does not fit a small screen, of each form and each input that has no name, and
/// of each dialog that goes at Esc.
class FormCheck final : public Album {
public:
    void add(const QString& name, QWidget& form) override
    {
        if (form.objectName().isEmpty()) nameless.append(form.windowTitle());
        for (const QWidget* control : form.findChildren<QWidget*>()) {
            const bool input = qobject_cast<const QLineEdit*>(control)
                || qobject_cast<const QComboBox*>(control) || qobject_cast<const FlexGrid*>(control);
            const bool inside = qobject_cast<const QComboBox*>(control->parentWidget())
                || qobject_cast<const QSpinBox*>(control->parentWidget());
            if (input && !inside && control->accessibleName().isEmpty())
                nameless.append(name + u'.' + control->objectName());
        }
        const QSize least = form.minimumSizeHint().expandedTo(form.minimumSize());
        if (least.width() > SmallScreen.width() || least.height() > SmallScreen.height())
            tooLarge.append(u"%1 %2x%3"_s.arg(name).arg(least.width()).arg(least.height()));
        form.setAttribute(Qt::WA_DontShowOnScreen);
        form.show();
        for (const QString& step : backwardSteps(form))
            backward.append(name + u": "_s + step);
        if (auto* dialog = qobject_cast<QDialog*>(&form)) {
            const QSignalSpy finished(dialog, &QDialog::finished);
            QTest::keyClick(dialog, Qt::Key_Escape);
            if (!finished.isEmpty()) closing.append(name);
        }
    }
    QStringList nameless;
    QStringList closing;
    QStringList tooLarge;
    QStringList backward;
};

} // namespace

/// The forms as the operator knows them: controls, captions, keys.
class TestScreens : public ScreenTest {
    Q_OBJECT

private Q_SLOTS:
    /// A screen reader has a name for each input of each form; so has a search for a control. What was typed
    /// into a form is not lost by Esc.
    void formsHaveNamesAndStayAtEscape()
    {
        SilentPrompt silent;
        Session session {m->settings, silent, m->clock, m->factory, m->editor};
        session.ConnectionText = m->connectionText;
        const Workplace place {m_work->place, session, m_work->host};
        applyTheme(*qApp); // the sizes are those of its texts
        FormCheck check;
        for (const Screen& screen : allScreens())
            screen.pictures(check, place);
        ReportPreview preview(
            std::make_shared<OnePage>(), std::make_shared<FontBook>(), m->prompt, QString());
        check.add(preview.objectName(), preview);
        QCOMPARE(check.nameless, QStringList());
        QCOMPARE(check.tooLarge, QStringList());
        QCOMPARE(check.backward,
            QStringList {u"frmYueLiuTongtj-calendar: cmdDate > cmdNewSelect"_s}); // it lies over them
        QCOMPARE(check.closing, (QStringList {u"errMessageFrm"_s, u"ManualFrm"_s})); // nothing is typed there
    }

    /// What leads to no screen is greyed, in the menu as on the toolbar.
    void menuAndToolbar()
    {
        LtMainFrm window(m_work->place, m->session, allScreens(), allActions());
        QStringList alive;
        for (const QAction* menu : window.menuBar()->actions())
            for (const QAction* item : menu->menu() ? menu->menu()->actions() : QList<QAction*>())
                if (item->isEnabled()) alive.append(item->text());
        QCOMPARE(alive.join(u' '),
            u"中图法简表 读者类型定义 读者单位定义 假期设定 流通参数设置 图书借还 图书预约 查看预约信息 打印预约图书回库通知单 清除过期的预约 读者管理 流通统计 注销登记 罚款管理 超期管理 丢失管理 流通量统计 超期统计 罚款统计 借阅历史统计 图书借阅排行榜 读者借阅排行榜 月流通工作量统计 月图书借出分类统计 月读者借阅统计 年流通工作量统计 年图书借出分类统计 年读者借阅统计 图书资料查询 好书推荐 修改口令 打印机设置 区域设置 关于系统"_s);
        alive.clear();
        for (const QAction* tool : window.Toolbar1->actions()) {
            QVERIFY(!tool->icon().isNull());
            if (tool->isEnabled()) alive.append(tool->objectName());
        }
        QCOMPARE(alive.join(u' '), u"JHBook Reader Tj Fkcl BookOut Jycs Password Quit"_s);
    }

    void menuOpensItsScreens()
    {
        LtMainFrm window(m_work->place, m->session, allScreens(), allActions());
        QStringList opened;
        for (const QAction* menu : window.menuBar()->actions())
            for (QAction* item : menu->menu() ? menu->menu()->actions() : QList<QAction*>()) {
                if (!QStringList({u"读者单位定义"_s, u"流通参数设置"_s, u"假期设定"_s, u"读者管理"_s})
                         .contains(item->text()))
                    continue;
                item->trigger();
                opened.append(window.Client.activeSubWindow()->widget()->objectName());
            }
        QCOMPARE(opened.join(u' '), u"MadddzlxFrm holidayfrm JycsFrm DzglFrm"_s);
        QVERIFY(window.findChild<MadddzlxFrm*>()->Option1[1].isChecked()); // the units
    }

    void screensAreReused()
    {
        LtMainFrm window(m_work->place, m->session, allScreens());
        window.show();
        window.openScreen(u"TsjhFrm"_s);
        window.openScreen(u"EditPassFrm"_s);
        auto* desk = window.findChild<TsjhFrm*>();
        desk->TxtReaderCode.setText(u"kept"_s);
        window.openScreen(u"TsjhFrm"_s);
        QCOMPARE(window.findChildren<TsjhFrm*>().size(), 1);
        QCOMPARE(window.Client.activeSubWindow()->widget(), desk);
        QCOMPARE(desk->TxtReaderCode.text(), u"kept"_s);
        desk->CmdQuit.click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(window.findChildren<TsjhFrm*>().size(), 0);
        window.openScreen(u"TsjhFrm"_s);
        QCOMPARE(window.findChild<TsjhFrm*>()->TxtReaderCode.text(), QString());
        for (const QString& list : {u"DzglFrm"_s, u"JycsFrm"_s, u"holidayfrm"_s}) { // none beyond the edge
            window.openScreen(list);
            QCOMPARE(window.Client.activeSubWindow()->pos(), QPoint(0, 0));
        }
    }

    /// Each window comes back where it was left, and into sight where the room is smaller by then.
    void placesAreRemembered()
    {
        for (const QString& room : {u"0,0,780,760"_s, u"0,0,700,500"_s}) {
            m->settings.set(u"青简文库"_s, u"Places"_s, u"LtMainFrm"_s, room);
            LtMainFrm window(m_work->place, m->session, allScreens());
            appear(window);
            const QRect area = window.Client.viewport()->rect();
            window.openScreen(u"TsjhFrm"_s);
            QCOMPARE(window.Client.activeSubWindow()->geometry(), area);
            window.openScreen(u"JycsFrm"_s);
            QMdiSubWindow* list = window.Client.activeSubWindow();
            if (area.width() == 780) list->setGeometry(200, 320, 570, 300);
            QVERIFY(area.contains(list->geometry()));
            QCOMPARE(list->size(), QSize(570, 300));
            QVERIFY(list->x() > 100 && list->y() > 50);
            window.hide();
        }
        m->settings.set(u"青简文库"_s, u"Places"_s, u"LtMainFrm"_s, u"5000,9000,700,500"_s);
        m->settings.set(u"青简文库"_s, u"Places"_s, u"Folder.另存为"_s, QDir::rootPath());
        auto& window = opened<LtMainFrm>(m_work->place, m->session, allScreens());
        QTRY_VERIFY(window.screen()->availableGeometry().contains(window.frameGeometry()));
        QFileDialog dialog(nullptr, u"另存为"_s, QDir::homePath());
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.selectFile(u"报表"_s);
        dialog.show();
        QCOMPARE(dialog.selectedFiles(), QStringList {QDir::rootPath() + u"报表"_s});
    }

    /// A minimised screen comes back, and one that closes itself leaves no empty frame with a password in it.
    void framesFollowTheirScreens()
    {
        auto& window = opened<LtMainFrm>(m_work->place, m->session, allScreens());
        window.openScreen(u"EditPassFrm"_s);
        auto* password = window.findChild<EditPassFrm*>();
        password->Text1[1].setText(u"geheim"_s);
        QMdiSubWindow* frame = window.Client.activeSubWindow();
        frame->showMinimized();
        window.openScreen(u"EditPassFrm"_s);
        QVERIFY(!frame->isMinimized() && password->isVisible());
        password->CmdCancel.click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(window.Client.subWindowList().size(), 0);
        window.openScreen(u"EditPassFrm"_s);
        QCOMPARE(window.findChild<EditPassFrm*>()->Text1[1].text(), QString());
        QVERIFY(window.findChild<EditPassFrm*>()->isVisible());
    }

    /// The letter of the active screen comes before that of a menu, of the entry which asks to leave the
    /// program, and of a screen behind it.
    void lettersOfTheActiveScreen()
    {
        applyInputRules(*qApp);
        auto& window = opened<LtMainFrm>(m_work->place, m->session, allScreens());
        window.openScreen(u"TsjhFrm"_s);
        auto* desk = window.findChild<TsjhFrm*>();
        QCOMPARE(focusName(), u"TxtReaderCode"_s);
        QTest::keyClick(&desk->TxtReaderCode, Qt::Key_J, Qt::AltModifier); // nobody's
        QCOMPARE(desk->TxtReaderCode.text(), QString());
        const QPointer<QWidget> behind[] {
            window.openScreen(u"LtCountFrm"_s), window.openScreen(u"frmTuShuYuyueList"_s)};
        for (const auto& [name, letter] : {std::pair {u"JycsFrm"_s, Qt::Key_X}, {u"DzglFrm"_s, Qt::Key_Q}}) {
            const QPointer<QWidget> list = window.openScreen(name);
            QTest::keyClick(list, letter, Qt::AltModifier);
            QTRY_VERIFY(!list);
            QVERIFY(!QApplication::activePopupWidget());
            QVERIFY(behind[0] && behind[1]);
        }
    }

    /// Beside the others it comes to the front in its first box, which no message box brings about; left, it
    /// is hidden and empty. The desk waits for one of its own.
    void reservationsBesideAndInFront()
    {
        auto& window = opened<LtMainFrm>(m_work->place, m->session, allScreens());
        window.openScreen(u"frmTushuYuYue"_s);
        auto* form = window.findChild<frmTushuYuYue*>();
        QCOMPARE(focusName(), u"Text1"_s);
        form->Reader.Text2[0].setFocus();
        whenShown<QMessageBox>([](QMessageBox& box) { box.close(); });
        DialogPrompt().inform(u"x"_s);
        appear(window);
        QCOMPARE(focusName(), u"Text2(0)"_s);
        window.openScreen(u"EditPassFrm"_s);
        window.openScreen(u"frmTushuYuYue"_s);
        QCOMPARE(focusName(), u"Text1"_s);
        form->Reader.Text2[0].setText(u"R1"_s);
        window.Client.activeSubWindow()->close();
        QVERIFY(!form->isVisible());
        QCOMPARE(focusName(), u"Text1(0)"_s); // the screen behind it has the keyboard
        window.openScreen(u"frmTushuYuYue"_s);
        QVERIFY(form->isVisible());
        QCOMPARE(form->Reader.Text2[0].text(), QString());

        window.openScreen(u"TsjhFrm"_s);
        QString focus;
        whenShown<QDialog>([&](QDialog& dialog) {
            focus = focusName();
            dialog.findChild<frmTushuYuYue*>()->cmdYuYue[1].click();
        });
        window.findChild<TsjhFrm*>()->cmdTuShuYuYue.click();
        QCOMPARE(focus, u"Text1"_s);
    }

    void typesOpenAsDialog()
    {
        const auto& screens = allScreens();
        const auto lists = std::find_if(screens.begin(), screens.end(),
            [](const Screen& screen) { return screen.name == u"MadddzlxFrm"; });
        const std::unique_ptr<QWidget> form(lists->make(m_work->place, u"0"_s, nullptr));
        QVERIFY(qobject_cast<QDialog*>(form.get()));
        QCOMPARE(form->windowTitle(), u"Quilla-定义 读者类型&单位"_s);
        appear(*form);
        QTest::keyClick(form.get(), Qt::Key_Escape);
        QVERIFY(form->isVisible());
        form->findChild<MadddzlxFrm*>()->CmdDzcs[3].click();
        QVERIFY(!form->isVisible());
    }

    void deleteGoesToTheRegisteredChild()
    {
        class Child final : public QWidget, public MenuClient {
        public:
            void MenuClick(const QString& command) override { commands.append(command); }
            QStringList commands;
        } child;
        LtMainFrm window(m_work->place, m->session, allScreens());
        window.registerChild(&child);
        window.mnuDelete->trigger();
        window.mnuDelete->trigger();
        QCOMPARE(child.commands, QStringList {u"Delete"_s});
    }

    void connectionDialog()
    {
        frmODBC dialog(m->session);
        QCOMPARE(dialog.cboDSNList.currentText(), BuiltInDataSource); // what is stored now
        QVERIFY(m->connectionText.endsWith(dialog.txtDatabase.text() + u';'));
        appear(dialog);
        dialog.cboDSNList.setCurrentIndex(0);
        for (TextBox* box : {&dialog.txtUID, &dialog.txtPWD, &dialog.txtServer, &dialog.txtDatabase})
            box->clear();
        QTest::keyClicks(&dialog.txtUID, u"sa"_s);
        QTest::keyClicks(&dialog.txtServer, u"x"_s);
        QTest::keyClicks(&dialog.txtDatabase, u"left"_s);
        m->prompt.expectStart(u"连接失败，请重试！！详细信息如下：\n"_s);
        dialog.cmdCeshi.click();
        QCOMPARE(dialog.fraStep3.title() + dialog.txtServer.text(), u"连接值x"_s);
        QCOMPARE(m->session.ConnectionText, m->connectionText);
        dialog.txtUID.clear();
        dialog.cboDSNList.setFocus();
        dialog.cboDSNList.addItem(u"lib"_s);
        dialog.cboDSNList.setCurrentText(u"lib"_s);
        QVERIFY(!dialog.txtServer.isEnabled() && !dialog.cboDrivers.isEnabled()
            && !dialog.txtDatabase.isEnabled());
        QVERIFY(dialog.txtUID.hasFocus());
        dialog.cmdOK.setFocus();
        m->prompt.expect(u"用户名不能为空!请重新输入!"_s);
        dialog.cmdOK.click();
        QVERIFY(dialog.txtUID.hasFocus());
        QTest::keyClicks(&dialog.txtUID, u"sa"_s);
        dialog.cmdOK.click();
        QVERIFY(m->session.ConnectionText.endsWith(u";UID=sa;PWD=;Database=left;"));
        QVERIFY(!dialog.isVisible());
        dialog.cboDSNList.setCurrentIndex(0);
        QVERIFY(dialog.txtServer.isEnabled());
    }

    void loginByKeys()
    {
        m->operatorUser(u"ly"_s, u"geheim"_s);
        auto& login = opened<LtLoginFrm>(m->session);
        type(login.txtInName, u"ly"_s);
        QVERIFY(login.txtInPassword.hasFocus());
        m->prompt.expect(u"用户名或用户密码输入错误，请核对后输入。"_s);
        type(login.txtInPassword, u"no"_s);
        QVERIFY(login.isVisible());
        QCOMPARE(login.txtInName.selectedText(), u"ly"_s);
        login.Image3.click();
        QCOMPARE(m->editor.calls, 1);
        login.txtInPassword.clear();
        type(login.txtInPassword, u"geheim"_s);
        QCOMPARE(login.result(), int(QDialog::Accepted));
    }

    void passwordByKeys()
    {
        m->operatorUser(u"王馆员"_s, u"alt"_s);
        auto& dialog = opened<EditPassFrm>(m->session);
        for (const QString& typed : {u"alt"_s, u"neu"_s, u"neu"_s})
            type(*QApplication::focusWidget(), typed);
        QVERIFY(dialog.CmdOk.hasFocus());
        m->prompt.expect(u"密码修改成功！请使用新密码！"_s);
        QTest::keyClick(&dialog.CmdOk, Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(m->value(u"select password from LibUse"_s), u"neu"_s);
    }
};

QTEST_MAIN(TestScreens)
#include "test_screens.moc"
