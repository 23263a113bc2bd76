#include "db/error_of.h"
#include "platform/core/dates.h"
#include "platform/core/text_order.h"
#include "platform/db/connection_text.h"
#include "platform/db/decimal.h"
#include "platform/db/embedded.h"
#include "platform/db/odbc/odbc_text.h"
#include "platform/db/sqlite/date_functions.h"
#include "platform/db/sqlite/like_pattern.h"
#include "platform/db/sqlite/text_collation.h"
#include "platform/db/value.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

using namespace quilla;

namespace {

const std::vector<OdbcInstallation::DataSource> Sources {{u"tushu"_s, u"PostgreSQL Unicode"_s},
    {u"jiu"_s, u"/usr/lib/odbc/libtdsodbc.so"_s}, {u"other"_s, u"Some Driver"_s}};

/// What is appended for PostgreSQL when the stored text has none of it.
const QString Postgres
    = u"UseServerSidePrepare=1;Protocol=7.4-0;UseDeclareFetch=0;UpdatableCursors=0;BoolsAsChar=0;"
      u"LFConversion=0;"
      "Parse=0;CommLog=0;Debug=0;"
      "pqopt={keepalives_idle=15 keepalives_interval=5 keepalives_count=3 tcp_user_timeout=30000};"_s;

std::string_view view(const QByteArray& utf8)
{
    return {utf8.constData(), std::size_t(utf8.size())};
}

} // namespace

