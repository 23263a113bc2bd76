#include "db/base.h"
#include "support/file_mode.h"
#include "support/write_file.h"

#include <sqlite3.h>

using namespace quilla;

/// The pool of connections, on an embedded base, and what is done to the file of one.
class TestPool : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_base = std::make_unique<Base>(); }
    void cleanup() { m_base.reset(); }

    void closedConnection()
    {
        Connection connection;
        QCOMPARE(errorOf([&] { connection.execute(u"delete book"); }), ErrorNumber::NotOpen);
        connection.close();
        QVERIFY(Recordset().eof());
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

    /// Of one file: a single write of another lease joins it.
    void secondTransactionIsRefused()
    {
        auto first = m_base->open();
        auto second = m_base->open();
        first.begin();
        QVERIFY(errorOf([&] { first.begin(); }));
        QVERIFY(errorOf([&] { second.begin(); }));
        second.execute(u"insert into book(code) values('a')");
        second.rollback(); // of no transaction: leaves the first one's alone
        QCOMPARE(m_base->one(u"select count(*) from book"), u"1"_s);
        first.rollback();
        QCOMPARE(m_base->one(u"select count(*) from book"), u"0"_s);
        second.begin();
        second.execute(u"insert into book(code) values('b')");
        second.commit();
        second.rollback();
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
        QVERIFY(errorOf([&] { rows.first(); }));
    }

    void forwardOverTheEndOfATransaction()
    {
        auto connection = m_base->open();
        connection.begin();
        connection.execute(u"insert into book(code) values('a')");
        auto rows = connection.open(u"select code from book", CursorType::Forward);
        connection.execute(u"update book set name='x'");
        connection.commit();
        rows.next();
        QVERIFY(rows.eof());
        QCOMPARE(m_base->one(u"select name from book"), u"x"_s);
    }

    /// What does not fit into memory is read back whole, and again from the start.
    void resultOfManyMegabytes()
    {
        constexpr int Books = 200;
        const auto nameOf = [](int book) { return QString(book % 51, QChar(0x8BFB)); };
        auto connection = m_base->open();
        for (int book = 0; book < Books; ++book)
            connection.execute(
                u"insert into book(code,name) values('%1','%2')"_s.arg(book + 100).arg(nameOf(book)));
        auto rows = connection.open(u"select b.name,a.name,a.code from book a,book b order by a.code,b.code");
        QCOMPARE(rows.recordCount(), Books * Books);
        for (int walk = 0; walk < 2; ++walk, rows.first())
            for (int row = 0; row < Books * Books; ++row, rows.next()) {
                QCOMPARE(rows.field(1).text(), nameOf(row / Books));
                QCOMPARE(rows.field(0).text(), nameOf(row % Books));
            }
        QCOMPARE(rows.field(2).text(), u"100"_s);
    }

    void refusedTexts()
    {
        for (const QString& stored :
            {u"DSN=no such source;UID=a;"_s, u"Driver=Microsoft Access Driver (*.mdb);"_s})
            QCOMPARE(errorOf([&] { m_base->factory.open(stored); }), ErrorNumber::CannotOpen);
    }

    void replacedFileIsOpenedAnew()
    {
        const QString copy = file(u"copy.db"_s);
        m_base->open().execute(u"insert into book(code) values('a')");
        backupEmbedded(m_base->path(), copy, m_base->schema);
        m_base->open().execute(u"insert into book(code) values('b')");
        QVERIFY(QFile::rename(m_base->path(), m_base->path() + u".old"_s));
        QTRY_VERIFY(errorOf([&] { m_base->open(); })); // a read may notice a tenth of a second later
        for (const QStringView left : {u"-wal", u"-shm"})
            QFile::remove(m_base->path() + left.toString());
        QVERIFY(QFile::rename(copy, m_base->path()));
        QCOMPARE(m_base->one(u"select count(*) from book"), u"1"_s);
    }

    void backsUpWhileInUse()
    {
        const QString copy = file(u"备份/copy.db"_s);
        auto connection = m_base->open();
        connection.execute(u"insert into book(code) values('a')");
        connection.begin();
        connection.execute(u"insert into book(code) values('b')");
        backupEmbedded(m_base->path(), copy, m_base->schema); // as it was committed
        connection.commit();
        QCOMPARE(checkEmbedded(copy), QStringList());
        auto other = m_base->factory.open(m_base->text().replace(m_base->path(), copy));
        QCOMPARE(other.open(u"select max(code) from book").field(0).text(), u"a"_s);
        QVERIFY(errorOf([&] { backupEmbedded(m_base->path(), copy, m_base->schema); }));
        QVERIFY(errorOf([&] { backupEmbedded(file(u"none.db"_s), file(u"x.db"_s), m_base->schema); }));
        QVERIFY(!QFile::exists(file(u"x.db"_s)) && !QFile::exists(file(u"none.db"_s)));
    }

    void keepsReadersPrivate()
    {
        const mode_t before = ::umask(0);
        const QString folder = file(u"new/folder"_s);
        const QString base = folder + u"/库.db"_s;
        createEmbedded(base, m_base->schema, m_base->clock, BookBase::fill);
        backupEmbedded(base, base + u".bak"_s, m_base->schema);
        const auto opened = [&] {
            m_base->factory.drain();
            auto connection = m_base->factory.open(m_base->text().replace(m_base->path(), base));
            connection.execute(u"insert into book(code) values('a')");
            return QList<unsigned> {
                modeOf(base), modeOf(base + u"-wal"_s), modeOf(base + u"-shm"_s), modeOf(base + u"-queue"_s)};
        };
        QCOMPARE(opened(), QList<unsigned>(4, 0600));
        ::umask(before);
        QCOMPARE(modeOf(base + u".bak"_s), 0600u);
        QCOMPARE(modeOf(folder), 0700u);
        QCOMPARE(modeOf(QFileInfo(folder).path()), 0700u);
        // Older programs left files open to all; a group that may write was let in on purpose.
        for (const auto& [mode, tightened] : {std::pair {0644, 0600}, std::pair {0664, 0660}}) {
            ::chmod(QFile::encodeName(base).constData(), mode_t(mode));
            QCOMPARE(opened().front(), unsigned(tightened));
        }
    }

    void findsDamage()
    {
        {
            auto connection = m_base->open();
            connection.begin();
            for (int i = 0; i < 2000; ++i)
                connection.execute(
                    u"insert into book(code,name) values('%1','%2')"_s.arg(i).arg(QString(40, u'书')));
            connection.commit();
        }
        m_base->factory.drain();
        QCOMPARE(checkEmbedded(m_base->path()), QStringList());
        damageFile(m_base->path());
        QVERIFY(!checkEmbedded(m_base->path()).isEmpty());
        const QString text
            = errorText([&] { m_base->one(u"select count(name+code) from book where name<>'x'"); });
        QVERIFY2(text.contains(u"损坏"_s), qPrintable(text));
    }

    void checksOtherFiles()
    {
        writeFile(file(u"text"_s), QByteArray("no database ").repeated(500));
        QCOMPARE(errorOf([&] { checkEmbedded(file(u"text"_s)); }), SQLITE_NOTADB);
        QVERIFY(errorOf([&] { checkEmbedded(file(u"none.db"_s)); }));
    }

private:
    QString file(const QString& name) const { return m_base->folder.filePath(name); }
    std::unique_ptr<Base> m_base;
};

QTEST_GUILESS_MAIN(TestPool)
#include "test_pool.moc"
