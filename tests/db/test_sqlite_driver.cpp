#include "db/error_of.h"
#include "platform/db/embedded.h"
#include "platform/db/sources.h"
#include "platform/db/sqlite/sqlite_driver.h"
#include "support/fixed_clock.h"
#include "support/write_file.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace quilla;
using sql::Kind;

namespace {

/// A statement as the translator would hand it over.
struct Statement {
    Statement(
        int id, const char* text, std::vector<sql::Parameter> parameters = {}, std::vector<Kind> columns = {})
    {
        translation.id = id;
        translation.text = text;
        translation.parameters = std::move(parameters);
        translation.columns = std::move(columns);
    }
    sql::Translation translation;
};

sql::Literal quoted(QStringView text)
{
    return {text, true, text.contains(u"''")};
}

} // namespace

class TestSqliteDriver : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        {
            const SqliteDriver made(path(), m_clock, SqliteDriver::As::NewFile);
            made.handle().run(
                "create table t (code varchar(50) collate quilla, n int, price decimal(10,2), state bit,"
                " day datetime); create table u (id int primary key);");
            made.handle().run(QByteArray("pragma application_id=" + QByteArray::number(LibraryApplicationId)
                + "; pragma user_version=" + QByteArray::number(EmbeddedSchemaVersion))
                                  .constData());
        }
        m_driver = std::make_unique<SqliteDriver>(path(), m_clock, SqliteDriver::As::Library, 50);
    }

    void cleanup()
    {
        m_driver.reset();
        m_folder.reset();
    }

    /// What a literal of each kind becomes, with its type as SQLite sees it.
    void bindsByKind()
    {
        const struct {
            Kind kind;
            QStringView literal;
            QString stored;
            int scale = -1;
            bool quoted = true;
        } rows[] {{Kind::Text, u" a ", u"text  a "_s}, {Kind::Text, u"12", u"text 12"_s, -1, false},
            {Kind::Integer, u" -12 ", u"integer -12"_s}, {Kind::Integer, u"", u"integer 0"_s},
            {Kind::Integer, u"9223372036854775807", u"integer 9223372036854775807"_s, -1, false},
            {Kind::Integer, u"2.5", u"real 2.5"_s, -1, false}, {Kind::Bit, u"True", u"integer 1"_s},
            {Kind::Bit, u"false", u"integer 0"_s}, {Kind::Bit, u"5", u"integer 1"_s, -1, false},
            {Kind::Decimal, u"6.125", u"real 6.125"_s, -1, false},
            {Kind::Decimal, u"10", u"integer 10"_s, -1, false},
            {Kind::Decimal, u"6.125", u"real 6.13"_s, 2, false},
            {Kind::Decimal, u"-0.005", u"real -0.01"_s, 2}, {Kind::Decimal, u"1.0049999", u"real 1.0"_s, 2},
            {Kind::Decimal, u"2.5", u"real 3.0"_s, 0, false}, {Kind::Date, u"2004-3-9", u"text 2004-03-09"_s},
            {Kind::Date, u"2004-03-09 8:05:03", u"text 2004-03-09 08:05:03.000"_s},
            {Kind::Unknown, u"1", u"integer 1"_s, -1, false}, {Kind::Unknown, u"1", u"text 1"_s}};
        for (const auto& [kind, literal, stored, scale, quoted] : rows) {
            const Statement select(m_next++, "select typeof(?1)||' '||?1", {{0, kind, scale}});
            QCOMPARE(query(select, {{literal, quoted, false}}).field(0).text(), stored);
        }
    }

    void refusesByKind()
    {
        const std::pair<Kind, QString> refused[] {{Kind::Integer, u"12a"_s}, {Kind::Integer, u"2.5"_s},
            {Kind::Bit, u"yes"_s}, {Kind::Decimal, u"1,5"_s}, {Kind::Date, u"2003-02-30"_s},
            {Kind::Date, u""_s}};
        for (const auto& [kind, literal] : refused) {
            const Statement select(m_next++, "select ?", {{0, kind}});
            QString text;
            QCOMPARE(errorOf([&] { query(select, {quoted(literal)}); }, &text), ErrorNumber::CannotConvert);
            QVERIFY2(text.contains(u"“%1”"_s.arg(literal)), qPrintable(text));
            // The prepared statement is fit for its next use.
            QCOMPARE(query(select, {quoted(kind == Kind::Date ? u"2003-02-28" : u"1")}).recordCount(), 1);
        }
    }

    void readsByKind()
    {
        m_driver->handle().run(
            "insert into t values('a',5,12.5,1,'2004-03-09 08:05:03.000'),(null,null,null,null,null)");
        auto rows = query(Statement(0,
            "select code,n,price,state,day,price*3 as p3,count(*) over () as c,0.1+0.2 from t", {},
            {Kind::Unknown, Kind::Unknown, Kind::Unknown, Kind::Unknown, Kind::Unknown, Kind::Decimal,
                Kind::Unknown, Kind::Unknown}));
        QCOMPARE(rows.recordCount(), 2);
        const std::vector<std::pair<Kind, QString>> expected {{Kind::Text, u"a"_s}, {Kind::Integer, u"5"_s},
            {Kind::Decimal, u"12.5"_s}, {Kind::Bit, u"True"_s}, {Kind::Date, u"2004-03-09 8:05:03"_s},
            {Kind::Decimal, u"37.5"_s}, {Kind::Integer, u"2"_s}, {Kind::Decimal, u"0.3"_s}};
        for (int i = 0; i < rows.fieldCount(); ++i) {
            QCOMPARE(rows.field(i).kind(), expected[std::size_t(i)].first);
            QCOMPARE(rows.field(i).text(), expected[std::size_t(i)].second);
        }
        rows.next();
        QVERIFY(rows.field(0).isNull() && rows.field(4).isNull());
        rows.next();
        QVERIFY(rows.eof());
        QCOMPARE(errorOf([&] { rows.field(0); }), ErrorNumber::NoCurrentRow);
        QCOMPARE(errorOf([&] { rows.next(); }), ErrorNumber::NoCurrentRow);
        rows.first();
        QCOMPARE(rows.field(u"CODE").text(), u"a"_s);
        QCOMPARE(errorOf([&] { rows.field(u"nothing"); }), ErrorNumber::NoSuchField);
        QCOMPARE(errorOf([&] { rows.field(8); }), ErrorNumber::NoSuchField);
    }

    void serverTimeHoldsForAStatement()
    {
        const Statement now(0, "select getdate()", {}, {Kind::Date});
        QCOMPARE(query(now).field(0).moment(), m_clock.moment);
        m_clock.moment = Moment {QDate(2005, 1, 1)};
        QCOMPARE(query(now).field(0).text(), u"2005-01-01"_s);
    }

    void refusedStatements()
    {
        QString text;
        QCOMPARE(errorOf([&] { one("select qj_datediff('day','2004-01-01','3月')"); }, &text),
            ErrorNumber::CannotConvert);
        QVERIFY2(text.contains(u"“3月”"_s), qPrintable(text));
        QVERIFY(errorOf([&] { one("select \"coed\" from t"); })); // misspelt: no text of that name
    }

    void secondUseWhileReading()
    {
        execute({0, "insert into t(code) values('a'),('b')"});
        const Statement all(1, "select code from t order by code");
        const auto outer = m_driver->query(all.translation, {});
        QString seen;
        while (outer->step()) {
            seen += QString::fromUtf8(outer->cell(0).text.data(), 1);
            seen += QString::number(query(all).recordCount());
        }
        QCOMPARE(seen, u"a2b2"_s);
    }

    void failedStatementKeepsTransaction()
    {
        m_driver->begin({});
        execute({0, "insert into u values(1)"});
        QVERIFY(errorOf([&] { execute({1, "insert into u values(2),(1)"}); }));
        execute({2, "insert into u values(3)"});
        m_driver->commit();
        QCOMPARE(one("select group_concat(id) from u"), u"1,3"_s);
    }

    void lostTransactionRefusesTheRest()
    {
        m_driver->begin({});
        execute({0, "insert into u values(1)"});
        m_driver->handle().run("rollback"); // as the engine does by itself on a full disk
        QCOMPARE(errorOf([&] { execute({1, "insert into u values(2)"}); }), SQLITE_ABORT_ROLLBACK);
        QCOMPARE(errorOf([&] { m_driver->commit(); }), SQLITE_ABORT_ROLLBACK);
        QCOMPARE(one("select count(*) from u"), u"0"_s);
        QVERIFY(m_driver->isAlive());
    }

    void fullDisk()
    {
        m_driver->handle().run("pragma max_page_count=8");
        const QString long_(100'000, u'x');
        m_driver->begin({});
        execute({0, "insert into u values(1)"});
        QString text;
        const Statement insert(1, "insert into t(code) values(?)", {{0, Kind::Text}});
        QCOMPARE(errorOf([&] { execute(insert, {quoted(long_)}); }, &text), SQLITE_FULL);
        QVERIFY2(text.startsWith(u"磁盘已满"_s), qPrintable(text));
        // Whether the engine kept the transaction or not: all of it comes or nothing.
        const bool second = !errorOf([&] { execute({2, "insert into u values(2)"}); });
        const bool committed = !errorOf([&] { m_driver->commit(); });
        QCOMPARE(second, committed);
        QCOMPARE(one("select count(*) from u"), committed ? u"2"_s : u"0"_s);
        QCOMPARE(one("select count(*) from t"), u"0"_s);
    }

    void waitsThenTellsOfLock()
    {
        SqliteDriver other(path(), m_clock);
        other.begin({});
        QString text;
        QCOMPARE(errorOf([&] { m_driver->begin({}); }, &text), int(ErrorNumber::InUse));
        QVERIFY2(text.startsWith(u"数据库正被其他工作站占用"_s), qPrintable(text));
        QCOMPARE(errorOf([&] { execute({0, "insert into u values(1)"}); }), int(ErrorNumber::InUse));
        QCOMPARE(one("select count(*) from u"), u"0"_s);
        other.rollback();
        m_driver->begin({});
    }

    void readOnlyFile()
    {
        m_driver.reset();
        QFile::setPermissions(path(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777));
        const bool isRoot = geteuid() == 0;
        if (isRoot) QCOMPARE(seteuid(65534), 0); // whom permissions do not bind
        QString text;
        const int number = errorOf(
            [&] {
                m_driver = std::make_unique<SqliteDriver>(path(), m_clock);
                execute({0, "insert into u values(1)"});
            },
            &text);
        m_driver.reset();
        if (isRoot) QCOMPARE(seteuid(0), 0);
        QCOMPARE(number & 0xff, SQLITE_READONLY);
        QVERIFY2(text.contains(u"只读"_s) && text.contains(path()), qPrintable(text));
    }

    void refusesToOpen()
    {
        const std::tuple<QByteArray, QByteArray, QString> damages[] {{"", "missing", u"数据库文件不存在"_s},
            {"pragma user_version=999", "", u"更新版本的程序"_s},
            {"pragma user_version=0", "", u"quilla-db upgrade"_s},
            {"pragma application_id=0", "", u"没有图书馆的数据表"_s}, {"", "folder", u"这不是一个文件"_s},
            {"", "empty", u"没有图书馆的数据表"_s}, {"", "text", u"文件不是数据库"_s}};
        for (const auto& [pragma, instead, words] : damages) {
            cleanup();
            init();
            m_driver->handle().run(pragma.constData());
            m_driver.reset();
            if (!instead.isEmpty()) QVERIFY(QFile::remove(path()));
            if (instead == "folder") QVERIFY(QDir().mkdir(path()));
            if (instead == "empty") writeFile(path(), {});
            if (instead == "text") writeFile(path(), QByteArray("no database ").repeated(500));
            const QString text = errorText([&] { SqliteDriver(path(), m_clock); });
            QVERIFY2(text.contains(words) && text.contains(path()), qPrintable(text));
            QCOMPARE(QFile::exists(path()), instead != "missing");
        }
    }

private:
    QString path() const { return m_folder->filePath(u"馆's.db"_s); }
    int execute(const Statement& statement, const std::vector<sql::Literal>& literals = {})
    {
        return m_driver->execute(statement.translation, literals);
    }
    Recordset query(const Statement& statement, const std::vector<sql::Literal>& literals = {})
    {
        const auto cursor = m_driver->query(statement.translation, literals);
        return Recordset(std::make_unique<KeysetSource>(*cursor));
    }
    QString one(const char* select) { return query(Statement(m_next++, select)).field(0).text(); }

    FixedClock m_clock {{QDate(2004, 3, 9), QTime(8, 5, 3, 7)}};
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<SqliteDriver> m_driver;
    int m_next = 100;
};

QTEST_GUILESS_MAIN(TestSqliteDriver)
#include "test_sqlite_driver.moc"
