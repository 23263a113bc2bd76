#include "platform/core/dates.h"
#include "platform/db/connection_text.h"
#include "platform/db/decimal.h"
#include "platform/db/embedded.h"
#include "platform/db/value.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>
#include <QTest>

using namespace quilla;

class TestValues : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reads()
    {
        struct Reading {
            Value value;
            QString text;
            std::optional<qint64> integer;
            std::optional<double> number;
            bool isTrue = false;
        };
        const auto decimal = [](const QString& digits) { return Value(DecimalText {digits}); };
        const Reading readings[] {{Value(), {}, {}, {}}, {Value(true), u"True"_s, 1, 1.0, true},
            {Value(false), u"False"_s, 0, 0.0}, {decimal(u"2.5"_s), u"2.5"_s, 3, 2.5, true},
            {decimal(u"-2.50"_s), u"-2.50"_s, -3, -2.5, true},
            {decimal(u"1.4999999999999999"_s), u"1.4999999999999999"_s, 1, 1.5, true},
            {decimal(u"0.00"_s), u"0.00"_s, 0, 0.0}, {Value(u" 12 "_s), u" 12 "_s, 12, 12.0, true},
            {Value(u"12a"_s), u"12a"_s, {}, {}}, {Value(u""_s), u""_s, {}, {}},
            {Value(u"inf"_s), u"inf"_s, {}, {}}};
        for (const auto& [value, text, integer, number, isTrue] : readings) {
            QCOMPARE(value.text(), text);
            QVERIFY2(value.integer() == integer && value.number() == number && value.isTrue() == isTrue,
                qPrintable(text));
            QVERIFY(!value.moment().isValid());
        }
    }

    void decimals()
    {
        const char* const long_ = "123456789012345678901246845678901234567890123.45";
        const struct {
            const char* left;
            const char* right;
            const char* product;
            const char* money;
        } products[] {{"1.005", "1", "1.005", "1.01"}, // below it as a binary fraction
            {"-1.005", "1.000", "-1.005", "-1.01"}, {"-0.5", "-.25", "0.125", "0.13"},
            {"-0.001", "1", "-0.001", "0.00"}, {"9.995", "1", "9.995", "10.00"},
            {" +007. ", "2", "14", "14.00"}, {"1.5E-3", "1e4", "15", "15.00"}, {"0", "-5", "0", "0.00"},
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
        const std::pair<double, const char*> numbers[] {{0.1 + 0.2, "0.3"}, {6.125, "6.125"},
            {-12.5, "-12.5"}, {-0.0, "0"}, {1e16, "10000000000000000"}, {0.00001, "0.00001"},
            {1.23456789012345e-7, "0.000000123456789012345"}, {9.9999999999999999e-6, "0.00001"}};
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
            const QByteArray utf8 = text.toUtf8();
            QCOMPARE(readMoment(std::string_view(utf8.constData(), std::size_t(utf8.size()))), moment);
            QCOMPARE(CanonicalMoment(moment.value()).view(), std::string_view(canonical));
            QCOMPARE(localeDateText(moment->date, moment->time), localeDateText(*readDate(text)));
            QCOMPARE(Value(text).moment(), Value(*moment).moment());
        }
        for (const QString& text : {u"2003-02-29"_s, u"2003-02-28 24:00:00"_s, u"2004-0x-09"_s,
                 u"2004-03-09 :05:03"_s, u"2004-03-09x"_s, u""_s})
            QVERIFY2(!readMoment(text), qPrintable(text));
    }

    void items()
    {
        const ConnectionItems items(u" PROVIDER = MSDASQL;dsn=a b ;UID=;PWD=x=y;;uid=late;odd"_s);
        QCOMPARE(items.value(u"provider"), u"MSDASQL"_s);
        QCOMPARE(items.value(u"DSN"), u"a b"_s);
        QCOMPARE(items.value(u"UID"), u""_s);
        QCOMPARE(items.value(u"pwd"), u"x=y"_s);
        QVERIFY(!items.value(u"odd").has_value());
        QVERIFY(!items.value(u"Database").has_value());
    }

    void odbcSources()
    {
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write("[ODBC Data Sources]\n馆藏=x\nSecond=x\n[馆藏]\nDriver=x\n[Second]\nDriver=x\n");
        file.close();
        qputenv("ODBCINI", file.fileName().toLocal8Bit());
        const auto names = odbcDataSources();
        qunsetenv("ODBCINI");
        QVERIFY(std::find(names.begin(), names.end(), u"馆藏"_s) != names.end());
        QVERIFY(std::find(names.begin(), names.end(), u"Second"_s) != names.end());
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
};

QTEST_GUILESS_MAIN(TestValues)
#include "tst_values.moc"
