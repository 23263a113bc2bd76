#include "db/error_of.h"
#include "platform/db/connection_text.h"
#include "platform/db/pooled_factory.h"
#include "support/postgres_database.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace quilla;

namespace {

const QString Script
    = u"create table book (bookid int identity(1,1) not null primary key, code varchar(20) not null, "
      "name varchar(50), price decimal(8,3), lent bit default 0, day datetime, memo varchar(20000))\n"
      "go\n"
      "create index ix_book_code on book (code)\n"_s;

} // namespace

/// The driver for servers, on a real PostgreSQL.
class TestOdbc : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_schema = sql::readSchema(Script); }

    void init()
    {
        m_database = std::make_unique<PostgresDatabase>();
        m_factory = std::make_unique<PooledFactory>(m_schema, m_clock);
        Connection connection = open();
        connection.prepareEmptyBase();
        for (const auto& part : sql::splitScript(Script))
            connection.execute(part.text);
    }

    void cleanup()
    {
        m_factory.reset();
        m_database.reset();
    }

    void kindsThroughAndThrough()
    {
        auto connection = open();
        QCOMPARE(connection.execute(u"insert into Book(code,name,price,lent,day) Values('O''1','书名 "
                                    u"😀',6.125,1,'2004-3-9 8:05:03.120')"),
            1);
        const auto rows
            = connection.open(u"select * from BOOK where code='o''1  ' and price=6.125 and lent=1 "
                              u"and name='书名 😀' and day>'2004-03-09'");
        QCOMPARE(rows.recordCount(), 1);
        const sql::Kind kinds[] {sql::Kind::Integer, sql::Kind::Text, sql::Kind::Text, sql::Kind::Decimal,
            sql::Kind::Bit, sql::Kind::Date};
        const QStringList expected {
            u"1"_s, u"O'1"_s, u"书名 😀"_s, u"6.125"_s, u"True"_s, u"2004-03-09 8:05:03"_s};
        for (int i = 0; i < expected.size(); ++i) {
            QCOMPARE(rows.field(i).text(), expected[i]);
            QCOMPARE(rows.field(i).kind(), kinds[i]);
        }
        QCOMPARE(rows.field(5).plainMoment()->time.msec(), 120);
        QCOMPARE(rows.fieldName(1), u"code"_s);
        const auto named
            = connection.open(u"select Code as A类,code as [B x],count(*) as Total from book group by code");
        QCOMPARE(QStringList({named.fieldName(0), named.fieldName(1), named.fieldName(2)}),
            QStringList({u"A类"_s, u"B x"_s, u"Total"_s}));
    }

    void longTexts_data()
    {
        QTest::addColumn<QString>("written");
        QTest::newRow("10,000 characters") << u"书号 abc，"_s.repeated(1250);
        QTest::newRow("beyond the basic plane") << u"😀🙈"_s.repeated(3000);
        // Where a field's room and the pieces of a long one end.
        for (const int size :
            {1, 249, 250, 251, 499, 500, 501, 1999, 2000, 2001, 4000, 4001, 8189, 8190, 8191})
            QTest::addRow("%d", size) << QString(size - 1, u'文') + u'x';
        QTest::newRow("empty") << u""_s;
        QTest::newRow("breaks and signs") << u"a\r\n\t\\ ? {d '2000'} $1 %"_s;
    }

    void longTexts()
    {
        QFETCH(QString, written);
        auto connection = open();
        connection.execute(
            u"insert into book(code,memo) values('a','%1')"_s.arg(QString(written).replace(u"'"_s, u"''"_s)));
        const auto rows = connection.open(u"select memo,code from book");
        QCOMPARE(rows.field(0).text(), written);
        QVERIFY(!rows.field(0).isNull());
        QCOMPARE(rows.field(1).text(), u"a"_s);
        QCOMPARE(
            one(u"select len(memo) from book"), QString::number(QString(written).trimmed().toUcs4().size()));
    }

    void nulls()
    {
        auto connection = open();
        connection.execute(u"insert into book(code,lent) values('a',null)");
        connection.execute(
            u"insert into book(code,name,price,lent,day,memo) values('b','n',1,1,'2004-03-09','m')");
        auto rows = connection.open(u"select name,price,lent,day,memo from book order by code");
        for (int i = 0; i < rows.fieldCount(); ++i)
            QVERIFY(rows.field(i).isNull());
        rows.next();
        for (int i = 0; i < rows.fieldCount(); ++i)
            QVERIFY(!rows.field(i).isNull());
    }

    void numbers()
    {
        auto connection = open();
        for (const QStringView price : {u"0.5", u"-0.125", u"20", u"99999.999", u"0", u"-0.001"})
            connection.execute(u"insert into book(code,price) values('%1',%1)"_s.arg(price));
        QStringList seen;
        for (auto rows = connection.open(u"select code,price from book order by bookid"); !rows.eof();
             rows.next())
            if (rows.field(0).text() != rows.field(1).text())
                seen += rows.field(0).text() + u'>' + rows.field(1).text();
        QCOMPARE(seen, QStringList());
        QCOMPARE(one(u"select sum(price) from book"), u"100020.373"_s);
        QCOMPARE(one(u"select sum(bookid) from book"), u"21"_s);
        QCOMPARE(connection.open(u"select sum(bookid) from book").field(0).kind(), sql::Kind::Integer);
        QCOMPARE(one(u"select count(*) from book where price>'0.25'"), u"3"_s);
        QCOMPARE(one(u"select max(price)*2 from book"), u"199999.998"_s);
    }

    void refusedValues_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<int>("number"); ///< 0 for any
        QTest::newRow("empty date") << u"update book set day=''"_s << ErrorNumber::CannotConvert;
        QTest::newRow("no date") << u"update book set day='2003-13-01'"_s << ErrorNumber::CannotConvert;
        QTest::newRow("no number") << u"update book set price='x'"_s << ErrorNumber::CannotConvert;
        QTest::newRow("number of a text on the server")
            << u"select convert(int,name) from book"_s << ErrorNumber::CannotConvert;
        QTest::newRow("NUL") << u"update book set name='a%1b'"_s.arg(QChar(u'\0')) << 0;
        QTest::newRow("too long") << u"update book set name='%1'"_s.arg(u"x"_s.repeated(51)) << 0;
        QTest::newRow("too large") << u"update book set price=123456"_s << 0;
    }

    void refusedValues()
    {
        QFETCH(QString, statement);
        QFETCH(int, number);
        auto connection = open();
        connection.execute(u"insert into book(code,name,price) values('a','n',1)");
        QString told;
        const int seen = errorOf([&] { connection.open(statement); }, &told);
        QVERIFY(seen != 0);
        if (number) QCOMPARE(seen, number);
        QVERIFY2(!told.contains(u"Error while"_s) && !told.contains(u'['), qPrintable(told));
        QCOMPARE(one(u"select name from book where price=1 and day is null"), u"n"_s);
    }

    void affectedRows()
    {
        auto connection = open();
        for (int i = 0; i < 3; ++i)
            connection.execute(u"insert into book(code) values('a')");
        QCOMPARE(connection.execute(u"update book set name='x' where code='a'"), 3);
        QCOMPARE(connection.execute(u"update book set name='x' where code='none'"), 0);
        QCOMPARE(connection.execute(u"delete book where bookid=2"), 1);
        QCOMPARE(connection.open(u"update book set lent=1").recordCount(), 0);
        QCOMPARE(one(u"select count(*) from book where lent=1"), u"2"_s);
    }

    void failingStatementKeepsTransaction_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::addColumn<int>("place");
        const std::pair<const char*, QString> failing[] {{"doubled key", u"insert into mark(n) values(1)"_s},
            {"unknown table", u"update nosuch set n=1"_s}, {"unknown column", u"select nosuch from mark"_s},
            {"unreadable date", u"update book set day='x'"_s}, {"division", u"select 1/(n-1) from mark"_s},
            {"unknown function", u"select soundex(code) from book"_s}};
        for (const auto& [name, statement] : failing)
            for (const int place : {0, 1, 2, 3})
                QTest::addRow("%s %d", name, place) << statement << place;
    }

    /// What was done before stays and what follows is done, wherever the failing statement stands.
    void failingStatementKeepsTransaction()
    {
        QFETCH(QString, failing);
        QFETCH(int, place);
        m_database->run("create table mark(n integer primary key); insert into mark values(1)");
        auto connection = open();
        connection.begin();
        for (int i = 0; i < 3; ++i) {
            if (i == place) QVERIFY(errorOf([&] { connection.open(failing); }));
            connection.execute(u"insert into book(code) values('%1')"_s.arg(i));
            QCOMPARE(connection.open(u"select code from book").recordCount(), i + 1);
        }
        if (place == 3) QVERIFY(errorOf([&] { connection.open(failing); }));
        if (place == 3) QVERIFY(errorOf([&] { connection.open(failing); }));
        connection.commit();
        QCOMPARE(one(u"select count(*) from book"), u"3"_s);
    }

    void failingCommit()
    {
        m_database->run(
            "create table mark(n integer unique deferrable initially deferred); insert into mark values(1);"
            "create function twice() returns trigger language plpgsql as 'begin insert into mark values(1); "
            "return new; end';"
            "create trigger t after insert on book for each row execute function twice()");
        auto connection = open();
        connection.begin();
        connection.execute(u"insert into book(code) values('a')");
        QVERIFY(errorOf([&] { connection.commit(); }));
        connection.rollback();
        QCOMPARE(one(u"select count(*) from book"), u"0"_s);
        m_database->run("drop trigger t on book");
        connection.begin();
        connection.execute(u"insert into book(code) values('b')");
        connection.commit();
        QCOMPARE(one(u"select code from book"), u"b"_s);
    }

    void transactionsStandAlone()
    {
        auto first = open();
        auto second = open();
        first.begin();
        second.begin();
        first.execute(u"insert into book(code) values('a')");
        second.execute(u"insert into book(code) values('b')");
        auto third = open();
        third.execute(u"insert into book(code) values('c')");
        QCOMPARE(third.open(u"select code from book").recordCount(), 1);
        QCOMPARE(first.open(u"select code from book").recordCount(), 2);
        // A read of another lease shares a connection and must not spoil the transaction on it.
        QVERIFY(errorOf([&] { one(u"select 1/(len(code)-1) from book"); }));
        QCOMPARE(first.open(u"select code from book").recordCount(), 2);
        second.rollback();
        first.close(); // rolls back
        QCOMPARE(one(u"select code from book"), u"c"_s);
    }

    void forwardInsideTransaction()
    {
        auto connection = open();
        connection.begin();
        connection.execute(u"insert into book(code) values('a')");
        connection.execute(u"insert into book(code) values('b')");
        QString seen;
        for (auto rows = connection.open(u"select code from book order by code", CursorType::Forward);
             !rows.eof(); rows.next()) {
            seen += rows.field(0).text();
            QVERIFY(errorOf([&] { connection.execute(u"update nosuch set n=1"); }));
            connection.execute(u"update book set name='x' where code='%1'"_s.arg(rows.field(0).text()));
            QCOMPARE(connection.open(u"select code from book where name='x'").recordCount(), seen.size());
        }
        connection.commit();
        QCOMPARE(seen, u"ab"_s);
    }

    /// A statement that was prepared before the table was altered.
    void changedTable()
    {
        const QString select = u"select * from book"_s;
        open().execute(u"insert into book(code) values('a')");
        QCOMPARE(open().open(select).fieldCount(), 7);
        m_database->run("alter table book add column extra integer");
        errorOf([&] { open().open(select); });
        QCOMPARE(open().open(select).fieldCount(), 8);
    }

    void serverGoneBetween_data()
    {
        QTest::addColumn<bool>("held");
        QTest::newRow("an operation after it") << false;
        QTest::newRow("in an operation that reads on") << true;
    }

    /// Nothing is told when nothing can have been lost.
    void serverGoneBetween()
    {
        QFETCH(bool, held);
        open().execute(u"insert into book(code) values('a')");
        Connection reading = open();
        if (!held) reading.close();
        dropConnections();
        if (held) {
            QCOMPARE(reading.open(u"select code from book").recordCount(), 1);
            dropConnections();
            reading.begin();
            reading.execute(u"insert into book(code) values('b')");
            reading.commit();
        }
        QCOMPARE(one(u"select count(*) from book"), held ? u"2"_s : u"1"_s);
    }

    void serverGoneInTransaction()
    {
        auto connection = open();
        auto other = open();
        connection.begin();
        connection.execute(u"insert into book(code) values('a')");
        dropConnections();
        QString told;
        QVERIFY(errorOf([&] { connection.execute(u"insert into book(code) values('b')"); }, &told));
        QVERIFY2(told.contains(u"连接已断开"_s), qPrintable(told));
        QVERIFY(errorOf([&] { connection.execute(u"insert into book(code) values('c')"); }));
        QVERIFY(errorOf([&] { connection.open(u"select code from book"); }));
        QCOMPARE(other.open(u"select code from book").recordCount(), 0);
        QVERIFY(errorOf([&] { connection.commit(); }));
        QCOMPARE(connection.open(u"select code from book").recordCount(), 0);
        connection.begin();
        connection.execute(u"insert into book(code) values('d')");
        connection.commit();
        QCOMPARE(one(u"select code from book"), u"d"_s);
    }

    /// It may have been done: it is told, and never sent again.
    void serverGoneAtSingleWrite()
    {
        auto connection = open();
        connection.execute(u"insert into book(code) values('a')");
        dropConnections();
        QVERIFY(errorOf([&] { connection.execute(u"insert into book(code) values('b')"); }));
        QCOMPARE(one(u"select count(*) from book"), u"1"_s);
        QCOMPARE(connection.execute(u"insert into book(code) values('c')"), 1);
    }

    void refusedToOpen_data()
    {
        QTest::addColumn<QString>("change"); ///< of the text that works
        QTest::addColumn<QString>("words");
        QTest::newRow("no such database") << u"Database=none;"_s << u"database \"none\" does not exist"_s;
        QTest::newRow("no such user") << u"Uid=none;Pwd=geheim;"_s << u"role \"none\" does not exist"_s;
        QTest::newRow("no server") << u"Servername=/none;Pwd=geheim;"_s << u"No such file"_s;
    }

    void refusedToOpen()
    {
        QFETCH(QString, change);
        QFETCH(QString, words);
        // An item counts when it comes first.
        const ConnectionItems changes(change);
        QString stored = change;
        for (const auto& [key, value] : ConnectionItems(text()).items)
            if (!changes.value(key)) stored += key + u'=' + value + u';';
        QString told;
        QVERIFY(errorOf([&] { m_factory->open(stored); }, &told));
        QVERIFY2(told.startsWith(u"不能连接数据库服务器。\n"_s) && told.contains(words), qPrintable(told));
        QVERIFY(!told.contains(u"geheim"_s));
    }

    void passwordsArrive()
    {
        const QString passwords[] {u"geheim"_s, u"o'hara"_s, u"{a}b}c=@? x"_s, u"密码😀"_s};
        const QByteArray user = "user_" + m_database->name().toUtf8();
        const auto stored = [&](const QString& password) {
            return text()
                .replace(u"Uid=quilla"_s, u"Uid="_s + QString::fromUtf8(user))
                .replace(u"Pwd="_s, u"Pwd="_s + QString(password).replace(u"'"_s, u"''"_s));
        };
        m_database->run("create user " + user);
        m_database->askForPassword(user);
        for (const QString& password : passwords) {
            m_database->run("alter user " + user + " password '"
                + QString(password).replace(u"'"_s, u"''"_s).toUtf8() + "'");
            QCOMPARE(m_factory->open(stored(password)).open(u"select 1").field(0).text(), u"1"_s);
        }
        QString told;
        QVERIFY(errorOf([&] { m_factory->open(stored(u"geheim2"_s)); }, &told));
        QVERIFY2(told.contains(u"password authentication failed"_s) && !told.contains(u"geheim"_s),
            qPrintable(told));
        m_factory->drain();
        m_database->run("drop user " + user);
    }

    void dataSource()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"odbc.ini"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const ConnectionItems items(text());
        file.write(u"[library]\nDriver=PostgreSQL Unicode\nServername=%1\nDatabase=%2\n"_s
                       .arg(*items.value(u"Servername"), m_database->name())
                       .toUtf8());
        file.close();
        qputenv("ODBCINI", file.fileName().toLocal8Bit());
        Connection connection = m_factory->open(u"PROVIDER=MSDASQL;DSN=library;UID=quilla;PWD=;"_s);
        connection.begin();
        connection.execute(u"insert into book(code) values('a')");
        QVERIFY(errorOf([&] { connection.execute(u"update nosuch set n=1"); }));
        connection.commit();
        QCOMPARE(one(u"select count(*) from book"), u"1"_s);
    }

private:
    QString text() const { return m_database->connectionText(); }
    Connection open() { return m_factory->open(text()); }
    QString one(QStringView tsql) { return open().open(tsql).field(0).text(); }
    void dropConnections() const
    {
        m_database->run("select pg_terminate_backend(pid) from pg_stat_activity where "
                        "datname=current_database() and pid<>pg_backend_pid()");
    }

    std::unique_ptr<PostgresDatabase> m_database;
    SystemClock m_clock;
    sql::Schema m_schema;
    std::unique_ptr<PooledFactory> m_factory;
};

QTEST_GUILESS_MAIN(TestOdbc)
#include "tst_odbc.moc"
