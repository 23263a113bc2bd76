#include "app/screens.h"
#include "desk/desk_form.h"
#include "desk/reader_picker_form.h"
#include "exceptions/fine_form.h"
#include "frame/about_form.h"
#include "frame/login_form.h"
#include "frame/main_form.h"
#include "frame/odbc_form.h"
#include "frame/password_form.h"
#include "readers/holiday_editor.h"
#include "readers/holiday_form.h"
#include "readers/parameter_editor.h"
#include "readers/parameter_form.h"
#include "readers/reader_list_form.h"
#include "readers/reader_name_editor.h"
#include "statistics/query_form.h"
#include "support/fine_double.h"
#include "support/screen_host.h"
#include "support/test_library.h"
#include "support/window_steps.h"

#include <QAbstractScrollArea>
#include <QComboBox>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QTest>
#include <QToolBar>

using namespace quilla;

namespace {

/// A control by its object name with its text, caption or title.
QString captionOf(const QWidget& form, const QString& name)
{
    const auto* control = form.findChild<QWidget*>(name);
    if (!control) return u"(missing)"_s;
    for (const char* property : {"text", "title", "currentText"}) {
        const QVariant value = control->property(property);
        if (value.isValid()) return value.toString();
    }
    return {};
}

class NoReceiver final : public QueryReceiver {
public:
    void loadData(const QString&, const QString&) override { }
};

} // namespace

