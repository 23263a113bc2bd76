#include "database/demo_library.h"
#include "database/library_schema.h"
#include "platform/db/embedded.h"
#include "source_dir.h"
#include "support/test_library.h"

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
/// a class without a column and none, a deleted reader, a refund, a type that no list has.
void fillOdd(Connection& connection)
{
    const QStringList statements {
        u"insert into dzlx(readerclass) values('学生')"_s,
        u"insert into dzlx(readerclass) values('教师')"_s,
        u"insert into dzk(readercode,name,readerclass,readunit) values('R1','甲','学生','一班')"_s,
        u"insert into dzk(readercode,name,readerclass,readunit) values('r2 ','乙','教师 ','二班')"_s,
        u"insert into dzk(readercode,name,readerclass,readunit) values('R3','丙','访客','一班')"_s,
        u"insert into zsk(bookname,author,classcode,zch,fzqfh) values('书一','某','i247.5',3,'')"_s,
        u"insert into zsk(bookname,author,classcode,zch,fzqfh) values('书二','某','TP311',7,'/2')"_s,
        u"insert into zsk(bookname,author,classcode,zch,fzqfh) values('书三','某','L1',1,'')"_s,
        u"insert into sck(zskid,barcode,bookstatus) values(1,'B1','注销')"_s,
        u"insert into sck(zskid,barcode,bookstatus) values(1,'B1b','库本')"_s,
        u"insert into sck(zskid,barcode,bookstatus) values(2,'B2','借出')"_s,
        u"insert into sck(zskid,barcode,bookstatus) values(3,'B3','库本')"_s,
        u"insert into jhsk(readercode,barcode,orderdate,yhdate,operater) values('R1','b2','2026-02-28','2026-03-20','王')"_s,
        u"insert into jhslsk(readercode,barcode,orderdate,yhdate,backdate,operater) values('r1 ','B1','2026-02-28 23:59:59','2026-03-01','2026-03-31','王')"_s,
        u"insert into jhslsk(readercode,barcode,orderdate,yhdate,backdate,operater) values('R2','B1B','2025-12-31','2026-03-01','2026-03-01','王')"_s,
        u"insert into jhslsk(readercode,barcode,orderdate,yhdate,backdate,operater) values('gone','B2','2025-12-31','2026-01-01','2026-12-31','王')"_s,
        u"insert into jhslsk(readercode,barcode,orderdate,yhdate,backdate,operater) values('R3','B3','2026-01-01','2026-01-15','2026-01-16','王')"_s,
        u"insert into jhslsk(readercode,barcode,orderdate,yhdate,backdate,operater) values('R3','nowhere','2026-01-01','2026-01-15','2026-01-16','王')"_s,
        u"insert into fkk(readercode,sfmoney,opratedate) values('R1',3.35,'2026-03-31')"_s,
        u"insert into fkk(readercode,sfmoney,opratedate) values('R1',-1.05,'2026-03-31')"_s,
        u"insert into fkk(readercode,sfmoney,opratedate) values('R1',-2,'2026-05-05')"_s,
        u"insert into BookOut(barcode,cause,outdate) values('B1','注销','2026-06-30')"_s,
    };
    for (const QString& statement : statements)
        connection.execute(statement);
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
        {QStringLiteral(QUILLA_SOURCE_DIR "/tests/database/figures.py"), file, u"2025"_s, u"2026"_s});
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
class TestFigures : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void agree_data()
    {
        QTest::addColumn<Fill>("fill");
        QTest::newRow("odd rows") << Fill(fillOdd);
        QTest::newRow("demo library") << Fill(fillDemo);
    }

    void agree()
    {
        QFETCH(Fill, fill);
        TestLibrary library;
        const QString file = library.folder.filePath(u"plain.db"_s);
        createEmbedded(file, library.schema, library.clock, [&](Connection& created) {
            createLibrary(created);
            fill(created);
        });
        {
            Connection connection = library.factory.open(library.connectionText);
            connection.begin();
            fill(connection);
            connection.commit();
        }
        const QJsonArray calls = workedOut(file);
        QVERIFY(calls.size() > 80);
        for (const QJsonValue& call : calls) {
            const bool ordered = call[1].toBool();
            const QStringList rows = library.rows(call[0].toString());
            QCOMPARE(u"%1\n%2"_s.arg(call[0].toString(), sortedUnless(ordered, rows).join(u'\n')),
                u"%1\n%2"_s.arg(call[0].toString(),
                    sortedUnless(ordered, call[2].toVariant().toStringList()).join(u'\n')));
        }
    }
};

QTEST_GUILESS_MAIN(TestFigures)
#include "test_figures.moc"
