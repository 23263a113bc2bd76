#include "app/application.h"
#include "app/desk_application.h"
#include "database/check.h"
#include "database/library_schema.h"
#include "desk/desk_form.h"
#include "frame/login_form.h"
#include "frame/main_form.h"
#include "frame/sublib.h"
#include "platform/db/connection_text.h"
#include "platform/db/embedded.h"
#include "platform/ui/look/theme.h"
#include "readers/reader_card_form.h"
#include "support/scripted_prompt.h"
#include "support/window_steps.h"

#include <QLabel>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>

using namespace quilla;

/// The whole program as an operator sees it: from the start procedure to a written loan, through the
/// real windows, on a file in a fresh home.
class TestDeskDay : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_CONFIG_HOME", m_home.filePath(u"config"_s).toUtf8());
        qputenv("XDG_DATA_HOME", m_home.filePath(u"data"_s).toUtf8());
        createEmbedded(embeddedDatabaseFile(), m_schema, m_clock, [this](Connection& conn) {
            createLibrary(conn);
            plant(conn);
        });
        FileSettings().set(StoredText::Application.toString(), StoredText::Section.toString(),
            StoredText::Key.toString(), u"PROVIDER=MSDASQL;DSN=%1;UID=desk;PWD=;"_s.arg(BuiltInDataSource));
    }

    void startLoginCharge()
    {
        ScriptedPrompt prompt;
        prompt.expect(u"用户名或用户密码输入错误，请核对后输入。"_s);
        prompt.expect(u"借还书库中存在超期书刊，是否查看？"_s).answer(Answer::No);
        prompt.expect(u"是否确定退出青简台？（Y/N）"_s).answer(Answer::No);
        prompt.expect(u"是否确定退出青简台？（Y/N）"_s).answer(Answer::Yes);
        QString outcome;
        QString focus;

        whenShown<LtMainFrm>([&](LtMainFrm& window) {
            QTest::qWait(50);
            window.findChild<QAction*>(u"JHBook"_s)->trigger();
            auto* desk = window.findChild<TsjhFrm*>();
            type(desk->TxtReaderCode, u"R1"_s);
            type(desk->TxtBarCode, u"B1"_s);
            outcome = desk->tMsg.text();
            for (const QString& label : {u"Panel2"_s, u"lMain"_s})
                outcome += u'|' + window.findChild<QLabel*>(label)->text();
            focus = focusName();
            window.close();
            QVERIFY(window.isVisible());
            window.close();
        });
        whenShown<LtLoginFrm>([](LtLoginFrm& login) {
            type(login.txtInName, u"LY"_s);
            type(login.txtInPassword, u"wrong"_s);
            login.txtInPassword.selectAll();
            type(login.txtInPassword, u"geheim"_s);
        });

        DeskApplication program(prompt);
        QCOMPARE(program.run(), 0);

        QCOMPARE(prompt.takeComplaints(), QString());
        QCOMPARE(outcome, u"借书成功|操作员：  LY|Quilla青简总馆V4.1-----------------------青简台"_s);
        QCOMPARE(focus, u"TxtBarCode"_s);
        QCOMPARE(
            value(u"select readercode,operater,datediff(dy,orderdate,yhdate) from jhsk where barcode='B1'"_s),
            u"R1|LY|20"_s);
    }

    void aSecondInstanceIsRefused()
    {
        ScriptedPrompt prompt;
        prompt.expect(u"程序已经运行，不能再次装载。"_s).titled(u"操作提示").icon(Icon::Information);
        whenShown<LtLoginFrm>([&](LtLoginFrm& login) {
            DeskApplication second(prompt);
            QCOMPARE(second.run(), 0);
            login.cmdExit.click();
        });
        DeskApplication first(prompt);
        QCOMPARE(first.run(), 0);
        QCOMPARE(prompt.takeComplaints(), QString());
    }

    /// A quota that is no number, saved in the modal card editor. The last test: the guard speaks only once.
    void anUnhandledErrorEndsTheProgram()
    {
        ScriptedPrompt prompt;
        DeskApplication program(prompt);
        readConnectionText(program.session());
        QString told;
        whenShown<QMessageBox>([&](QMessageBox& box) {
            told = box.text();
            box.close();
        });
        whenShown<DzaddFrm>([](DzaddFrm& card) {
            card.Text1[CardBox::ReaderCode].setText(u"R9"_s);
            card.Text1[CardBox::Name].setText(u"张三"_s);
            for (const int list : {CardList::Type, CardList::Unit})
                card.Combo1[list].setEditText(u"甲"_s);
            for (int box = CardBox::LoanDays; box <= CardBox::ScienceCopies; ++box)
                card.Text1[box].setText(u"1"_s);
            card.Text1[CardBox::LoanCopies].setText(u"五"_s);
            QTest::mouseClick(&card.CmdSave, Qt::LeftButton);
        });
        QTimer::singleShot(0, qApp, [&] {
            DzaddFrm card(program.session(), nullptr);
            card.SetEditMode(u"A"_s);
            card.LoadReader({});
            card.exec();
        });
        QCOMPARE(QApplication::exec(), 1);
        QCOMPARE(prompt.takeComplaints(), QString());
        QCOMPARE(told, u"实时错误 '13'：\n\n类型不匹配"_s);
        QCOMPARE(value(u"select readercode from dzk where readercode='R9'"_s), QString());
    }

private:
    void plant(Connection& conn)
    {
        conn.execute(u"insert into LibUse(username,password,borrow) values('ly','geheim',1)");
        conn.execute(u"insert into zsk(bookname,author) values('平凡的世界','路遥')");
        conn.execute(
            u"insert into sck(zskid,barcode,price,borrowstatus,bookstatus) values(1,'B1',20,1,'库本')");
        conn.execute(
            u"insert into dzk(readercode,name,readerclass,bookcount,daycount,ifcanre,readstatus,term) "
            "values('R1','李四','学生',5,20,0,'有效','2099-12-31')");
        conn.execute(u"insert into jhsk(readercode,barcode,orderdate,yhdate,operater) "
                     "values('R0','B0','2001-01-01','2001-02-01','x')");
    }

    QString value(const QString& tsql)
    {
        PooledFactory factory(m_schema, m_clock);
        Connection conn = factory.open(u"DSN=%1;"_s.arg(BuiltInDataSource));
        const Recordset row = conn.open(tsql);
        QStringList fields;
        for (int field = 0; !row.eof() && field < row.fieldCount(); ++field)
            fields.append(row.field(field).text());
        return fields.join(u'|');
    }

    QTemporaryDir m_home;
    SystemClock m_clock;
    sql::Schema m_schema = librarySchema();
};

int main(int argc, char** argv)
{
    GuardedApplication application(argc, argv);
    applyTheme(application);
    TestDeskDay test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_desk_day.moc"
