#include "db/base.h"

#include <QFile>
#include <QTest>

using namespace quilla;

class TestPool : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_base = std::make_unique<Base>(); }
    void cleanup() { m_base.reset(); }

    void closedConnection()
    {
        Connection connection;
        QVERIFY(!connection.isOpen());
        QCOMPARE(errorOf([&] { connection.execute(u"delete book"); }), ErrorNumber::NotOpen);
        QCOMPARE(errorOf([&] { connection.open(u"select code from book"); }), ErrorNumber::NotOpen);
        QCOMPARE(errorOf([&] { connection.begin(); }), ErrorNumber::NotOpen);
        connection.close();
        QVERIFY(Recordset().eof());
        QCOMPARE(Recordset().recordCount(), 0);
    }

    void returnRollsBack()
    {
        auto connection = m_base->open();
        connection.begin();
        connection.execute(u"insert into book(code) values('a')");
        connection = m_base->open();
        QCOMPARE(m_base->one(u"select count(*) from book"), u"0"_s);
        connection.execute(u"insert into book(code) values('b')");
        connection.close();
        QCOMPARE(m_base->one(u"select count(*) from book"), u"1"_s);
    }

    void readerSeesAndIsNotHeldUp()
    {
        auto reader = m_base->open();
        auto writer = m_base->open();
        writer.begin();
        writer.execute(u"insert into book(code) values('a')");
        QCOMPARE(reader.open(u"select code from book").recordCount(), 1);
        writer.commit();
        QCOMPARE(errorOf([&] { writer.commit(); }), ErrorNumber::NotOpen);
        QCOMPARE(reader.open(u"select code from book").recordCount(), 1);
    }

    void secondTransactionIsRefused()
    {
        auto first = m_base->open();
        auto second = m_base->open();
        first.begin();
        QVERIFY(errorOf([&] { first.begin(); }));
        first.execute(u"insert into book(code) values('a')");
        QVERIFY(errorOf([&] { second.begin(); }));
        second.rollback(); // of no transaction: leaves the first one's alone
        first.commit();
        second.begin();
        second.execute(u"insert into book(code) values('b')");
        second.rollback();
        QCOMPARE(m_base->one(u"select count(*) from book"), u"1"_s);
    }

    void singleWriteJoinsTheTransaction()
    {
        auto first = m_base->open();
        auto second = m_base->open();
        first.begin();
        second.execute(u"insert into book(code) values('b')");
        first.rollback();
        QCOMPARE(m_base->one(u"select count(*) from book"), u"0"_s);
    }

    void rollbackWithoutTransaction()
    {
        auto connection = m_base->open();
        connection.rollback();
        connection.execute(u"insert into book(code) values('a')");
        connection.rollback();
        QCOMPARE(m_base->one(u"select count(*) from book"), u"1"_s);
    }

    void forwardBesideWrites()
    {
        auto connection = m_base->open();
        for (const QStringView code : {u"a", u"b", u"c"})
            connection.execute(u"insert into book(code) values('%1')"_s.arg(code));
        auto rows = connection.open(u"select code from book order by code", CursorType::Forward);
        QCOMPARE(rows.recordCount(), -1);
        QString seen;
        for (; !rows.eof(); rows.next()) {
            seen += rows.field(u"CODE").text();
            // Own statements, and transactions of others, on the rows being read.
            connection.execute(u"update book set name='x' where code='%1'"_s.arg(rows.field(0).text()));
            QCOMPARE(connection.open(u"select code from book where name='x'").recordCount(), seen.size());
            auto other = m_base->open();
            other.begin();
            other.execute(u"insert into book(code) values('z')");
            other.commit();
            QCOMPARE(m_base->one(u"select count(*) from book where code='z'"), QString::number(seen.size()));
        }
        QCOMPARE(seen, u"abc"_s);
        QCOMPARE(errorOf([&] { rows.field(0); }), ErrorNumber::NoCurrentRow);
        QVERIFY(errorOf([&] { rows.first(); }));
    }

    void forwardInsideOwnTransaction()
    {
        auto connection = m_base->open();
        connection.begin();
        connection.execute(u"insert into book(code) values('a')");
        auto rows = connection.open(u"select code from book", CursorType::Forward);
        QCOMPARE(rows.field(0).text(), u"a"_s);
        connection.execute(u"update book set name='x'");
        connection.commit();
        rows.next();
        QVERIFY(rows.eof());
        QCOMPARE(m_base->one(u"select name from book"), u"x"_s);
    }

    void serversAreRefused()
    {
        const std::pair<QString, QString> texts[] {{u"DSN=no such source;UID=a;PWD=;"_s, u"no such source"_s},
            {u"Driver=Microsoft Access Driver (*.mdb);UID=a;"_s, u"没有指定"_s}};
        for (const auto& [stored, words] : texts) {
            QString told;
            QVERIFY(errorOf([&] { m_base->factory.open(stored); }, &told));
            QVERIFY2(told.contains(words), qPrintable(told));
        }
    }

    void replacedFileIsOpenedAnew()
    {
        QCOMPARE(m_base->one(u"select count(*) from book"), u"0"_s);
        const QString copy = m_base->folder.filePath(u"copy.db"_s);
        m_base->open().execute(u"insert into book(code) values('a')");
        backupEmbedded(m_base->path(), copy);
        m_base->open().execute(u"insert into book(code) values('b')");
        QVERIFY(QFile::rename(m_base->path(), m_base->path() + u".old"_s));
        QVERIFY(errorOf([&] { m_base->open(); }));
        for (const QStringView left : {u"-wal", u"-shm"})
            QFile::remove(m_base->path() + left.toString());
        QVERIFY(QFile::rename(copy, m_base->path()));
        QCOMPARE(m_base->one(u"select count(*) from book"), u"1"_s);
        m_base->factory.drain();
        QCOMPARE(m_base->one(u"select count(*) from book"), u"1"_s);
    }

private:
    std::unique_ptr<Base> m_base;
};

QTEST_GUILESS_MAIN(TestPool)
#include "tst_pool.moc"
