#include "desk/scan_cause.h"
#include "desk/scan_log_ops.h"
#include "desk/slip_ops.h"
#include "support/file_mode.h"
#include "support/library_test.h"

#include <QDir>

using namespace quilla;

class TestScanLog : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m->reader(u"R1"_s);
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-20"_s);
        m->copy(u"B2"_s);
        m->loan(u"B3"_s, u"R1"_s, u"2026-03-21"_s);
        m->send(u"update sck set zskid=99 where barcode='B3'"_s);
    }

private Q_SLOTS:
    /// The line says what the database holds, and never 成功 of what it does not hold.
    void lineAgreesWithTheDatabase_data()
    {
        using enum ScanKind;
        using enum ScanOutcome;
        cases<ScanKind, QString, ScanOutcome, bool, QString>({
            {"charge", {Charge, u"B1"_s, Done, true, u"成功 应还 2026-03-20"_s}},
            {"charge of a copy without its title", {Charge, u"B3"_s, Done, true, u"成功 应还 2026-03-21"_s}},
            {"charge that is not there", {Charge, u"B2"_s, Done, true, u"失败"_s}},
            {"return on a broken base", {Return, u"B2"_s, Done, false, u"失败"_s}},
            {"return", {Return, u"B2"_s, Done, true, u"成功"_s}},
            {"fine", {Fine, u"B2"_s, Done, true, u"罚款 1.50 元"_s}},
            {"refused", {Charge, u"B'9"_s, Refused, true, u"拒绝"_s}},
        });
    }

    void lineAgreesWithTheDatabase()
    {
        const auto [kind, barcode, outcome, works, words]
            = given<ScanKind, QString, ScanOutcome, bool, QString>();
        m->insert(u"fkk"_s,
            {{u"readercode"_s, u"R1"_s}, {u"barcode"_s, u"B2"_s}, {u"sfmoney"_s, u"1.5"_s},
                {u"opratedate"_s, u"2026-03-10"_s}});
        if (!works) m->failAt(u"select"_s);
        ScanEntry entry {.kind = kind, .barcode = barcode, .time = m->clock.moment, .readercode = u"R1"_s};
        entry.outcome = outcome;
        completeScan(m->session, entry);
        QVERIFY2(lineOf(entry).contains(words), qPrintable(lineOf(entry)));
        QCOMPARE(entry.readername, works ? u"读者R1"_s : QString());
    }

    void anotherDayBeginsAnew()
    {
        ScanLog log;
        ScanEntry entry {.kind = ScanKind::Charge, .barcode = u"B1"_s, .time = m->clock.moment};
        log.add(entry);
        entry.barcode = u"B2"_s;
        log.add(entry);
        QCOMPARE(log.entry(0).barcode + log.entry(1).barcode, u"B2B1"_s);
        entry.time = entry.time.addDays(1);
        log.add(entry);
        QCOMPARE(log.rowCount(), 1);
        QCOMPARE(log.count(ScanOutcome::Done), 1);
    }

    /// The engine's words may quote a row: they are shown, and stay out of the file.
    void causesAreKeptWithoutData()
    {
        const QString file = m->folder.filePath(u"new/causes.log"_s);
        ScanLog log(file);
        const Failure failure {ErrorNumber::InUse, u"数据库正被其他工作站占用，请稍后再试。\nrow (张三)"_s};
        const ScanEntry scan {.kind = ScanKind::Charge, .barcode = u"B1"_s, .time = m->clock.moment};
        for (int line = 0; line < 450; ++line)
            log.logCause(causeLine(scan, failure));
        QVERIFY(causeText(failure).contains(u"张三"_s));
        QVERIFY(causeText({101, u"不能连接数据库服务器。\nrefused"_s}).contains(u"检查网络"_s));
        qsizetype lines = 0;
        for (const QString& part : {file, file + u".1"_s}) {
            QFile kept(part);
            QVERIFY(kept.open(QIODevice::ReadOnly));
            const QString text = QString::fromUtf8(kept.readAll());
            lines += text.count(u'\n');
            QVERIFY(text.contains(u"占用"_s) && !text.contains(u"张三"_s));
            QCOMPARE(modeOf(part), 0600u);
        }
        QCOMPARE(lines, 250);
    }

    void slipListsOpenLoans()
    {
        const auto slip = loanSlip(m->session, u"R1"_s, SlipPaper::Roll58);
        QCOMPARE(slip->items.size(), std::size_t(1));
        QCOMPARE(slip->items[0].detail, u"B1  应还 2026-03-20"_s);
        m->prompt.expectStart(u"请先输入读者证号"_s);
        QVERIFY(!loanSlip(m->session, u"R9"_s, SlipPaper::A6));
        QVERIFY(!slipChoice(m->settings).paper);
        keepSlipChoice(m->settings, {SlipPaper::A6, true});
        QVERIFY(slipChoice(m->settings).paper == SlipPaper::A6 && slipChoice(m->settings).asPdf);
        qputenv("HOME", m->folder.path().toUtf8()); // a home without a folder for documents
        QVERIFY(QFileInfo(slipFile(u"R/1"_s, m->clock.now())).dir().exists());
    }
};

QTEST_GUILESS_MAIN(TestScanLog)
#include "test_scan_log.moc"
