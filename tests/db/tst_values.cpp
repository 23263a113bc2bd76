#include "platform/core/dates.h"
#include "platform/db/connection_text.h"
#include "platform/db/decimal.h"
#include "platform/db/embedded.h"
#include "platform/db/value.h"
#include "support/cases.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>
#include <QTest>

using namespace quilla;

Q_DECLARE_METATYPE(quilla::Value)

class TestValues : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reads_data()
    {
        const QVariant none;
        const auto decimal = [](const QString& digits) { return Value(DecimalText {digits}); };
        cases<Value, QString, QVariant, QVariant, bool>({
            {"null", {Value(), {}, none, none, false}},
            {"bit", {Value(true), u"True"_s, QVariant(1), QVariant(1.0), true}},
            {"bit off", {Value(false), u"False"_s, QVariant(0), QVariant(0.0), false}},
            {"number", {Value(qint64(-7)), u"-7"_s, QVariant(-7), QVariant(-7.0), true}},
            {"half up", {decimal(u"2.5"_s), u"2.5"_s, QVariant(3), QVariant(2.5), true}},
            {"half down", {decimal(u"-2.50"_s), u"-2.50"_s, QVariant(-3), QVariant(-2.5), true}},
            {"below half",
                {decimal(u"1.4999999999999999"_s), u"1.4999999999999999"_s, QVariant(1), QVariant(1.5),
                    true}},
            {"zero", {decimal(u"0.00"_s), u"0.00"_s, QVariant(0), QVariant(0.0), false}},
            {"text number", {Value(u" 12 "_s), u" 12 "_s, QVariant(12), QVariant(12.0), true}},
            {"no number", {Value(u"12a"_s), u"12a"_s, none, none, false}},
            {"empty", {Value(u""_s), u""_s, none, none, false}},
            {"not finite", {Value(u"inf"_s), u"inf"_s, none, none, false}},
        });
    }

    void reads()
    {
        const auto [value, text, integer, number, isTrue] = given<Value, QString, QVariant, QVariant, bool>();
        QCOMPARE(value.text(), text);
        QCOMPARE(value.integer().has_value(), integer.isValid());
        if (integer.isValid()) QCOMPARE(*value.integer(), integer.toLongLong());
        QCOMPARE(value.number().has_value(), number.isValid());
        if (number.isValid()) QCOMPARE(*value.number(), number.toDouble());
        QCOMPARE(value.isTrue(), isTrue);
        QVERIFY(!value.moment().isValid());
    }

    void decimals_data()
    {
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("right");
        QTest::addColumn<QString>("product"); // empty: `left` is no number
        QTest::addColumn<QString>("money");
        const auto row = [](const char* left, const char* right, const char* product, const char* money) {
            QTest::addRow("%s*%s", left, right) << QString::fromLatin1(left) << QString::fromLatin1(right)
                                                << QString::fromLatin1(product) << QString::fromLatin1(money);
        };
        row("0.1", "12", "1.2", "1.20");
        row("1.005", "1", "1.005", "1.01"); // below it as a binary fraction
        row("-1.005", "1.000", "-1.005", "-1.01");
        row("-0.5", "-.25", "0.125", "0.13");
        row("-0.001", "1", "-0.001", "0.00");
        row("9.995", "1", "9.995", "10.00");
        row(" +007. ", "2", "14", "14.00");
        row("1.5E-3", "1e4", "15", "15.00");
        row("0", "-5", "0", "0.00");
        row("123456789012345678901234.5", "1000000000000000000000.1",
            "123456789012345678901246845678901234567890123.45",
            "123456789012345678901246845678901234567890123.45");
        for (const char* text : {"", ".", "-", "1e", "e5", "1e101", "1.2.3", "0x1", "nan", "1,000"})
            row(text, "1", "", "");
    }

    void decimals()
    {
        QFETCH(QString, left);
        QFETCH(QString, right);
        QFETCH(QString, product);
        const auto number = Decimal::read(left);
        QCOMPARE(number.has_value(), !product.isEmpty());
        if (!number) return;
        const Decimal result = *number * Decimal::read(right).value_or(Decimal());
        QCOMPARE(result.text(), product);
        QTEST(result.fixed(2), "money");
    }

    void digits_data()
    {
        QTest::addColumn<double>("number");
        QTest::addColumn<QString>("digits");
        QTest::newRow("sum of money") << 0.1 + 0.2 << u"0.3"_s;
        QTest::newRow("eighths") << 6.125 << u"6.125"_s;
        QTest::newRow("negative") << -12.5 << u"-12.5"_s;
        QTest::newRow("minus nothing") << -0.0 << u"0"_s;
        QTest::newRow("no exponent above") << 1e16 << u"10000000000000000"_s;
        QTest::newRow("no exponent below") << 0.00001 << u"0.00001"_s;
        QTest::newRow("all digits below") << 1.23456789012345e-7 << u"0.000000123456789012345"_s;
        QTest::newRow("carry") << 9.9999999999999999e-6 << u"0.00001"_s;
    }

    void digits()
    {
        QFETCH(double, number);
        const DecimalDigits digits(number);
        QTEST(QString::fromUtf8(digits.view().data(), qsizetype(digits.view().size())), "digits");
    }

    void dates_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("canonical");
        QTest::newRow("date") << u"2004-03-09"_s << u"2004-03-09"_s;
        QTest::newRow("locale text") << u"2004-03-09 8:05:03"_s << u"2004-03-09 08:05:03.000"_s;
        QTest::newRow("canonical") << u"2004-03-09 18:05:03.007"_s << u"2004-03-09 18:05:03.007"_s;
        QTest::newRow("midnight told") << u"2004-03-09 00:00:00.000"_s << u"2004-03-09"_s;
        QTest::newRow("short") << u" 2004/3/9 "_s << u"2004-03-09"_s;
        QTest::newRow("compact") << u"20040309"_s << u"2004-03-09"_s;
        QTest::newRow("no such day") << u"2003-02-29"_s << QString();
        QTest::newRow("no such hour") << u"2003-02-28 24:00:00"_s << QString();
        QTest::newRow("letters in place") << u"2004-0x-09"_s << QString();
        QTest::newRow("short time") << u"2004-03-09 :05:03"_s << QString();
        QTest::newRow("behind") << u"2004-03-09x"_s << QString();
        QTest::newRow("empty") << u""_s << QString();
    }

    void dates()
    {
        QFETCH(QString, text);
        QFETCH(QString, canonical);
        const auto moment = readMoment(text);
        const QByteArray utf8 = text.toUtf8();
        QCOMPARE(readMoment(std::string_view(utf8.constData(), std::size_t(utf8.size()))), moment);
        QCOMPARE(moment.has_value(), !canonical.isEmpty());
        if (!moment) return;
        const CanonicalMoment written(*moment);
        QCOMPARE(QString::fromUtf8(written.view().data(), qsizetype(written.view().size())), canonical);
        QCOMPARE(localeText(*moment), localeDateText(*readDate(text)));
        QCOMPARE(Value(text).moment(), Value(*moment).moment());
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

    void embeddedFile_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QVariant>("file"); // invalid: leads to a server
        const QString folder = QFileInfo(embeddedDatabaseFile()).path();
        const QString builtIn = u"PROVIDER=MSDASQL;DSN="_s + BuiltInDataSource + u";UID=a;PWD=;"_s;
        const QString access
            = u"PROVIDER=MSDASQL;Driver=Microsoft Access Driver (*.mdb);Server=s;UID=a;PWD=;"_s;
        QTest::newRow("built in") << builtIn << QVariant(embeddedDatabaseFile());
        QTest::newRow("built in, elsewhere")
            << builtIn + u"Database=/srv/it''s.db;"_s << QVariant(u"/srv/it's.db"_s);
        QTest::newRow("entry of the dialog")
            << access + u"Database=/srv/lib.mdb;"_s << QVariant(u"/srv/lib.mdb"_s);
        QTest::newRow("relative") << access + u"Database=馆/lib;"_s << QVariant(folder + u"/馆/lib"_s);
        QTest::newRow("no path") << access << QVariant(u""_s);
        QTest::newRow("other source") << u"DSN=server;Database=/srv/lib.db;"_s << QVariant();
        QTest::newRow("server") << u"Driver=SQL Server;Server=s;Database=lib;"_s << QVariant();
        QTest::newRow("nothing") << u""_s << QVariant();
    }

    void embeddedFile()
    {
        QFETCH(QString, text);
        QFETCH(QVariant, file);
        const auto found = embeddedFileOf(ConnectionItems(text));
        QCOMPARE(found.has_value(), file.isValid());
        if (found) QCOMPARE(*found, file.toString());
    }
};

QTEST_GUILESS_MAIN(TestValues)
#include "tst_values.moc"
