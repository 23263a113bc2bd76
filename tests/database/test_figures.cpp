#include "database/demo_library.h"
#include "database/library_schema.h"
#include "db/error_of.h"
#include "platform/db/command.h"
#include "platform/db/embedded.h"
#include "source_dir.h"
#include "support/field_texts.h"
#include "support/library_test.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

using namespace quilla;

namespace {

using Fill = void (*)(Connection&);

void fillDemo(Connection& connection)
{
    fillDemoLibrary(
        connection, {.today = QDate(2026, 11, 20), .seed = 3, .titles = 400, .copies = 700, .readers = 120});
}

/// Codes in other letters and with blanks, times of the day, the last days of periods, copies that are gone,
/// a class without a column and none, a deleted reader, refunds, types that no list has or one has twice, and
/// each class in its own number.
void fillOdd(Connection& connection)
{
    const auto insert = [&](const QString& table, const QString& columns, const QStringList& rows) {
        for (const QString& row : rows)
            connection.execute(u"insert into "_s + table + u'(' + columns + u") values("_s + row + u')');
    };
    insert(u"dzlx"_s, u"readerclass"_s, {u"'学生'"_s, u"'教师'"_s, u"'Guest'"_s, u"'教师'"_s});
    insert(u"dzk"_s, u"readercode,name,readerclass,readunit"_s,
        {u"'R1','甲','学生','一班'"_s, u"'r2 ','乙','教师 ','二班'"_s, u"'R3','丙','访客','一班 '"_s,
            u"'R4','丁','GUEST ','二''班'"_s});
    const QString titleColumns = u"bookname,author,classcode,zch,fzqfh"_s;
    insert(u"zsk"_s, titleColumns,
        {u"'书一','某','i247.5',3,''"_s, u"'书二','某','TP311',7,'/2'"_s, u"'书三','某','L1',1,''"_s,
            u"'书四','某',null,1,''"_s});
    insert(u"sck"_s, u"zskid,barcode,bookstatus"_s,
        {u"1,'B1','注销'"_s, u"1,'B1b','库本'"_s, u"2,'B2','借出'"_s, u"3,'B3','库本'"_s,
            u"4,'B4','库本'"_s});
    insert(u"jhsk"_s, u"readercode,barcode,orderdate,yhdate,operater"_s,
        {u"'R1','b2','2026-02-28','2026-03-20','王'"_s, u"'R1','B3','2023-06-01','2023-07-01','王'"_s,
            u"'R1','B1b','2024-12-31 12:00:00','2025-01-20','王'"_s,
            u"'r1 ','B2 ','2026-02-01 10:30:00','2026-03-01','王'"_s});
    insert(u"jhslsk"_s, u"readercode,barcode,orderdate,yhdate,backdate,operater"_s,
        {u"'r1 ','B1','2026-02-28 23:59:59','2026-03-01','2026-03-31','王'"_s,
            u"'R1','B1','2026-02-01','2026-03-01','2026-03-01','王'"_s,
            u"'R2','B1B','2025-12-31','2026-03-01','2026-03-01','王'"_s,
            u"'R2','b1B','2026-01-31 20:00:00','2026-02-14','2026-02-14 18:00:00','王'"_s,
            u"'gone','B2','2025-12-31','2026-01-01','2026-12-31','王'"_s,
            u"'gone','B1','2024-02-29','2026-02-14','2026-02-15','王'"_s,
            u"'R3','B3','2026-01-01','2026-01-15','2026-01-16','王'"_s,
            u"'R3','nowhere','2026-01-01','2026-01-15','2026-01-16','王'"_s,
            u"'R2','B4','2026-03-05','2026-04-01','2026-03-06','王'"_s,
            u"'R4','B3','2026-04-02','2026-05-01','2026-04-03','王'"_s});
    insert(u"fkk"_s, u"readercode,sfmoney,opratedate"_s,
        {u"'R1',3.35,'2026-03-31'"_s, u"'R1',-1.05,'2026-03-31'"_s, u"'R1',-2,'2026-05-05'"_s,
            u"'R1',0.1,'2026-02-15'"_s, u"'R1',0.2,'2026-02-15'"_s});
    insert(u"BookOut"_s, u"barcode,cause,outdate"_s,
        {u"'B1','注销','2026-06-30'"_s, u"'B9','注销','2025-02-28'"_s});
    constexpr QStringView letters = u"ABCDEFGHIJKNOPQRSTUVXZ";
    for (int at = 0; at < letters.size(); ++at) {
        insert(u"zsk"_s, titleColumns, {u"'书','某','%1',1,''"_s.arg(letters[at])});
        insert(u"sck"_s, u"zskid,barcode"_s, {u"%1,'%2'"_s.arg(at + 5).arg(letters[at])});
        for (int loan = 0; loan <= at % 3; ++loan)
            insert(u"jhsk"_s, u"readercode,barcode,orderdate,operater"_s,
                {u"'R1','%1','2026-03-08','王'"_s.arg(letters[at])});
    }
}

/// Decimals in one form.
QString plain(QString row)
{
    static const QRegularExpression zeros(uR"((\.\d*?)0+(?=\||$))"_s);
    static const QRegularExpression point(uR"(\.(?=\||$))"_s);
    return row.replace(zeros, u"\\1"_s).remove(point);
}

QJsonArray workedOut(const QString& file)
{
    QProcess python;
    python.start(u"/usr/bin/python3"_s,
        {QStringLiteral(QUILLA_SOURCE_DIR "/tests/database/figures.py"), file, u"2023"_s, u"2026"_s});
    python.waitForFinished(-1);
    const QByteArray faults = python.readAllStandardError();
    if (!faults.isEmpty()) qWarning().noquote() << faults;
    return QJsonDocument::fromJson(python.readAllStandardOutput()).array();
}

QStringList sortedUnless(bool ordered, QStringList rows)
{
    for (QString& row : rows)
        row = plain(row);
    if (!ordered) rows.sort();
    return rows;
}

} // namespace

