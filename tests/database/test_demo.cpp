#include "database/check.h"
#include "database/demo/isbn.h"
#include "database/demo_library.h"
#include "database/test_base.h"

#include <QCryptographicHash>

using namespace quilla;

namespace {

/// A small library is enough for everything but the figures.
std::function<void(Connection&)> demoOf(quint64 seed, const QDate& today = QDate(2003, 10, 1))
{
    return [=](Connection& connection) {
        fillDemoLibrary(
            connection, {.today = today, .seed = seed, .titles = 400, .copies = 700, .readers = 120});
    };
}

/// One number for all rows of all tables.
QByteArray fingerprint(TestBase& base)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const sql::Table& table : base.schema.tables())
        if (!table.view) hash.addData(base.rows(u"select * from %1"_s.arg(table.name)).toUtf8());
    return hash.result().toHex();
}

int countOf(TestBase& base, const QString& from)
{
    return base.rows(u"select count(*) from "_s + from).toInt();
}

} // namespace

class TestDemo : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isReproducible()
    {
        TestBase first(demoOf(7));
        TestBase again(demoOf(7));
        TestBase other(demoOf(8));
        QCOMPARE(fingerprint(again), fingerprint(first));
        QVERIFY(fingerprint(other) != fingerprint(first));
    }

    void keepsInvariants_data()
    {
        QTest::addColumn<QDate>("today");
        QTest::newRow("in a term") << QDate(2003, 10, 15);
        QTest::newRow("on a holiday") << QDate(2024, 2, 10);
        QTest::newRow("on the last day of February") << QDate(2024, 2, 29);
        QTest::newRow("beyond the known spring festivals") << QDate(2060, 3, 1);
    }

    void keepsInvariants()
    {
        QFETCH(QDate, today);
        TestBase base(demoOf(3, today));
        for (const Finding& finding : checkLibrary(base.connection))
            QFAIL(qPrintable(finding.rule + u": "_s + finding.texts().join(u'\n')));
        const QString day = isoDate(today);
        for (const QString& later : {u"jhsk where orderdate>'%1'"_s, u"jhslsk where backdate>'%1'"_s,
                 u"fkk where opratedate>'%1'"_s, u"yyk where ordertime>'%1'"_s, u"zsk where catatime>'%1'"_s,
                 u"jhslsk where backdate<orderdate"_s, u"dzk where readstatus='有效' and term<='%1'"_s})
            QCOMPARE(countOf(base, later.contains(u"%1"_s) ? later.arg(day) : later), 0);
    }

    void holdsEverySituation()
    {
        TestBase base(
            [](Connection& connection) { fillDemoLibrary(connection, {.today = QDate(2003, 10, 1)}); });
        for (const char* from :
            {"jhsk where yhdate>='2003-10-01'", "jhsk where yhdate<'2003-10-01'", "jhsk where res>0",
                "yyk where barcode<>'' and oldtime>='2003-10-01'", "yyk where barcode is null",
                "fkk where cause='超期'", "fkk where cause='丢失'", "fkk where sfmoney<yfmoney", "diushik",
                "BookOut where cause='丢失'", "BookOut where cause='注销'", "sck where bookstatus='典藏'",
                "dzk where readstatus='超期'", "dzk where readstatus='挂失'", "dzk where readstatus='无效'",
                "LibUse where borrow=0", "LibUse where borrow=1 and password=''",
                "Global where type='holiday' and code='2003-10-01 2003-10-07'",
                "jhslsk where year(backdate)=2000",
                "dzk join jycs on dzk.readerclass=jycs.readerclass and dzk.daycount=jycs.daycount"})
            QVERIFY2(countOf(base, QString::fromUtf8(from)) > 0, from);
    }

    /// A loan of a copy never begins before the one before it has ended.
    void neverLendsACopyTwice()
    {
        TestBase base(demoOf(5));
        QCOMPARE(countOf(base,
                     u"jhslsk a join jhslsk b on a.barcode=b.barcode and a.jhslsk<b.jhslsk "
                     "where b.orderdate<a.backdate"_s),
            0);
        QCOMPARE(
            countOf(base, u"jhslsk a join jhsk b on a.barcode=b.barcode where b.orderdate<a.backdate"_s), 0);
    }

    void givesValidBookNumbers()
    {
        QCOMPARE(demo::isbn10CheckDigit(u"702000220"), u'X');
        QCOMPARE(demo::isbn10CheckDigit(u"030640615"), u'2');
        QCOMPARE(demo::isbn13CheckDigit(u"978702000220"), u'7');
        TestBase base(demoOf(1, QDate(2012, 5, 1)));
        const QStringList numbers = base.rows(u"select isbn from zsk").split(u'\n');
        for (QString number : numbers) {
            QVERIFY2(number.count(u'-') == (number.startsWith(u"978-"_s) ? 4 : 3), qPrintable(number));
            number.remove(u'-');
            const QStringView digits = QStringView(number).chopped(1);
            QVERIFY2(number.size() == 10
                    ? demo::isbn10CheckDigit(digits) == number.back()
                    : number.size() == 13 && demo::isbn13CheckDigit(digits) == number.back(),
                qPrintable(number));
        }
        QCOMPARE(QSet<QString>(numbers.begin(), numbers.end()).size(), numbers.size());
    }

    void refusesFilledLibrary()
    {
        TestBase base([](Connection& filled) { filled.execute(u"insert into zsk(bookname) values('书')"); });
        QVERIFY_THROWS_EXCEPTION(Error, demoOf(1)(base.connection));
        QCOMPARE(countOf(base, u"dzk"_s), 0);
    }
};

QTEST_GUILESS_MAIN(TestDemo)
#include "test_demo.moc"
