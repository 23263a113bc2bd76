#include "database/library_schema.h"
#include "frame/connection_ops.h"
#include "frame/login_ops.h"
#include "frame/main_ops.h"
#include "frame/password_ops.h"
#include "frame/start_ops.h"
#include "frame/sublib.h"
#include "platform/db/connection_text.h"
#include "platform/db/embedded.h"
#include "support/library_test.h"

using namespace quilla;

namespace {

const QString AskForSettings = u"无法取得正确连接数据库的信息!现在输入吗?"_s;
const QString WrongPassword = u"用户名或用户密码输入错误，请核对后输入。"_s;
const QString QuoteRefused = u"用户名或者密码中不能包含【'】符号！"_s;

} // namespace

class TestFrameOps : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m->operatorUser(u"Admin"_s, u"Geheim"_s);
        m->operatorUser(u"编目员"_s, u"1"_s, false);
    }

private Q_SLOTS:
    void startSplitsTheStoredText_data()
    {
        cases<QString, QString, QString>({
            {"server",
                {u"PROVIDER=MSDASQL;Driver=SQL Server;Server=lib1;UID=a;PWD=b;Database=tsg;"_s, u"lib1"_s,
                    u"tsg"_s}},
            {"data source", {u"PROVIDER=MSDASQL;DSN=lib;UID=a;PWD=b;"_s, {}, {}}},
            {"nothing behind", {u"Server=;Database=;"_s, {}, {}}},
            {"case counts", {u"server=x;DATABASE=y;"_s, {}, {}}},
            {"later wins", {u"Server=a;Server=b"_s, u"b"_s, {}}},
            {"anywhere in the item", {u"PWD=Server=xy"_s, u"ver=xy"_s, {}}},
            {"both in one item", {u"Server=Database=z"_s, u"Database=z"_s, u"tabase=z"_s}},
        });
    }

    void startSplitsTheStoredText()
    {
        const auto [text, server, database] = given<QString, QString, QString>();
        storeConnectionText(m->session, text);
        LockFileGuard guard(m->folder.path());
        QVERIFY(prepareStart(m->session, guard));
        QCOMPARE(m->session.ServerName, server);
        QCOMPARE(m->session.DatabaseName, database);
        QCOMPARE(m->editor.calls, 0);
    }

    void startAsksForMissingSettings()
    {
        m->settings.values.clear();
        LockFileGuard guard(m->folder.path());
        QVERIFY(prepareStart(m->session, guard));
        QCOMPARE(m->editor.calls, 1);
    }

    /// Not taken for another instance.
    void unwritableFolderIsTold()
    {
        QFile inTheWay(m->folder.filePath(u"file"_s));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        LockFileGuard guard(inTheWay.fileName() + u"/data"_s);
        m->prompt.expectStart(u"程序不能在数据文件夹中写入：\n"_s + inTheWay.fileName() + u"/data\n"_s)
            .titled(u"操作提示")
            .icon(Icon::Critical);
        QVERIFY(!prepareStart(m->session, guard));
    }

    void openingAsksOnFailure()
    {
        Connection conn;
        QCOMPARE(OpenDbConnection(m->session, conn), 1000);
        QVERIFY(conn.isOpen());

        m->settings.values.clear();
        m->prompt.expect(AskForSettings)
            .titled(u"管理系统操作提示")
            .icon(Icon::Information)
            .answer(Answer::No);
        QCOMPARE(OpenDbConnection(m->session, conn), 0);
        m->prompt.expect(AskForSettings).answer(Answer::Yes);
        QCOMPARE(OpenDbConnection(m->session, conn), -1);

        storeConnectionText(
            m->session, u"DSN=%1;UID=a;PWD=geheim;Database=/nowhere/x.db"_s.arg(BuiltInDataSource));
        const QString failed = u"对不起，连接数据库失败！错误原因如下：\n"_s;
        m->prompt.expectStart(failed).titled(u"管理系统操作提示").icon(Icon::Information).answer(Answer::No);
        QCOMPARE(OpenDbConnection(m->session, conn), 1000);
        QVERIFY(!conn.isOpen());
        QVERIFY(!m->session.error.isSet());
        m->prompt.expectStart(failed).answer(Answer::Yes);
        QCOMPARE(OpenDbConnection(m->session, conn), -1);
        QCOMPARE(m->editor.calls, 2);
        QCOMPARE(CloseDbConnection(m->session, conn), 0);
    }

    void shapeConnectionTellsNothing()
    {
        Connection conn;
        QCOMPARE(OpenShapeConnection(m->session, conn), 0);
        QVERIFY(conn.isOpen());
        m->session.ConnectionText
            = u"PROVIDER=MSDASQL;DSN=%1;UID=a;PWD=;Database=/nowhere/x.db"_s.arg(BuiltInDataSource);
        QVERIFY(OpenShapeConnection(m->session, conn) != 0);
        QVERIFY(!conn.isOpen());
        QVERIFY(!m->session.error.isSet());
        QVERIFY(m->session.ConnectionText.contains(u"MSDASQL"));
    }

    void serverDateFallsBackAndTells()
    {
        QCOMPARE(GetServerDate(m->session), m->clock.moment);
        m->session.ConnectionText = u"DSN=%1;UID=a;PWD=;Database=/nowhere/x.db"_s.arg(BuiltInDataSource);
        m->prompt.expectStart(u"获取服务器日期时出现错误！原因如下：\n"_s)
            .titled(u"操作提示")
            .icon(Icon::Information);
        QCOMPARE(GetServerDate(m->session), m->clock.moment);
        QVERIFY(!m->session.error.isSet());
    }

    void savingWritesTheText()
    {
        QCOMPARE(buildConnectionText({{}, u"o'neil"_s, u"a'b"_s, u"SQL Server"_s, u"s'1"_s, u"t'g"_s}),
            u"PROVIDER=MSDASQL;Driver=SQL Server;Server=s''1;UID=o''neil;PWD=a''b;Database=t''g;"_s);
        const ConnectionInput typed {{}, u"o'neil"_s, u"a'b"_s, u"SQL Server"_s, u"s'1"_s, u"t'g"_s};
        const ConnectionInput read = connectionInputOf(buildConnectionText(typed));
        QCOMPARE(read.user + read.password + read.driver + read.server + read.database,
            u"o'neila'bSQL Servers'1t'g"_s);
        QVERIFY(saveConnection(m->session, {u"lib"_s, u"a"_s, u"b"_s, u"SQL Server"_s, u"left"_s, {}}));
        m->session.ConnectionText.clear();
        QCOMPARE(m->session.ServerName, u"left"_s);
        QVERIFY(readConnectionText(m->session));
        QCOMPARE(m->session.ConnectionText, u"PROVIDER=MSDASQL;DSN=lib;UID=a;PWD=b;"_s);
    }

    void connectionInputIsChecked()
    {
        for (const auto& [server, database] : {std::pair {u""_s, u"b"_s}, std::pair {u"s"_s, u""_s}}) {
            const auto refusal = checkConnectionInput({{}, u"a"_s, u"x"_s, u"d"_s, server, database});
            QVERIFY(refusal && refusal->icon == Icon::Information);
            QCOMPARE(refusal->title + refusal->text, u"管理系统操作提示填写的信息不完整!请重新输入!"_s);
        }
        QVERIFY(!checkConnectionInput({{}, u"a"_s, {}, u"d"_s, u"s"_s, u"b"_s}));
        QVERIFY(!checkConnectionInput({u"lib"_s, u"a"_s, {}, {}, {}, {}}));
        QCOMPARE(checkConnectionInput({u"lib"_s, {}, {}, {}, {}, {}})->text, u"用户名不能为空!请重新输入!"_s);
        QVERIFY(!checkConnectionInput({BuiltInDataSource, {}, {}, {}, {}, {}}));
    }

    void testTellsHowItWent()
    {
        const QString file = m->folder.filePath(u"another.db"_s);
        createEmbedded(file, m->schema, m->clock, createLibrary);
        const Message passed = connectionTest(m->session, {BuiltInDataSource, u"a"_s, u""_s, {}, {}, file});
        QCOMPARE(passed.title + passed.text, u"系统提示测试通过！\n请保存连接参数！"_s);
        QVERIFY(passed.icon == Icon::Information);
        QCOMPARE(m->session.ConnectionText, m->connectionText);

        struct Refusing final : ConnectionFactory {
            Connection open(const QString&) override { throw Error(1, u"driver"_s, description); }
            QString description;
        } refusing;
        Session session {m->settings, m->prompt, m->clock, refusing, m->editor};
        for (const auto& [description, told] : {
                 std::pair {u"[x]Login failed for user 'a'."_s, u"操作提示用户密码不正确，请再试一次！"_s},
                 {u"QueryTimeout property"_s, u"管理系统操作提示连接数据源超时，请重试！！"_s},
                 {u"login failed"_s, u"管理系统操作提示连接失败，请重试！！"_s}, // another driver's words
             }) {
            refusing.description = description;
            const Message failed = connectionTest(session, {});
            QCOMPARE(failed.title + failed.text, told + u"详细信息如下：\n"_s + description);
            QVERIFY(failed.icon == Icon::Information);
        }
    }

    void loginCountsFailures()
    {
        Login login(m->session);
        m->prompt.expect(WrongPassword).titled(u"操作提示").icon(Icon::Critical);
        QCOMPARE(login.enter(u"Admin"_s, u"%"_s), LoginOutcome::StayAtName);
        for (const auto& [name, password] :
            {std::pair {u"' or 1=1 --"_s, u""_s}, std::pair {u"a"_s, u"'"_s}}) {
            m->prompt.expect(QuoteRefused).titled(u"操作提示").icon(Icon::Information);
            QCOMPARE(login.enter(name, password), LoginOutcome::Stay); // does not count
        }
        m->prompt.expect(WrongPassword);
        QCOMPARE(login.enter(QString(10'000, u'长'), u"😀"_s), LoginOutcome::StayAtName);
        m->prompt.expect(u"对不起，已经三次输入错误，退出该系统。"_s)
            .titled(u"操作提示")
            .icon(Icon::Critical);
        QCOMPARE(login.enter(u""_s, u""_s), LoginOutcome::EndProcess);
    }

    void loginWithoutTheRight()
    {
        m->prompt.expect(u"对不起，你没有使用“青简台”的权限。"_s).titled(u"操作提示").icon(Icon::Critical);
        m->session.OperatorName.clear();
        QCOMPARE(Login(m->session).enter(u"编目员"_s, u"1"_s), LoginOutcome::EndProcess);
        QCOMPARE(m->session.OperatorName, QString());
    }

    void loginWithoutSettings()
    {
        m->settings.values.clear();
        m->prompt.expect(AskForSettings).answer(Answer::No);
        QCOMPARE(Login(m->session).enter(u"Admin"_s, u"Geheim"_s), LoginOutcome::Stay);
        m->editor.edit = [this] { storeConnectionText(m->session, m->connectionText); };
        m->prompt.expect(AskForSettings).titled(u"管理系统操作提示").answer(Answer::Yes);
        QCOMPARE(Login(m->session).enter(u"Admin"_s, u"Geheim"_s), LoginOutcome::Entered);
    }

    void loginWithAFailingDatabase()
    {
        m->failAt(u"From LibUse"_s);
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            m->prompt.expect(u"是否重新输入连接数据库的信息？"_s)
                .titled(u"操作提示")
                .icon(Icon::Information)
                .answer(answer);
            QCOMPARE(Login(m->session).enter(u"Admin"_s, u"Geheim"_s), LoginOutcome::Stay);
        }
        QCOMPARE(m->editor.calls, 1);
    }

    void passwordSteps_data()
    {
        const QString kept = u"Geheim"_s;
        const QString differ = u"两次输入的密码不相符，请重新输入"_s;
        const QString empty = u"你输入的密码是空的，确定要把密码设为空吗？(Y/N)"_s;
        const auto typed = [](const char* all) { return QString::fromUtf8(all).split(u','); };
        using Outcome = PasswordOutcome;
        cases<QStringList, QString, Answer, PasswordOutcome, QString>({
            {"wrong case of the old",
                {typed("geheim,a,a"), u"你输入的密码与登陆密码不符"_s, Answer::Ok, Outcome::StayAtOld, kept}},
            {"quote in the repeat alone",
                {typed("Geheim,a,a'"), differ, Answer::Ok, Outcome::StayAtNew, kept}},
            {"quote in the old", {typed("',a,a"), QuoteRefused, Answer::Ok, Outcome::Stay, kept}},
            {"quote in the new", {typed("Geheim,','"), QuoteRefused, Answer::Ok, Outcome::Stay, kept}},
            {"empty declined", {typed("Geheim,,"), empty, Answer::No, Outcome::Stay, kept}},
            {"empty", {typed("Geheim,,"), empty, Answer::Yes, Outcome::Close, {}}},
        });
    }

    void passwordSteps()
    {
        const auto [typed, text, answer, outcome, stored]
            = given<QStringList, QString, Answer, PasswordOutcome, QString>();
        m->session.OperatorName = u"admin"_s;
        m->prompt.expect(text).answer(answer, answer == Answer::Ok ? Answer::Yes : Answer::No);
        if (answer == Answer::Yes)
            m->prompt.expect(u"密码修改成功！请使用新密码！"_s).titled(u"提示").icon(Icon::Information);
        QCOMPARE(changePassword(m->session, typed[0], typed[1], typed[2]), outcome);
        QCOMPARE(m->value(u"select password from LibUse where username='Admin'"_s), stored);
    }

    void passwordFailuresKeepTheOld()
    {
        m->session.OperatorName = u"已删除"_s;
        m->prompt.expect(u"当前用户已经被删除！"_s).titled(u"提示").icon(Icon::Critical);
        QCOMPARE(changePassword(m->session, u"Geheim"_s, u"a"_s, u"a"_s), PasswordOutcome::Close);

        m->session.OperatorName = u"Admin"_s;
        for (const QString& statement : {u"From LibUse"_s, u"Update libuse"_s}) {
            m->failAt(statement);
            m->prompt.expect(u"密码修改失败！请使用原密码！"_s).titled(u"提示").icon(Icon::Critical);
            QCOMPARE(changePassword(m->session, u"Geheim"_s, u"a"_s, u"a"_s), PasswordOutcome::Stay);
        }
        m->factory.setHook({});
        QCOMPARE(m->value(u"select password from LibUse where username='Admin'"_s), u"Geheim"_s);
    }

    void overdueQuestionLooksAtDatesAlone()
    {
        const QString question = u"借还书库中存在超期书刊，是否查看？"_s;
        std::array<QString, 3> status;
        const auto open
            = [&] { return openingSteps(m->session, [&](const auto& texts) { status = texts; }); };
        m->session.ServerName = u"lib1"_s;
        m->session.DatabaseName = u"tsg"_s;
        m->reader(u"R1"_s);
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-10"_s);
        QVERIFY(!open());
        QCOMPARE(status[0], u"当前日期：2026年03月10日09时"_s);
        QCOMPARE(status[1], u"操作员：  王馆员"_s);
        QCOMPARE(status[2], u"当前数据库：lib1上的【tsg】"_s);
        m->session.ServerName.clear();
        m->session.DatabaseName.clear();
        const bool isBuiltIn = m->connectionText.contains(BuiltInDataSource);
        QCOMPARE(statusTexts(m->session)[2],
            isBuiltIn ? u"当前数据库：本机上的【内置数据库】"_s : u"当前数据库：上的【】"_s);

        m->send(u"update jhsk set yhdate='2026-03-09'"_s);
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            m->prompt.expect(question).titled(u"操作提示").icon(Icon::Warning).answer(answer);
            QCOMPARE(open(), answer == Answer::Yes);
        }
    }

    void openingReportsItsError()
    {
        m->failAt(u"From JHSK"_s);
        m->prompt.expect(u"出现意外错误！详细信息如下：\n语句失败：From JHSK"_s)
            .titled(u"操作提示")
            .icon(Icon::Information);
        QVERIFY(!openingSteps(m->session, [](const auto&) {}));
        QVERIFY(!m->session.error.isSet());
    }

    void textForStatements() { QCOMPARE(SqlText(u"  a'b\t "_s), u"a''b\t"_s); }
};

QTEST_GUILESS_MAIN(TestFrameOps)
#include "test_frame_ops.moc"