/// Every cell of every statistic against a program that knows nothing of the procedures.
class TestFigures : public LibraryTest {
    Q_OBJECT

private Q_SLOTS:
    void agree_data()
    {
        QTest::addColumn<Fill>("plant");
        QTest::newRow("odd rows") << Fill(fillOdd);
        QTest::newRow("demo library") << Fill(fillDemo);
    }

    void agree()
    {
        QFETCH(Fill, plant);
        const QString file = m->folder.filePath(u"plain.db"_s);
        createEmbedded(file, m->schema, m->clock, [&](Connection& created) {
            createLibrary(created);
            plant(created);
        });
        {
            Connection connection = m->factory.open(m->connectionText);
            connection.begin();
            plant(connection);
            connection.commit();
        }
        const QJsonArray calls = workedOut(file);
        QVERIFY(calls.size() > 80);
        for (const QJsonValue& call : calls) {
            const bool ordered = call[1].toBool();
            const QStringList rows = m->rows(call[0].toString());
            QCOMPARE(u"%1\n%2"_s.arg(call[0].toString(), sortedUnless(ordered, rows).join(u'\n')),
                u"%1\n%2"_s.arg(call[0].toString(),
                    sortedUnless(ordered, call[2].toVariant().toStringList()).join(u'\n')));
        }
    }

    /// An error or no rows, and nothing happens to the library.
    void refusesBadArguments()
    {
        const QString tail = u"','2026-01-01','2026-01-31'"_s;
        const std::pair<QString, bool> calls[] {
            {u"exec dbo.YueLiuTongTJ '2026-13',31"_s, true},
            {u"exec procydztj '2026',''"_s, true},
            {u"exec procndztj ''' or 1=1 --','全部','全部'"_s, true},
            {u"exec procndztj '2026',''' or ''''=''','全部'"_s, false},
            {u"exec procndztj '2026','@leixing','全部'"_s, false},
            {u"exec procjylstj 0,''' or 1=1 --',''"_s, false},
            {u"exec procjylstj 1,'B1','R1'"_s, false},
            {u"exec procdzjyphb '全部','1;delete from dzk"_s + tail, true},
            {u"exec procdzjyphb '全部','99999999999"_s + tail, true},
            {u"exec procdzjyphb '全部','"_s + tail, false},
            {u"exec procdzjyphb '全部','-3"_s + tail, false},
            {u"exec procjhphb '全部','10','2026-02-30','2026-03-31','A' "_s, true},
            {u"exec procjylstj 0,'B1'"_s, true},
            {u"exec procnone 0"_s, true},
        };
        Connection connection = m->factory.open(m->connectionText);
        fillOdd(connection);
        const QString before = m->everything();
        for (const auto& [call, isError] : calls) {
            const QString told = errorText([&] { QCOMPARE(m->rows(call), QStringList()); });
            QVERIFY2(told.isEmpty() != isError, qPrintable(call + told));
        }
        QCOMPARE(m->everything(), before);
    }

    /// A month may have a 0 before its number, and a text beyond its width is cut.
    void answersCommands()
    {
        Connection connection = m->factory.open(m->connectionText);
        fillOdd(connection);
        Command month(connection, u"dbo.YueLiuTongTJ"_s);
        month.append(u"@tongjiData", u"2026-03"_s, 7);
        month.append(u"@monthDays", 31);
        Recordset rows = month.execute();
        const QStringList returns = fieldTexts(rows, u"还回册数");
        QCOMPARE(returns.size(), 32);
        QCOMPARE(returns[0] + returns[30] + returns[31], u"214"_s);
        Command year(connection, u"dbo.nianLiuTongTJ"_s);
        year.append(u"@tongjiData", u"20261"_s, 4);
        QCOMPARE(year.execute().recordCount(), 13);
        Command injected(connection, u"dbo.nianLiuTongTJ"_s);
        injected.append(u"@tongjiData", u"',1"_s, 4);
        QVERIFY_THROWS_EXCEPTION(Error, injected.execute());
    }
};

QTEST_GUILESS_MAIN(TestFigures)
#include "test_figures.moc"
