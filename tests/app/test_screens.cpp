#include "app/screens.h"
#include "desk/desk_form.h"
#include "desk/reader_picker_form.h"
#include "exceptions/fine_form.h"
#include "frame/about_form.h"
#include "frame/login_form.h"
#include "frame/main_form.h"
#include "frame/odbc_form.h"
#include "frame/password_form.h"
#include "platform/report/report_preview.h"
#include "readers/batch_unit_form.h"
#include "readers/holiday_editor.h"
#include "readers/holiday_form.h"
#include "readers/parameter_editor.h"
#include "readers/parameter_form.h"
#include "readers/reader_card_form.h"
#include "readers/reader_list_form.h"
#include "readers/reader_name_editor.h"
#include "statistics/query_form.h"
#include "support/fine_double.h"
#include "support/report_double.h"
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

class OnePage final : public PrintedPages {
public:
    QString title() const override { return u"一页"_s; }
    Paper paper() const override { return Paper::Upright; }
    int pageCount() const override { return 1; }
    ReportPage page(int) const override { return {}; }
};

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

    /// Each form with its title and its controls by name with their text, and a name for each input.
    void controls()
    {
        const QString nameEditor = u"Text1=|cmdAdd=&A 保存增加|CmdSave=&T 保存退出|cmdQuit=&E 取消退出"_s;
        const QString picker
            = u"Text1=|Command1=查询( &F )|Frame1=读者详细资料|Image1=|labNotExists=，没有%1|Text2(0)=|Text2(16)=|Command2(0)=选定此读者( &D )|Command2(1)=取消退出( &Q )|Grid1="_s;
        const struct {
            std::function<QWidget*()> make;
            QString title, captions;
        } forms[] {
            {[&] { return new frmODBC(m->session); }, u"请设置要连接的数据库信息"_s,
                u"fraStep3=连接值|cboDSNList=(None)|txtUID=|txtPWD=|cboDrivers=SQL Server|txtServer=|txtDatabase=|cmdOK=保存(&D)|cmdCeshi=测试(&C)|cmdCancel=取消(&Q)"_s},
            {[&] { return new LtLoginFrm(m->session); }, u"Quilla 登录流通子系统"_s,
                u"txtInName=|txtInPassword=|cmdLogin=进入(&G)|cmdExit=退出(&Q)"_s},
            {[&] { return new EditPassFrm(m->session); }, u"修改口令"_s,
                u"Text1(0)=|Text1(1)=|Text1(2)=|CmdOk=&Y 确认|CmdCancel=&C 取消"_s},
            {[&] { return new AboutFrm(); }, u"关于系统"_s, {}},
            {[&] { return new TsjhFrm(m->session, m_host, m_fines, m_reports); },
                u"图书借还-操作员：王馆员"_s,
                u"cmdTuShuYuYue=&Y 图书预约|cmdWuZhengJieShu=&W 无证借书|CmdQuit=&E 安全退出|Frame1=读者信息|Label1=输入读者证号：|Label2=输入图书条码号：|Frame2=借书信息|Label3(0)=读者证号：|Label3(2)=性    别：|Label3(9)=有效期限：|Label5(9)=|Label8=输入图书条码号：|Check1=续 借(&A)|Frame3=还书信息|tMsg="_s},
            {[&] { return new FKmangerFrm(m->session, u"A"_s); }, u"罚款管理"_s,
                u"Text1(0)=|Text1(12)=|Check1(0)=超期|Check1(1)=污损|Check1(2)=丢失|lXinXi(2)=|Command1(0)=&A 保存增加|Command1(1)=&S  保存|Command1(2)=&X  关闭|Grid1(1)="_s},
            {[&] { return new holidayfrm(m->session); }, u"假期管理"_s,
                u"Command1(0)=&A 增加|Command1(1)=&D 删除|Command1(2)=&X 关闭|Command1(3)=&E 修改|lCounts=记录数：0|Grid1="_s},
            {[&] { return new holidayaddFrm(m->session); }, u"假期管理-添加"_s,
                u"Text1(0)=|Text1(1)=|Text1(2)=|Command1(0)=&A 保存增加|Command1(1)=&S 保存|Command1(2)=&X 关闭"_s},
            {[&] { return new JycsFrm(m->session, m_reports); }, u"Quilla流通参数设定"_s,
                u"Command1(0)=&A 增加|Command1(1)=&D 删除|Command1(2)=&X 关闭|Command1(3)=&E 修改|Command1(4)=&P 打印报表|lCounts=记录数：0|Grid1="_s},
            {[&] { return new JycsAddFrm(m->session); }, u"流通参数设置----流通参数添加"_s,
                u"Combo1=|Text1(0)=|Text1(10)=|Check1(0)=有过期书刊时还可以借书|Check1(1)=可以无证借书|Command1(0)=&A 保存增加|Command1(1)=&S  保存|Command1(2)=&X  关闭"_s},
            {[&] {
                 auto* card = new DzaddFrm(m->session, nullptr);
                 card->SetEditMode(u"A"_s);
                 card->LoadReader({});
                 return card;
             },
                u"新增读者信息"_s,
                u"Text1(0)=|Text1(20)=|Combo1(3)=有效|Combo2=身份证|Text2(2)=|ManPic=选择照片|Frame2=流通参数信息---(下面参数的修改只影响该读者)|Check1(0)=有过期书刊时还可以借书|Check1(1)=可以无证借书|cmdUpdateZheng=修改读者证|cmdXianShi=参 数(&C)|CmdSave=保 存(&S)|CmdQuit=退 出(&Q)"_s},
            {[&] { return allScreens(m_reports).value(u"DzglFrm"_s)(m->session, m_host, {}, nullptr); },
                u"读者管理"_s,
                u"Label1=读 者 管 理|iRowCount=0|CmdDzgl(0)=增 加(A)|CmdDzgl(1)=修 改(&E)|CmdDzgl(2)=删 除(&D)|CmdDzgl(3)=查 找(&F)|CmdDzgl(4)=挂 失(&L)|CmdDzgl(5)=成批删除|CmdDzgl(6)=关 闭(&Q)|cmdPrint=打印报表(&P)|cmdToExcel=输出到excel(&E)|Grid1="_s},
            {[] { return new updateAll; }, u"批量修改，请慎重！！！"_s,
                u"Frame1=将检索出的读者的读者单位，批量修改为如下内容：|Text1=|Command1=确定(&G)|Command2=取消(&Q)"_s},
            {[&] { return new MadddzlxFrm(m->session, 1); }, u"Quilla-定义 读者类型&单位"_s,
                u"Option1(0)=定义读者类型|Option1(1)=定义读者单位|CmdDzcs(0)=&A 增加|CmdDzcs(1)=&E 修改|CmdDzcs(2)=&D 删除|CmdDzcs(3)=&C 退出|Grid1="_s},
            {[&] { return new ReaderNameFrm(m->session, readerList(ReaderTypes)); }, u"Quilla-增加读者类型"_s,
                nameEditor},
            {[&] { return new ReaderNameFrm(m->session, readerList(ReaderUnits)); }, u"增加读者单位"_s,
                nameEditor},
            {[&] { return new QueryFrm(m->prompt, m_list); }, u"统计条件"_s,
                u"Label2(0)=查找项目|Label2(1)=查找条件|Label2(2)=查找关系|cSql=|cFuhao=|lSql=|cOrderby=|LFields=|totalSql=|Label3(0)=升序|Label3(1)=降序|Command1(0)=&U 条件合并|Command1(1)=&O  确定|Command1(2)=&X  关闭|Command2=&C  清除|Command3=&A加入"_s},
            {[&] { return new ReaderPickerFrm(m->session, noCardPicker()); }, u"借还图书-->无证借书"_s,
                picker.arg(u"无证借书权限"_s)},
            {[&] { return new ReaderPickerFrm(m->session, everyReaderPicker()); }, u"选择读者"_s,
                picker.arg(u"登记读者证！"_s)},
            {[&] {
                 return new ReportPreview(
                     std::make_shared<OnePage>(), std::make_shared<FontBook>(), m->prompt, {});
             },
                u"打印预览 - 一页"_s,
                u"cmdFirst=首页|cmdPrevious=上一页|txtPage=1|labPages=页，共 1 页|cmdNext=下一页|cmdLast=末页|cmdSmaller=缩小|cboZoom=页宽|cmdLarger=放大|cmdPrint=打印(&P)|cmdSave=另存为 PDF(&S)|cmdClose=关闭(&X)"_s},
        };
        for (const auto& [make, title, captions] : forms) {
            const std::unique_ptr<QWidget> form(make());
            QCOMPARE(form->windowTitle(), title);
            for (const QString& caption : captions.split(u'|', Qt::SkipEmptyParts)) {
                const QString control = caption.section(u'=', 0, 0);
                QCOMPARE(control + u'=' + captionOf(*form, control), caption);
            }
            for (const QWidget* control : form->findChildren<QWidget*>()) {
                const bool input = qobject_cast<const QLineEdit*>(control)
                    || qobject_cast<const QComboBox*>(control) || qobject_cast<const FlexGrid*>(control);
                const bool inside = qobject_cast<const QComboBox*>(control->parentWidget())
                    || qobject_cast<const QSpinBox*>(control->parentWidget());
                QVERIFY2(!input || inside || !control->accessibleName().isEmpty(),
                    qPrintable(title + u'.' + control->objectName()));
            }
        }
    }

    void menuAndToolbar()
    {
        const ScreenCatalog catalog = allScreens(m_reports);
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
        const ScreenCatalog catalog = allScreens(m_reports);
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
        for (const QString& list : {u"DzglFrm"_s, u"JycsFrm"_s, u"holidayfrm"_s}) { // none beyond the edge
            window.openScreen(list);
            QCOMPARE(window.Client.activeSubWindow()->pos(), QPoint(0, 0));
        }
    }

    void typesOpenAsDialog()
    {
        m->insert(u"dzlx"_s, {{u"readerclass"_s, u"学生"_s}});
        const ScreenMaker make = allScreens(m_reports).value(u"MadddzlxFrm"_s);
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
    std::unique_ptr<TestLibrary> m;
    ReportDouble m_reports;
    NoReceiver m_list;
    NoHost m_host;
    FineDouble m_fines;
    std::unique_ptr<QWidget> m_form;
};

QTEST_MAIN(TestScreens)
#include "test_screens.moc"