/// Values as the program and the functions of SQLite read them, and the texts that lead to a base.
class TestValues : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reads()
    {
        const auto decimal = [](const QString& digits) { return Value(DecimalText {digits}); };
        const struct {
            Value value;
            QString text;
            std::optional<qint64> integer;
            std::optional<double> number;
            bool isTrue = false;
        } readings[] {{Value(), {}, {}, {}}, {Value(true), u"True"_s, 1, 1.0, true},
            {Value(false), u"False"_s, 0, 0.0}, {decimal(u"2.5"_s), u"2.5"_s, 3, 2.5, true},
            {decimal(u"-2.50"_s), u"-2.50"_s, -3, -2.5, true},
            {decimal(u"1.4999999999999999"_s), u"1.4999999999999999"_s, 1, 1.5, true},
            {decimal(u"0.00"_s), u"0.00"_s, 0, 0.0}, {Value(u" 12 "_s), u" 12 "_s, 12, 12.0, true},
            {Value(u"12a"_s), u"12a"_s, {}, {}}, {Value(u""_s), u""_s, {}, {}},
            {Value(u"inf"_s), u"inf"_s, {}, {}}, {Value(u"\t5"_s), u"\t5"_s, {}, {}}};
        for (const auto& [value, text, integer, number, isTrue] : readings) {
            QCOMPARE(value.text(), text);
            QVERIFY2(value.integer() == integer && value.number() == number && value.isTrue() == isTrue,
                qPrintable(text));
        }
    }

    void decimals()
    {
        const char* const long_ = "123456789012345678901246845678901234567890123.45";
        const std::tuple<const char*, const char*, const char*, const char*> products[] {
            {"1.005", "1", "1.005", "1.01"}, // below it as a binary fraction
            {"-0.5", "-.25", "0.125", "0.13"}, {"-0.001", "1", "-0.001", "0.00"},
            {"9.995", "1.000", "9.995", "10.00"}, {" +007. ", "2", "14", "14.00"},
            {"1.5E-3", "1e4", "15", "15.00"}, {"0", "-5", "0", "0.00"},
            {"123456789012345678901234.5", "1000000000000000000000.1", long_, long_}};
        const auto read = [](const char* text) { return Decimal::read(QString::fromLatin1(text)); };
        for (const auto& [left, right, product, money] : products) {
            const Decimal result = read(left).value() * read(right).value();
            QCOMPARE(result.text(), QString::fromLatin1(product));
            QCOMPARE(result.fixed(2), QString::fromLatin1(money));
        }
        for (const char* text : {"", ".", "-", "1e", "e5", "1e101", "1.2.3", "0x1", "nan", "1,000", "abc"})
            QVERIFY2(!read(text), text);
    }

    void digits()
    {
        const std::pair<double, const char*> numbers[] {{0.1 + 0.2, "0.3"}, {6.125, "6.125"}, {-0.0, "0"},
            {1e16, "10000000000000000"}, {1.23456789012345e-7, "0.000000123456789012345"},
            {9.9999999999999999e-6, "0.00001"}};
        for (const auto& [number, written] : numbers)
            QCOMPARE(DecimalDigits(number).view(), std::string_view(written));
    }

    void dates()
    {
        const std::pair<QString, const char*> texts[] {{u"2004-03-09"_s, "2004-03-09"},
            {u"2004-03-09 8:05:03"_s, "2004-03-09 08:05:03.000"},
            {u"2004-03-09 18:05:03.007"_s, "2004-03-09 18:05:03.007"},
            {u"2004-03-09 00:00:00.000"_s, "2004-03-09"}, {u" 2004/3/9 "_s, "2004-03-09"},
            {u"20040309"_s, "2004-03-09"}};
        for (const auto& [text, canonical] : texts) {
            const auto moment = readMoment(text);
            QCOMPARE(readMoment(view(text.toUtf8())), moment);
            QCOMPARE(CanonicalMoment(moment.value()).view(), std::string_view(canonical));
            QCOMPARE(Value(text).moment(), *readDate(text));
        }
        for (const QString& text : {u"2003-02-29"_s, u"2003-02-28 24:00:00"_s, u"2004-0x-09"_s,
                 u"2004-03-09 :05:03"_s, u"2004-03-09x"_s, u""_s})
            QVERIFY2(!readMoment(text), qPrintable(text));
    }

    void items()
    {
        const ConnectionItems items(u" PROVIDER = MSDASQL;dsn=a b ;UID=;PWD=x=y;;uid=late;odd"_s);
        const std::pair<QString, std::optional<QString>> values[] {{u"provider"_s, u"MSDASQL"_s},
            {u"DSN"_s, u"a b"_s}, {u"UID"_s, u""_s}, {u"pwd"_s, u"x=y"_s}, {u"odd"_s, {}}};
        for (const auto& [key, value] : values)
            QCOMPARE(items.value(key), value);
    }

    /// What leads to a file, and what to a server.
    void embeddedFile()
    {
        const QString folder = QFileInfo(embeddedDatabaseFile()).path();
        const QString builtIn = u"PROVIDER=MSDASQL;DSN="_s + BuiltInDataSource + u";UID=a;PWD=;"_s;
        const QString access
            = u"PROVIDER=MSDASQL;Driver=Microsoft Access Driver (*.mdb);Server=s;UID=a;PWD=;"_s;
        const std::pair<QString, std::optional<QString>> texts[] {{builtIn, embeddedDatabaseFile()},
            {builtIn + u"Database=/srv/it''s.db;"_s, u"/srv/it's.db"_s},
            {access + u"Database=/srv/lib.mdb;"_s, u"/srv/lib.mdb"_s},
            {access + u"Database=馆/lib;"_s, folder + u"/馆/lib"_s}, {access, u""_s},
            {u"DSN=server;Database=/srv/lib.db;"_s, {}}, {u"Driver=SQL Server;Server=s;Database=lib;"_s, {}},
            {{}, {}}};
        for (const auto& [text, file] : texts)
            QVERIFY2(embeddedFileOf(ConnectionItems(text)) == file, qPrintable(text));
    }

    /// What the driver manager is given for a stored text; no server is asked.
    void odbcTexts()
    {
        const QStringList usual {u"FreeTDS"_s, u"PostgreSQL Unicode"_s};
        const QString dated = u"ODBC Driver %1 for SQL Server"_s;
        const std::tuple<QString, QStringList, QString> texts[] {
            // driver of the dialog
            {u"PROVIDER=MSDASQL;Driver=SQL Server;Server=ku;UID=sa;PWD=x;Database=lib;"_s, usual,
                u"Driver={FreeTDS};Server=ku;UID=sa;PWD={x};Database=lib;ClientCharset=UTF-8;TDS_Version=7.4;Port=1433;"_s},
            // named instance
            {u"Driver=SQL Server;Server=ku\\lib;UID=sa;"_s, usual,
                u"Driver={FreeTDS};Server=ku\\lib;UID=sa;ClientCharset=UTF-8;TDS_Version=7.4;"_s},
            // own port and version
            {u"Driver=SQL Server;Server=ku;Port=14330;TDS_Version=7.1;"_s, usual,
                u"Driver={FreeTDS};Server=ku;Port=14330;TDS_Version=7.1;ClientCharset=UTF-8;"_s},
            // a driver of that very name
            {u"Driver=sql server;Server=ku;"_s, QStringList {u"FreeTDS"_s, u"SQL Server"_s},
                u"Driver={SQL Server};Server=ku;"_s},
            // the newest of its maker
            {u"Driver=SQL Server;Server=ku;"_s, QStringList {dated.arg(17), dated.arg(18)},
                u"Driver={ODBC Driver 18 for SQL Server};Server=ku;"_s},
            // postgres
            {u"PROVIDER=MSDASQL;Driver={postgresql unicode};Servername=/run/pg;UID=a;PWD=;"_s, usual,
                u"Driver={PostgreSQL Unicode};Servername=/run/pg;UID=a;PWD=;"_s + Postgres},
            // what may differ and what may not
            {u"DSN=tushu;Protocol=7.4-2;pqopt={x=1};Debug=1;"_s, usual,
                u"DSN=tushu;pqopt={x=1};Debug=1;"_s + Postgres.left(Postgres.indexOf(u"CommLog"_s))
                    + u"CommLog=0;"_s},
            // source by the file of its driver
            {u"DSN=JIU;UID=sa;PWD=;"_s, usual, u"DSN=JIU;UID=sa;PWD=;ClientCharset=UTF-8;TDS_Version=7.4;"_s},
            // source of an unknown driver, quotes and signs
            {u"DSN=other;UID=o''hara;PWD=a''b}c={@,;Database=l''ib;"_s, usual,
                u"DSN=other;UID=o'hara;PWD={a'b}}c={@,};Database=l'ib;"_s},
        };
        for (const auto& [stored, drivers, text] : texts)
            QCOMPARE(odbcText(ConnectionItems(stored), {drivers, Sources}), text);
    }

    void odbcRefusals()
    {
        const std::tuple<QString, QStringList, QString> texts[] {
            {u"Driver=SQL Server;Server=ku;PWD=geheim;"_s, {u"PostgreSQL Unicode"_s},
                u"没有安装数据库驱动“SQL Server”，请先安装。\n已安装：PostgreSQL Unicode"_s},
            {u"Driver=SQL Server;PWD=geheim;"_s, {}, u"没有任何驱动"_s},
            {u"Driver=Oracle;PWD=geheim;"_s, {u"SQL Server"_s}, u"“Oracle”"_s},
            {u"DSN=none;PWD=geheim;"_s, {}, u"没有名为“none”的数据源"_s},
            {u"Server=ku;PWD=geheim;"_s, {}, u"既没有数据源"_s}};
        for (const auto& [stored, drivers, words] : texts) {
            const QString told = errorText([&] { odbcText(ConnectionItems(stored), {drivers, Sources}); });
            QVERIFY2(told.contains(words), qPrintable(told));
            QVERIFY(!told.contains(u"geheim"_s));
        }
    }

    void ordersAsCompareText()
    {
        // Every pair, since the engine compares UTF-8 and the grids keys: texts whose order the letters and
        // digits at their front decide, and texts whose order they don't.
        const QStringList texts {u""_s, u" "_s, u"a"_s, u"A  "_s, u"a b"_s, u"AB"_s, u"ab\t"_s, u"b"_s,
            u"_"_s, u"有效"_s, u"有无"_s, u"有效 "_s, u"朋"_s, u"é"_s, u"É"_s, u"K"_s, u"k"_s, u"ß"_s, u"ſ"_s,
            u"s"_s, u"（"_s, u"𠀀"_s, u"𠀁"_s, u"𐐀"_s, u"𐐨"_s, u"B0001"_s, u"b0001"_s, u"B0002"_s, u"Ａ"_s,
            u"ａ"_s, u"a1"_s, u"ab/"_s, u"ab\u0301"_s, u"A\u0301b"_s, u"Z"_s, u"重庆"_s, u"1"_s, u"１2"_s,
            u"12 "_s};
        for (const QString& left : texts)
            for (const QString& right : texts) {
                const QByteArray a = left.toUtf8();
                const QByteArray b = right.toUtf8();
                QVERIFY2((compareUtf8(view(a), view(b)) <=> 0) == (compareText(left, right) <=> 0),
                    qPrintable(left + u" / "_s + right));
                QVERIFY2((orderKey(left).compare(orderKey(right)) <=> 0) == (compareText(left, right) <=> 0),
                    qPrintable(left + u" / "_s + right));
            }
    }

    void brokenUtf8Ends()
    {
        // Must end, whatever it answers; equal bytes are equal.
        const QByteArrayList texts {
            "\xe4\xb8", "\xe4\xb9", "\xb8", "\xff", "\xfe", "a\xe4", "\xf0\x9f", "\xe4\xb8\xad"};
        for (const QByteArray& left : texts)
            for (const QByteArray& right : texts)
                for (const auto compare : {compareUtf8, compareByCodePoint})
                    QVERIFY(compare(view(left), view(right)) == 0 || left != right);
    }

    void likePatterns()
    {
        const std::tuple<QString, QString, bool> rows[] {{u""_s, u""_s, true}, {u""_s, u"a"_s, false},
            {u"%"_s, u""_s, true}, {u"abc"_s, u"ABC  "_s, true}, {u"abc "_s, u"abc"_s, false},
            {u"%书%"_s, u"图书馆"_s, true}, {u"书%"_s, u"图书馆"_s, false}, {u"_书_"_s, u"图书馆"_s, true},
            {u"_"_s, u"𠀀"_s, true}, {u"__"_s, u"𠀀"_s, false}, {u"2003/05/__"_s, u"2003/06/17"_s, false},
            {u"%ab%ab"_s, u"abxab"_s, true}, {u"%ab%ab"_s, u"ab"_s, false}, {u"a%%b"_s, u"ab"_s, true},
            {u"%aab"_s, u"aaab"_s, true}, {u"%c"_s, u"abcab c  "_s, true}, {u"[a-C]x"_s, u"Bx"_s, true},
            {u"[a-c]x"_s, u"dx"_s, false}, {u"[^a-c]x"_s, u"dx"_s, true}, {u"[^a-c]x"_s, u"Bx"_s, false},
            {u"[%]"_s, u"a"_s, false}, {u"[[]"_s, u"["_s, true}, {u"[a-]"_s, u"-"_s, true},
            {u"[-a]"_s, u"-"_s, true}, {u"[]"_s, u""_s, false}, {u"[abc"_s, u"[abc"_s, false},
            {u"a]"_s, u"a]"_s, true}, {u"[一-龥]%"_s, u"中"_s, true}, {u"\\%"_s, u"\\x"_s, true},
            {u"\\_"_s, u"_"_s, false}, {u"É"_s, u"é"_s, true}};
        for (const auto& [pattern, text, matches] : rows) {
            const QByteArray utf8 = pattern.toUtf8();
            QVERIFY2(LikePattern(view(utf8)).matches(view(text.toUtf8())) == matches, utf8);
        }
    }

    void likeIsNotExponential()
    {
        // Tried out step by step, each "%" on its own, this would not end in a lifetime.
        const QByteArray pattern = QByteArray("%a").repeated(40) + "%b";
        QVERIFY(!LikePattern(view(pattern)).matches(view(QByteArray("a").repeated(2000))));
    }

    /// Where an ordinary step goes wrong; the parts, differences and styles stand in
    /// tests/sql/cases/dates.txt.
    void addsToDates()
    {
        const std::tuple<const char*, qint64, const char*, const char*> steps[] {
            {"year", -1, "2004-02-29 8:00:00", "2003-02-28 8:00:00"},
            {"quarter", 2, "2003-08-31", "2004-02-29"}, {"year", 8000, "2004-03-01", ""},
            {"day", Q_INT64_C(9'000'000'000'000'000), "2004-03-01", ""}, {"day", -800'000, "2004-03-01", ""}};
        for (const auto& [unit, number, from, to] : steps)
            QCOMPARE(
                dateAdd(unit, number, *readMoment(std::string_view(from))), readMoment(std::string_view(to)));
    }
};

QTEST_GUILESS_MAIN(TestValues)
#include "test_values.moc"
