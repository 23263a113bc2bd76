#include "setup/new_library_ops.h"
#include "setup/server_ops.h"
#include "support/postgres_database.h"

#include <QtTest>

using namespace quilla;

namespace {

using State = ServerProbe::State;

} // namespace

/// A server as who joins it finds it: which step fails, what comes of it.
class TestServerSetup : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_server.run("CREATE ROLE setup_guest LOGIN PASSWORD 'geheim'");
        m_server.askForPassword("setup_guest");
    }
    void cleanupTestCase() { m_server.run("DROP OWNED BY setup_guest; DROP ROLE setup_guest"); }

    void eachStepFailsUnderItsName()
    {
        PostgresDatabase closed;
        closed.run("REVOKE ALL ON DATABASE " + closed.name().toUtf8() + " FROM public");
        const QString folder = *ConnectionItems(m_server.connectionText()).value(u"Servername");
        const QString base = m_server.name();
        const struct {
            ServerInput input;
            ServerStep step;
        } cases[] {
            {{2, u"no such source"_s, {}, {}, {}, u"u"_s}, ServerStep::Driver},
            {{0, {}, u"no-such-host.invalid"_s, u"5432"_s, base, u"quilla"_s}, ServerStep::Name},
            {{0, {}, u"/no/such/folder"_s, u"5432"_s, base, u"quilla"_s}, ServerStep::Name},
            {{0, {}, u"127.0.0.1"_s, u"1"_s, base, u"quilla"_s}, ServerStep::Port},
            {{0, {}, folder, u"5433"_s, base, u"quilla"_s}, ServerStep::Port},
            {{0, {}, folder, u"5432"_s, base, u"nobody"_s}, ServerStep::Login},
            {{0, {}, folder, u"5432"_s, base, u"setup_guest"_s, u"falsch"_s}, ServerStep::Login},
            {{0, {}, folder, u"5432"_s, u"no_such"_s, u"quilla"_s}, ServerStep::Database},
            {{0, {}, folder, u"5432"_s, closed.name(), u"setup_guest"_s, u"geheim"_s}, ServerStep::Database},
            {{0, {}, folder, u"5432"_s, base, u"setup_guest"_s, u"geheim"_s}, ServerStep::Rights},
        };
        for (const auto& [input, step] : cases) {
            QCOMPARE(checkServerInput(input), std::nullopt);
            QList<ServerStep> begun;
            const ServerTest test
                = testServer(serverText(input), [&](ServerStep next) { begun.append(next); });
            QVERIFY2(test.probe.state == State::Failed, qPrintable(test.text));
            QVERIFY2(test.probe.step == step, qPrintable(test.text));
            QCOMPARE(begun.last(), step);
            QVERIFY(!test.text.contains(u"geheim") && !test.text.contains(u"falsch"));
        }
    }

    void emptyDatabaseBecomesALibrary()
    {
        const ServerInput input = own();
        QCOMPARE(found(input).state, State::Empty);
        beginLibrary({connectionTarget(serverText(input)), u"城东图书馆"_s, u"wang"_s, u"a b"_s});
        const ServerTest test = testServer(serverText(input), [](ServerStep) {});
        QCOMPARE(test.probe.state, State::Ready);
        QCOMPARE(test.library.name, u"城东图书馆"_s);

        ServerInput guest = input;
        guest.user = u"setup_guest"_s;
        guest.password = u"geheim"_s;
        QCOMPARE(found(guest).step, ServerStep::Rights);
        m_server.run("GRANT SELECT, INSERT, UPDATE, DELETE ON ALL TABLES IN SCHEMA public TO setup_guest");
        QCOMPARE(found(guest).state, State::Ready);
        m_server.run("REVOKE DELETE ON yyk FROM setup_guest");
        QVERIFY(found(guest).words.contains(u"yyk"));

        m_server.run("COMMENT ON COLLATION quilla IS '2'");
        QCOMPARE(found(input).state, State::Earlier);
        upgradeServerLibrary(serverText(input));
        QCOMPARE(found(input).state, State::Ready);
        m_server.run("COMMENT ON COLLATION quilla IS '99'");
        QCOMPARE(found(input).step, ServerStep::Schema);
        QVERIFY(found(input).words.contains(u"99"));
        m_server.run("COMMENT ON COLLATION quilla IS '3'; DROP TABLE cbk CASCADE");
        QVERIFY(found(input).words.contains(u"CBK"_s, Qt::CaseInsensitive));
    }

    void whatWouldBreakTheTextIsRefused()
    {
        ServerInput input = own();
        const std::pair<QString ServerInput::*, QString> wrong[] {{&ServerInput::host, u"db;PWD=x"_s},
            {&ServerInput::host, {}}, {&ServerInput::port, u"0"_s}, {&ServerInput::port, u"x"_s},
            {&ServerInput::database, {}}, {&ServerInput::user, {}}, {&ServerInput::password, u"a;b"_s},
            {&ServerInput::password, u"a "_s}};
        for (const auto& [box, text] : wrong) {
            ServerInput changed = input;
            changed.*box = text;
            QVERIFY2(checkServerInput(changed), qPrintable(text));
        }
        input = {0, {}, u"db"_s, u"5433"_s, u"lib"_s, u"u"_s, u"O'Hara}"_s, true};
        QCOMPARE(serverText(input),
            u"PROVIDER=MSDASQL;Driver=PostgreSQL Unicode;Server=db;Port=5433;UID=u;PWD=O''Hara};Database=lib;SSLmode=require;"_s);
        input = {1, {}, u"db"_s, u"1434"_s, u"lib"_s, u"u"_s};
        QCOMPARE(serverText(input),
            u"PROVIDER=MSDASQL;Driver=SQL Server;Server=db,1434;UID=u;PWD=;Database=lib;"_s);
    }

private:
    ServerInput own() const
    {
        const QString folder = *ConnectionItems(m_server.connectionText()).value(u"Servername");
        return {0, {}, folder, u"5432"_s, m_server.name(), u"quilla"_s};
    }
    static ServerProbe found(const ServerInput& input)
    {
        return testServer(serverText(input), [](ServerStep) {}).probe;
    }

    PostgresDatabase m_server;
};

QTEST_GUILESS_MAIN(TestServerSetup)
#include "test_server_setup.moc"
