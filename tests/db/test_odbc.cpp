#include "db/server_base.h"

#include <QTest>

using namespace quilla;

/// The driver for servers, on a real PostgreSQL.
class TestOdbc : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<ServerBase>(); }
    void cleanup() { m.reset(); }

    void kindsThroughAndThrough()
    {
        auto connection = m->open();
        QCOMPARE(connection.execute(u"insert into Book(code,name,price,lent,day) Values('O''1','书名 "
                                    u"😀',6.125,1,'2004-3-9 8:05:03.120')"),
            1);
        connection.execute(u"insert into book(code,lent) values('z',null)");
        connection.execute(u"insert into book(code,price) values('y',-0.001)");
        auto rows = connection.open(u"select * from BOOK where code='o''1  ' and price=6.125 and lent=1 "
                                    u"and name='书名 😀' and day>'2004-03-09'");
        QCOMPARE(rows.recordCount(), 1);
        const std::pair<sql::Kind, QString> expected[] {{sql::Kind::Integer, u"1"_s},
            {sql::Kind::Text, u"O'1"_s}, {sql::Kind::Text, u"书名 😀"_s}, {sql::Kind::Decimal, u"6.125"_s},
            {sql::Kind::Bit, u"True"_s}, {sql::Kind::Date, u"2004-03-09 8:05:03"_s}};
        for (int i = 0; i < 6; ++i) {
            QCOMPARE(rows.field(i).text(), expected[i].second);
            QCOMPARE(rows.field(i).kind(), expected[i].first);
        }
        QCOMPARE(rows.field(5).moment()->time.msec(), 120);
        rows = connection.open(u"select name,price,lent,day,memo from book order by code desc");
        for (int i = 0; i < rows.fieldCount(); ++i)
            QVERIFY(rows.field(i).isNull());
        QCOMPARE(m->one(u"select min(price)*2 from book"), u"-0.002"_s);
        const auto named = connection.open(u"select Code as A类,code as [B x] from book");
        QCOMPARE(named.fieldName(0) + u'|' + named.fieldName(1), u"A类|B x"_s);
    }

    /// Also where a field's room and the pieces of a long one end.
    void longTexts()
    {
        QStringList texts {
            u"书号 abc，"_s.repeated(1250), u"😀🙈"_s.repeated(3000), u""_s, u"a\r\n\t\\ ? {d '2000'} $1 %"_s};
        for (const int size : {1, 249, 250, 251, 499, 500, 501, 1999, 2000, 2001, 4001, 8189, 8190, 8191})
            texts += QString(size - 1, u'文') + u'x';
        auto connection = m->open();
        for (const QString& written : texts) {
            connection.execute(u"delete from book");
            connection.execute(u"insert into book(code,memo) values('a','%1')"_s.arg(doubled(written)));
            const auto rows = connection.open(u"select memo,code,len(memo) from book");
            QVERIFY2(rows.field(0).text() == written, qPrintable(QString::number(written.size())));
            QCOMPARE(rows.field(1).text(), u"a"_s);
            QCOMPARE(rows.field(2).integer(), QString(written).trimmed().toUcs4().size());
        }
    }

    void refusedValues()
    {
        constexpr int any = 0;
        const std::pair<QString, int> refused[] {{u"update book set day=''"_s, ErrorNumber::CannotConvert},
            {u"update book set day='2003-13-01'"_s, ErrorNumber::CannotConvert},
            {u"update book set price='x'"_s, ErrorNumber::CannotConvert},
            {u"select convert(int,name) from book"_s, ErrorNumber::CannotConvert},
            {u"update book set name='a%1b'"_s.arg(QChar(u'\0')), any},
            {u"update book set name='%1'"_s.arg(u"x"_s.repeated(51)), any},
            {u"update book set price=123456"_s, any}};
        auto connection = m->open();
        connection.execute(u"insert into book(code,name,price) values('a','n',1)");
        for (const auto& [statement, number] : refused) {
            QString told;
            const int seen = errorOf([&] { connection.open(statement); }, &told);
            QVERIFY2(seen != 0 && (number == any || seen == number), qPrintable(statement));
            QVERIFY2(!told.contains(u"Error while"_s) && !told.contains(u'['), qPrintable(told));
        }
        QCOMPARE(m->one(u"select name from book where price=1 and day is null"), u"n"_s);
    }

    /// What was done before stays and what follows is done, wherever the failing statement stands.
    void failingStatementKeepsTransaction()
    {
        m->database.run("create table mark(n integer primary key); insert into mark values(1)");
        auto connection = m->open();
        for (const QStringView failing :
            {u"insert into mark(n) values(1)", u"update nosuch set n=1", u"select nosuch from mark",
                u"update book set day='x'", u"select 1/(n-1) from mark", u"select soundex(code) from book"}) {
            const auto fails = [&] { return errorOf([&] { connection.open(failing); }) != 0; };
            connection.begin();
            for (int i = 0; i < 3; ++i) {
                QVERIFY(fails());
                connection.execute(u"insert into book(code) values('%1')"_s.arg(i));
            }
            QVERIFY(fails() && fails());
            connection.commit();
            QCOMPARE(m->one(u"select count(*) from book"), u"3"_s);
            connection.execute(u"delete from book");
        }
    }

    /// Once the transaction stands or falls as a whole, no later statement of it is taken by itself.
    void failureEndsTransaction()
    {
        auto connection = m->open();
        connection.begin();
        QVERIFY(errorOf([&] { connection.execute(u"update nosuch set n=1"); }));
        connection.execute(u"insert into book(code) values('a')");
        connection.endTransactionOnFailure();
        connection.execute(u"insert into book(code) values('b')");
        QVERIFY(errorOf([&] { connection.execute(u"update nosuch set n=1"); }));
        QVERIFY(errorOf([&] { connection.execute(u"insert into book(code) values('c')"); }));
        QVERIFY(errorOf([&] { connection.commit(); }));
        QCOMPARE(m->one(u"select count(*) from book"), u"0"_s);
        connection.execute(u"insert into book(code) values('d')");
        QCOMPARE(m->one(u"select code from book"), u"d"_s);
    }

    void failingCommit()
    {
        m->database.run(
            "create table mark(n integer unique deferrable initially deferred); insert into mark values(1);"
            "create function twice() returns trigger language plpgsql as 'begin insert into mark values(1); "
            "return new; end';"
            "create trigger t after insert on book for each row execute function twice()");
        auto connection = m->open();
        connection.begin();
        connection.execute(u"insert into book(code) values('a')");
        QVERIFY(errorOf([&] { connection.commit(); }));
        connection.rollback();
        QCOMPARE(m->one(u"select count(*) from book"), u"0"_s);
        m->database.run("drop trigger t on book");
        connection.begin();
        connection.commit();
        connection.execute(u"insert into book(code) values('b')");
        QCOMPARE(m->one(u"select code from book"), u"b"_s);
    }

    void transactionsStandAlone()
    {
        auto first = m->open();
        auto second = m->open();
        first.begin();
        second.begin();
        first.execute(u"insert into book(code) values('a')");
        second.execute(u"insert into book(code) values('b')");
        auto third = m->open();
        third.execute(u"insert into book(code) values('c')");
        QCOMPARE(third.open(u"select code from book").recordCount(), 1);
        QCOMPARE(first.open(u"select code from book").recordCount(), 2);
        // A read of another lease shares a connection and must not spoil the transaction on it.
        QVERIFY(errorOf([&] { m->one(u"select 1/(len(code)-1) from book"); }));
        QCOMPARE(first.open(u"select code from book").recordCount(), 2);
        second.rollback();
        first.close(); // rolls back
        QCOMPARE(m->one(u"select code from book"), u"c"_s);
    }

    void forwardInsideTransaction()
    {
        auto connection = m->open();
        connection.begin();
        for (const QStringView code : {u"a", u"b"})
            connection.execute(u"insert into book(code) values('%1')"_s.arg(code));
        QString seen;
        for (auto rows = connection.open(u"select code from book order by code", CursorType::Forward);
             !rows.eof(); rows.next()) {
            seen += rows.field(0).text();
            QVERIFY(errorOf([&] { connection.execute(u"update nosuch set n=1"); }));
            connection.execute(u"update book set name='x' where code='%1'"_s.arg(rows.field(0).text()));
        }
        connection.commit();
        QCOMPARE(seen + m->one(u"select count(name) from book"), u"ab2"_s);
    }

    /// A statement that was prepared before the table was altered.
    void changedTable()
    {
        const QString select = u"select * from book"_s;
        m->open().execute(u"insert into book(code) values('a')");
        QCOMPARE(m->open().open(select).fieldCount(), 7);
        m->database.run("alter table book add column extra integer");
        errorOf([&] { m->open().open(select); });
        QCOMPARE(m->open().open(select).fieldCount(), 8);
    }

private:
    std::unique_ptr<ServerBase> m;
};

QTEST_GUILESS_MAIN(TestOdbc)
#include "test_odbc.moc"
