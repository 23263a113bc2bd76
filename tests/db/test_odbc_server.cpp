#include "db/server_base.h"
#include "platform/db/connection_text.h"

#include <QTemporaryFile>
#include <QTest>

using namespace quilla;

/// Reaching a server, and losing it, on a real PostgreSQL.
class TestOdbcServer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<ServerBase>(); }
    void cleanup() { m.reset(); }

    /// No error when nothing can have been lost: the operation comes afterwards, or has only read so far.
    void serverGoneBetween()
    {
        m->open().execute(u"insert into book(code) values('a')");
        m->dropConnections();
        QCOMPARE(m->one(u"select count(*) from book"), u"1"_s);
        Connection reading = m->open();
        m->dropConnections();
        QCOMPARE(reading.open(u"select code from book").recordCount(), 1);
        m->dropConnections();
        reading.begin();
        reading.execute(u"insert into book(code) values('b')");
        reading.commit();
        QCOMPARE(m->one(u"select count(*) from book"), u"2"_s);
    }

    void serverGoneInTransaction()
    {
        auto connection = m->open();
        auto other = m->open();
        connection.begin();
        connection.execute(u"insert into book(code) values('a')");
        m->dropConnections();
        const QString told = errorText([&] { connection.execute(u"insert into book(code) values('b')"); });
        QVERIFY2(told.contains(u"连接已断开"_s), qPrintable(told));
        QVERIFY(errorOf([&] { connection.open(u"select code from book"); }));
        QCOMPARE(other.open(u"select code from book").recordCount(), 0);
        QVERIFY(errorOf([&] { connection.commit(); }));
        connection.begin();
        connection.execute(u"insert into book(code) values('d')");
        connection.commit();
        QCOMPARE(m->one(u"select code from book"), u"d"_s);
    }

    /// The write may have been done, so it is an error, and it is never sent again.
    void serverGoneAtSingleWrite()
    {
        auto connection = m->open();
        connection.execute(u"insert into book(code) values('a')");
        m->dropConnections();
        QVERIFY(errorOf([&] { connection.execute(u"insert into book(code) values('b')"); }));
        QCOMPARE(m->one(u"select count(*) from book"), u"1"_s);
        QCOMPARE(connection.execute(u"insert into book(code) values('c')"), 1);
    }

    void refusedToOpen()
    {
        const std::pair<QString, QString> changes[] {
            {u"Database=none;"_s, u"database \"none\" does not exist"_s},
            {u"Uid=none;Pwd=geheim;"_s, u"role \"none\" does not exist"_s},
            {u"Servername=/none;Pwd=geheim;"_s, u"No such file"_s}};
        for (const auto& [change, words] : changes) {
            // An item counts when it comes first.
            QString stored = change;
            for (const auto& [key, value] : ConnectionItems(m->text()).items)
                if (!ConnectionItems(change).value(key)) stored += key + u'=' + value + u';';
            const QString told = errorText([&] { m->factory.open(stored); });
            QVERIFY2(
                told.startsWith(u"不能连接数据库服务器。\n"_s) && told.contains(words), qPrintable(told));
            QVERIFY(!told.contains(u"geheim"_s));
        }
    }

    void passwordsArrive()
    {
        const QString passwords[] {u"geheim"_s, u"o'hara"_s, u"{a}b}c=@? x"_s, u"密码😀"_s};
        const QByteArray user = "user_" + m->database.name().toUtf8();
        const auto stored = [&](const QString& password) {
            return m->text()
                .replace(u"Uid=quilla"_s, u"Uid="_s + QString::fromUtf8(user))
                .replace(u"Pwd="_s, u"Pwd="_s + doubled(password));
        };
        m->database.run("create user " + user);
        m->database.askForPassword(user);
        for (const QString& password : passwords) {
            m->database.run("alter user " + user + " password '" + doubled(password).toUtf8() + "'");
            QCOMPARE(m->factory.open(stored(password)).open(u"select 1").field(0).text(), u"1"_s);
        }
        const QString told = errorText([&] { m->factory.open(stored(u"geheim2"_s)); });
        QVERIFY2(told.contains(u"password authentication failed"_s) && !told.contains(u"geheim"_s),
            qPrintable(told));
        m->factory.drain();
        m->database.run("drop user " + user);
    }

    void dataSource()
    {
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write(u"[ODBC Data Sources]\n馆藏=x\nlibrary=x\n"
                   "[library]\nDriver=PostgreSQL Unicode\nServername=%1\nDatabase=%2\n"
                   "[馆藏]\nDriver=PostgreSQL Unicode\nServername=%1\nDatabase=%2\nUsername=quilla\n"_s
                       .arg(*ConnectionItems(m->text()).value(u"Servername"), m->database.name())
                       .toUtf8());
        file.close();
        qputenv("ODBCINI", file.fileName().toLocal8Bit());
        const auto names = odbcDataSources();
        for (const QString& name : {u"馆藏"_s, u"library"_s})
            QVERIFY(std::find(names.begin(), names.end(), name) != names.end());
        Connection connection = m->factory.open(u"PROVIDER=MSDASQL;DSN=library;UID=quilla;PWD=;"_s);
        connection.begin();
        connection.execute(u"insert into book(code) values('a')");
        QVERIFY(errorOf([&] { connection.execute(u"update nosuch set n=1"); }));
        connection.commit();
        QCOMPARE(m->one(u"select count(*) from book"), u"1"_s);
        connection = m->factory.open(u"PROVIDER=MSDASQL;DSN=馆藏;UID=;PWD=;Database=;"_s);
        QCOMPARE(connection.open(u"select code from book").field(0).text(), u"a"_s);
    }

private:
    std::unique_ptr<ServerBase> m;
};

QTEST_GUILESS_MAIN(TestOdbcServer)
#include "test_odbc_server.moc"