/// The forms as the operator knows them: controls, captions, keys.
class TestScreens : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<TestLibrary>(); }

    void cleanup()
    {
        m_form.reset();
        QCOMPARE(m->prompt.takeComplaints(), QString());
    }

    void controls_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("captions"); // name=caption
        QTest::newRow("frmODBC") << u"frmODBC"_s << u"请设置要连接的数据库信息"_s
                                 << QStringList {u"fraStep3=连接值"_s, u"cboDSNList=(None)"_s, u"txtUID="_s,
                                        u"txtPWD="_s, u"cboDrivers=SQL Server"_s, u"txtServer="_s,
                                        u"txtDatabase="_s, u"cmdOK=保存(&D)"_s, u"cmdCeshi=测试(&C)"_s,
                                        u"cmdCancel=取消(&Q)"_s};
        QTest::newRow("LtLoginFrm") << u"LtLoginFrm"_s << u"Quilla 登录流通子系统"_s
                                    << QStringList {u"txtInName="_s, u"txtInPassword="_s,
                                           u"cmdLogin=进入(&G)"_s, u"cmdExit=退出(&Q)"_s};
        QTest::newRow("EditPassFrm") << u"EditPassFrm"_s << u"修改口令"_s
                                     << QStringList {u"Text1(0)="_s, u"Text1(1)="_s, u"Text1(2)="_s,
                                            u"CmdOk=&Y 确认"_s, u"CmdCancel=&C 取消"_s};
        QTest::newRow("AboutFrm") << u"AboutFrm"_s << u"关于系统"_s << QStringList {};
        QTest::newRow("TsjhFrm") << u"TsjhFrm"_s << u"图书借还-操作员：王馆员"_s
                                 << QStringList {u"cmdTuShuYuYue=&Y 图书预约"_s,
                                        u"cmdWuZhengJieShu=&W 无证借书"_s, u"CmdQuit=&E 安全退出"_s,
                                        u"Frame1=读者信息"_s, u"Label1=输入读者证号："_s,
                                        u"Label2=输入图书条码号："_s, u"Frame2=借书信息"_s,
                                        u"Label3(0)=读者证号："_s, u"Label3(2)=性    别："_s,
                                        u"Label3(9)=有效期限："_s, u"Label5(9)="_s,
                                        u"Label8=输入图书条码号："_s, u"Check1=续 借(&A)"_s,
                                        u"Frame3=还书信息"_s, u"tMsg="_s};
        QTest::newRow("FKmangerFrm") << u"FKmangerFrm"_s << u"罚款管理"_s
                                     << QStringList {u"Text1(0)="_s, u"Text1(12)="_s, u"Check1(0)=超期"_s,
                                            u"Check1(1)=污损"_s, u"Check1(2)=丢失"_s, u"lXinXi(2)="_s,
                                            u"Command1(0)=&A 保存增加"_s, u"Command1(1)=&S  保存"_s,
                                            u"Command1(2)=&X  关闭"_s, u"Grid1(1)="_s};
        QTest::newRow("holidayfrm") << u"holidayfrm"_s << u"假期管理"_s
                                    << QStringList {u"Command1(0)=&A 增加"_s, u"Command1(1)=&D 删除"_s,
                                           u"Command1(2)=&X 关闭"_s, u"Command1(3)=&E 修改"_s,
                                           u"lCounts=记录数：0"_s, u"Grid1="_s};
        QTest::newRow("holidayaddFrm")
            << u"holidayaddFrm"_s << u"假期管理-添加"_s
            << QStringList {u"Text1(0)="_s, u"Text1(1)="_s, u"Text1(2)="_s, u"Command1(0)=&A 保存增加"_s,
                   u"Command1(1)=&S 保存"_s, u"Command1(2)=&X 关闭"_s};
        QTest::newRow("JycsFrm") << u"JycsFrm"_s << u"Quilla流通参数设定"_s
                                 << QStringList {u"Command1(0)=&A 增加"_s, u"Command1(1)=&D 删除"_s,
                                        u"Command1(2)=&X 关闭"_s, u"Command1(3)=&E 修改"_s,
                                        u"Command1(4)=&P 打印报表"_s, u"lCounts=记录数：0"_s, u"Grid1="_s};
        QTest::newRow("JycsAddFrm") << u"JycsAddFrm"_s << u"流通参数设置----流通参数添加"_s
                                    << QStringList {u"Combo1="_s, u"Text1(0)="_s, u"Text1(10)="_s,
                                           u"Check1(0)=有过期书刊时还可以借书"_s, u"Check1(1)=可以无证借书"_s,
                                           u"Command1(0)=&A 保存增加"_s, u"Command1(1)=&S  保存"_s,
                                           u"Command1(2)=&X  关闭"_s};
        QTest::newRow("MadddzlxFrm") << u"MadddzlxFrm"_s << u"Quilla-定义 读者类型&单位"_s
                                     << QStringList {u"Option1(0)=定义读者类型"_s,
                                            u"Option1(1)=定义读者单位"_s, u"CmdDzcs(0)=&A 增加"_s,
                                            u"CmdDzcs(1)=&E 修改"_s, u"CmdDzcs(2)=&D 删除"_s,
                                            u"CmdDzcs(3)=&C 退出"_s, u"Grid1="_s};
        const QStringList nameEditor {
            u"Text1="_s, u"cmdAdd=&A 保存增加"_s, u"CmdSave=&T 保存退出"_s, u"cmdQuit=&E 取消退出"_s};
        QTest::newRow("MaddDzlx1Frm") << u"MaddDzlx1Frm"_s << u"Quilla-增加读者类型"_s << nameEditor;
        QTest::newRow("MadddzdwFrm") << u"MadddzdwFrm"_s << u"增加读者单位"_s << nameEditor;
        QTest::newRow("QueryFrm") << u"QueryFrm"_s << u"统计条件"_s
                                  << QStringList {u"Label2(0)=查找项目"_s, u"Label2(1)=查找条件"_s,
                                         u"Label2(2)=查找关系"_s, u"cSql="_s, u"cFuhao="_s, u"lSql="_s,
                                         u"cOrderby="_s, u"LFields="_s, u"totalSql="_s, u"Label3(0)=升序"_s,
                                         u"Label3(1)=降序"_s, u"Command1(0)=&U 条件合并"_s,
                                         u"Command1(1)=&O  确定"_s, u"Command1(2)=&X  关闭"_s,
                                         u"Command2=&C  清除"_s, u"Command3=&A加入"_s};
        const QStringList picker {u"Text1="_s, u"Command1=查询( &F )"_s, u"Frame1=读者详细资料"_s,
            u"Image1="_s, u"labNotExists=，没有%1"_s, u"Text2(0)="_s, u"Text2(16)="_s,
            u"Command2(0)=选定此读者( &D )"_s, u"Command2(1)=取消退出( &Q )"_s, u"Grid1="_s};
        const auto pickerWith
            = [&](const QString& notice) { return QStringList(picker).replaceInStrings(u"%1"_s, notice); };
        QTest::newRow("frmWuZhengJieShu")
            << u"frmWuZhengJieShu"_s << u"借还图书-->无证借书"_s << pickerWith(u"无证借书权限"_s);
        QTest::newRow("frmReaderSelect")
            << u"frmReaderSelect"_s << u"选择读者"_s << pickerWith(u"登记读者证！"_s);
    }

    void controls()
    {
        QFETCH(QString, name);
        QFETCH(QString, title);
        QFETCH(QStringList, captions);
        const QWidget* shown = form(name);
        QCOMPARE(shown->windowTitle(), title);
        for (const QString& caption : captions) {
            const QString control = caption.section(u'=', 0, 0);
            QCOMPARE(control + u'=' + captionOf(*shown, control), caption);
        }
    }

    void everyInputHasAName()
    {
        for (const QString& name : {u"frmODBC"_s, u"LtLoginFrm"_s, u"EditPassFrm"_s, u"TsjhFrm"_s,
                 u"FKmangerFrm"_s, u"frmReaderSelect"_s, u"holidayfrm"_s, u"holidayaddFrm"_s, u"JycsFrm"_s,
                 u"JycsAddFrm"_s, u"MadddzlxFrm"_s, u"MaddDzlx1Frm"_s, u"MadddzdwFrm"_s, u"QueryFrm"_s}) {
            for (const QWidget* control : form(name)->findChildren<QWidget*>()) {
                const bool input = qobject_cast<const QLineEdit*>(control)
                    || qobject_cast<const QComboBox*>(control) || qobject_cast<const FlexGrid*>(control);
                const bool inside = qobject_cast<const QComboBox*>(control->parentWidget());
                if (input && !inside)
                    QVERIFY2(!control->accessibleName().isEmpty(),
                        qPrintable(name + u"."_s + control->objectName()));
            }
        }
    }

    void menuAndToolbar()
    {
        const ScreenCatalog catalog = allScreens();
        LtMainFrm window(m->session, catalog);
        QCOMPARE(window.windowTitle(), u"Quilla青简总馆V4.1-----------------------青简台"_s);
        QStringList menus;
        int items = 0;
        for (const QAction* menu : window.menuBar()->actions()) {
            menus.append(menu->text());
            for (const QAction* item : menu->menu() ? menu->menu()->actions() : QList<QAction*>()) {
                ++items;
                const MenuEntry* entry = menuEntry(item->text());
                const bool works = catalog.contains(entry->target)
                    || QStringList {u"打印机设置"_s, u"区域设置"_s}.contains(entry->item);
                QVERIFY2(item->isEnabled() == works, qPrintable(item->text()));
            }
        }
        QCOMPARE(menus.join(u' '),
            u"《中图法》简表 基本资料（&M） 流通操作（&B） 统计报表（&T） 图书资料查询（&S） 系统管理（&X） 退出系统（&Q）"_s);
        QCOMPARE(items, 34);
        QStringList keys;
        for (const QAction* tool : window.Toolbar1->actions()) {
            keys.append(tool->objectName());
            QVERIFY(!tool->icon().isNull());
        }
        QCOMPARE(keys.join(u' '), u"JHBook Reader Tj Fkcl BookOut Jycs Password Quit"_s);
    }

    void screensAreReused()
    {
        const ScreenCatalog catalog = allScreens();
        LtMainFrm window(m->session, catalog);
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
    }

    void typesOpenAsDialog()
    {
        m->insert(u"dzlx"_s, {{u"readerclass"_s, u"学生"_s}});
        const ScreenMaker make = allScreens().value(u"MadddzlxFrm"_s);
        m_form.reset(make(m->session, m_host, u"0"_s, nullptr));
        QVERIFY(qobject_cast<QDialog*>(m_form.get()));
        QCOMPARE(m_form->windowTitle(), u"Quilla-定义 读者类型&单位"_s);
        appear(*m_form);
        auto* lists = m_form->findChild<MadddzlxFrm*>();
        QCOMPARE(lists->Grid1.current(1), u"学生"_s);
        lists->CmdDzcs[3].click();
        QVERIFY(!m_form->isVisible());
        m_form.reset(make(m->session, m_host, u"1"_s, nullptr));
        QVERIFY(qobject_cast<MadddzlxFrm*>(m_form.get()));
    }

    void deleteGoesToTheRegisteredChild()
    {
        class Child final : public QWidget, public MenuClient {
        public:
            void MenuClick(const QString& command) override { commands.append(command); }
            QStringList commands;
        } child;
        const ScreenCatalog catalog;
        LtMainFrm window(m->session, catalog);
        window.registerChild(&child);
        window.mnuDelete->trigger();
        window.mnuDelete->trigger();
        QCOMPARE(child.commands, QStringList {u"Delete"_s});
    }

    void connectionDialogFollowsTheDataSource()
    {
        frmODBC dialog(m->session);
        appear(dialog);
        dialog.cboDSNList.setFocus();
        dialog.txtDatabase.setText(u"left"_s);
        dialog.cboDSNList.setCurrentIndex(1);
        QVERIFY(!dialog.txtServer.isEnabled() && !dialog.cboDrivers.isEnabled()
            && !dialog.txtDatabase.isEnabled());
        QVERIFY(dialog.txtUID.hasFocus());
        m->prompt.expect(u"用户名不能为空!请重新输入!"_s);
        dialog.cmdOK.click();
        QTest::keyClicks(&dialog.txtUID, u"sa"_s);
        dialog.cmdOK.click();
        QVERIFY(m->session.ConnectionText.endsWith(u";UID=sa;PWD=;Database=left;"));
        QVERIFY(!dialog.isVisible());
        dialog.cboDSNList.setCurrentIndex(0);
        QVERIFY(
            dialog.txtServer.isEnabled() && dialog.cboDrivers.isEnabled() && dialog.txtDatabase.isEnabled());
    }

    void connectionDialogKeepsItsInputs()
    {
        frmODBC dialog(m->session);
        appear(dialog);
        for (QLineEdit* box :
            std::initializer_list<QLineEdit*> {&dialog.txtUID, &dialog.txtServer, &dialog.txtDatabase})
            QTest::keyClicks(box, u"x"_s);
        m->prompt.expectStart(u"连接失败，请重试！！详细信息如下：\n"_s);
        dialog.cmdCeshi.click();
        QCOMPARE(dialog.fraStep3.title(), u"连接值"_s);
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.txtServer.text(), u"x"_s);
        dialog.cmdCancel.click();
        QCOMPARE(m->session.ConnectionText, m->connectionText);
    }

    void loginByKeys()
    {
        m->operatorUser(u"ly"_s, u"geheim"_s);
        LtLoginFrm login(m->session);
        appear(login);
        QTest::keyClicks(&login.txtInName, u"ly"_s);
        QTest::keyClick(&login.txtInName, Qt::Key_Return);
        QVERIFY(login.txtInPassword.hasFocus());
        m->prompt.expect(u"用户名或用户密码输入错误，请核对后输入。"_s);
        QTest::keyClicks(&login.txtInPassword, u"no"_s);
        QTest::keyClick(&login.txtInPassword, Qt::Key_Return);
        QVERIFY(login.isVisible() && login.txtInName.hasFocus());
        QCOMPARE(login.txtInName.selectedText(), u"ly"_s);
        login.Image3.click();
        QCOMPARE(m->editor.calls, 1);
        login.txtInPassword.setText(u"geheim"_s);
        QTest::keyClick(&login.txtInPassword, Qt::Key_Return);
        QCOMPARE(login.result(), int(QDialog::Accepted));
    }

    void passwordByKeys()
    {
        m->operatorUser(u"王馆员"_s, u"alt"_s);
        EditPassFrm dialog(m->session);
        appear(dialog);
        const QStringList typed {u"alt"_s, u"neu"_s, u"neu"_s};
        for (int box = 0; box < 3; ++box) {
            QTest::keyClicks(&dialog.Text1[box], typed[box]);
            QTest::keyClick(&dialog.Text1[box], Qt::Key_Return);
        }
        QVERIFY(dialog.CmdOk.hasFocus());
        m->prompt.expect(u"密码修改成功！请使用新密码！"_s);
        QTest::keyClick(&dialog.CmdOk, Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(m->value(u"select password from LibUse"_s), u"neu"_s);
    }

private:
    QWidget* form(const QString& name)
    {
        if (name == u"frmODBC") m_form = std::make_unique<frmODBC>(m->session);
        if (name == u"LtLoginFrm") m_form = std::make_unique<LtLoginFrm>(m->session);
        if (name == u"EditPassFrm") m_form = std::make_unique<EditPassFrm>(m->session);
        if (name == u"AboutFrm") m_form = std::make_unique<AboutFrm>();
        if (name == u"TsjhFrm") m_form = std::make_unique<TsjhFrm>(m->session, m_host, m_fines);
        if (name == u"FKmangerFrm") m_form = std::make_unique<FKmangerFrm>(m->session, u"A"_s);
        if (name == u"frmWuZhengJieShu")
            m_form = std::make_unique<ReaderPickerFrm>(m->session, noCardPicker());
        if (name == u"frmReaderSelect")
            m_form = std::make_unique<ReaderPickerFrm>(m->session, everyReaderPicker());
        if (name == u"holidayfrm") m_form = std::make_unique<holidayfrm>(m->session);
        if (name == u"holidayaddFrm") m_form = std::make_unique<holidayaddFrm>(m->session);
        if (name == u"JycsFrm") m_form = std::make_unique<JycsFrm>(m->session, nullptr);
        if (name == u"JycsAddFrm") m_form = std::make_unique<JycsAddFrm>(m->session);
        if (name == u"MadddzlxFrm") m_form = std::make_unique<MadddzlxFrm>(m->session, 1);
        if (name == u"MaddDzlx1Frm")
            m_form = std::make_unique<ReaderNameFrm>(m->session, readerList(ReaderTypes));
        if (name == u"MadddzdwFrm")
            m_form = std::make_unique<ReaderNameFrm>(m->session, readerList(ReaderUnits));
        if (name == u"QueryFrm") m_form = std::make_unique<QueryFrm>(m->prompt, m_list);
        return m_form.get();
    }

    std::unique_ptr<TestLibrary> m;
    NoReceiver m_list;
    NoHost m_host;
    FineDouble m_fines;
    std::unique_ptr<QWidget> m_form;
};

QTEST_MAIN(TestScreens)
#include "test_screens.moc"
