#include "database/circulation.h"
#include "platform/db/command.h"
#include "support/cases.h"

#include <QtTest>

using namespace quilla;

namespace {

void fillWorkload(Circulation& library)
{
    library.open(u"R1"_s, u"B1"_s, u"2026-02-01"_s);
    library.open(u"r1 "_s, u"B2"_s, u"2026-02-01 09:30:00"_s);
    library.lent(u"R2"_s, u"B3"_s, u"2026-01-31"_s, u"2026-02-01"_s);
    library.lent(u"R2"_s, u"B3"_s, u"2026-02-28 23:59:59"_s, u"2026-03-01"_s);
    library.lent(u"gone"_s, u"B3"_s, u"2025-12-31"_s, u"2026-02-14 18:00:00"_s, u"2026-02-14"_s);
    library.lent(u"gone"_s, u"B4"_s, u"2025-12-31"_s, u"2026-02-15"_s, u"2026-02-14"_s);
    library.fine(u"0.10"_s, u"2026-02-15"_s);
    library.fine(u"0.20"_s, u"2026-02-15"_s);
    library.fine(u"99"_s, u"2026-01-31"_s);
    library.fine(u"-0.05"_s, u"2026-02-14"_s); // a refund
    library.fine(u"-5"_s, u"2026-05-14"_s);
    library.withdrawn(u"2026-02-28"_s);
    library.withdrawn(u"2025-02-28"_s);
}

void fillClasses(Circulation& library)
{
    library.title(u"BI"_s, u"i247.5"_s);
    library.title(u"BZ"_s, u"Z1"_s);
    library.title(u"BL"_s, u"L1"_s);
    library.title(u"B0"_s, {});
    library.send(u"update sck set bookstatus='注销' where barcode='BZ'"_s);
    for (const QString& barcode : {u"BI"_s, u"BZ "_s, u"BL"_s, u"B0"_s, u"unknown"_s})
        library.lent(u"R1"_s, barcode, u"2024-02-29"_s, u"2024-03-05"_s);
    library.open(u"R1"_s, u"bi"_s, u"2024-03-01"_s);
    library.open(u"R1"_s, u"BI"_s, u"2024-12-31 12:00:00"_s);
    library.open(u"R1"_s, u"BL"_s, u"2023-06-01"_s);
}

void fillReaders(Circulation& library)
{
    for (const QString& type : {u"教师"_s, u"学生"_s, u"Guest"_s, u"教师"_s})
        library.insert(u"dzlx"_s, {{u"readerclass"_s, type}});
    library.card(u"R1"_s, u"一中"_s, u"学生"_s);
    library.card(u"R2"_s, u"二'中"_s, u"GUEST "_s);
    library.card(u"R3"_s, u"一中"_s, u"家长"_s);
    library.open(u"r1"_s, u"B1"_s, u"2026-02-01"_s);
    library.lent(u"R1"_s, u"B2"_s, u"2026-02-28"_s, u"2026-03-03"_s);
    library.lent(u"R2"_s, u"B2"_s, u"2026-02-03"_s, u"2026-02-04"_s);
    library.lent(u"R3"_s, u"B2"_s, u"2026-02-03"_s, u"2026-02-04"_s);
    library.lent(u"gone"_s, u"B2"_s, u"2026-02-03"_s, u"2026-02-04"_s);
    library.lent(u"R1"_s, u"B3"_s, u"2025-12-31"_s, u"2026-02-04"_s);
}

void fillRankings(Circulation& library)
{
    library.card(u"R1"_s, u"一中"_s, u"教师"_s);
    library.card(u"R2"_s, u"二中"_s, u"学生"_s);
    library.card(u"R3"_s, u"一中 "_s, u"学生"_s);
    library.title(u"B1"_s, u"I247.5"_s);
    library.title(u"B2"_s, u"I1"_s);
    library.title(u"B3"_s, u"TP311"_s);
    library.title(u"B4"_s, u"I3"_s);
    library.title(u"B5"_s, {});
    library.lent(u"R2"_s, u"B5"_s, u"2026-03-05"_s, u"2026-03-06"_s);
    library.insert(u"sck"_s, {{u"zskid"_s, u"4"_s}, {u"barcode"_s, u"B4b"_s}, {u"bookstatus"_s, u"注销"_s}});
    library.lent(u"R1"_s, u"B4"_s, u"2026-01-01"_s, u"2026-02-04"_s);
    library.lent(u"R2"_s, u"b4B"_s, u"2026-01-31 20:00:00"_s, u"2026-02-04"_s);
    library.open(u"gone"_s, u"B4"_s, u"2026-01-15"_s);
    library.lent(u"R1"_s, u"B1"_s, u"2026-01-02"_s, u"2026-02-04"_s);
    library.lent(u"R3"_s, u"B1"_s, u"2026-01-02"_s, u"2026-02-04"_s);
    library.lent(u"R2"_s, u"B2"_s, u"2026-01-03"_s, u"2026-02-04"_s);
    library.lent(u"gone"_s, u"B2"_s, u"2026-01-03"_s, u"2026-02-04"_s);
    library.lent(u"gone"_s, u"B3"_s, u"2026-01-03"_s, u"2026-02-04"_s);
    library.lent(u"R2"_s, u"B3"_s, u"2026-02-01"_s, u"2026-02-04"_s);
}

void fillHistory(Circulation& library)
{
    library.lent(u"R1"_s, u"B1"_s, u"2025-05-01"_s, u"2025-05-20"_s);
    library.lent(u"R2"_s, u"B1"_s, u"2025-06-01"_s, u"2025-06-20"_s);
    library.lent(u"R1"_s, u"B2"_s, u"2025-06-01"_s, u"2025-06-20"_s);
    library.open(u"r1"_s, u"b1 "_s, u"2025-01-01"_s);
}

constexpr QStringView Letters = u"ABCDEFGHIJKNOPQRSTUVXZ";

/// One loan of class A, two of B, three of C, one of D...
void fillLetters(Circulation& library)
{
    for (int at = 0; at < Letters.size(); ++at) {
        const QString barcode = u"B%1"_s.arg(at);
        library.title(barcode, Letters[at] + u"1"_s);
        for (int loan = 0; loan <= at % 3; ++loan)
            library.open(u"R1"_s, barcode, u"2026-03-08"_s);
    }
}

using Fill = void (*)(Circulation&);

} // namespace

class TestProcedures : public QObject {
    Q_OBJECT

private:
    /// One for all tests that want the same in it: they only read.
    Circulation& filled(Fill fill)
    {
        std::unique_ptr<Circulation>& library = m_libraries[fill];
        if (library) return *library;
        library = std::make_unique<Circulation>();
        fill(*library);
        return *library;
    }

    std::map<Fill, std::unique_ptr<Circulation>> m_libraries;

private Q_SLOTS:
    void figures_data()
    {
        const QStringList february {u"1 借出册数=2 还回册数=1 读者人次=2"_s, u"14 还回册数=1 罚款金额=-0.05 读者人次=1"_s,
            u"15 还回册数=1 过期册数=1 罚款金额=0.3 读者人次=1"_s, u"28 借出册数=1 读者人次=1 注销册数=1"_s,
            u"合计 借出册数=3 还回册数=3 过期册数=1 罚款金额=0.25 读者人次=5 注销册数=1"_s, u"29x7"_s};
        cases<Fill, QString, QStringList>({
            {"work of a month", {fillWorkload, u"exec dbo.YueLiuTongTJ '2026-2',28"_s, february}},
            {"month with a 0", {fillWorkload, u"exec yueliutongtj '2026-02','28'"_s, february}},
            {"work of a year",
                {fillWorkload, u"exec dbo.nianLiuTongTJ '2026'"_s,
                    QStringList {u"1 借出册数=1 罚款金额=99 读者人次=1"_s,
                        u"2 借出册数=3 还回册数=3 过期册数=1 罚款金额=0.25 读者人次=5 注销册数=1"_s,
                        u"3 还回册数=1 读者人次=1"_s, u"5 罚款金额=-5"_s,
                        u"合计 借出册数=4 还回册数=4 过期册数=1 罚款金额=94.25 读者人次=7 注销册数=1"_s,
                        u"13x7"_s}}},
            {"December ends the year",
                {fillWorkload, u"exec dbo.YueLiuTongTJ '2025-12',31"_s,
                    QStringList {u"31 借出册数=2 读者人次=1"_s, u"合计 借出册数=2 读者人次=1"_s, u"32x7"_s}}},
            {"month of a refund alone",
                {fillWorkload, u"exec dbo.YueLiuTongTJ '2026-05',31"_s, QStringList {u"0x7"_s}}},
            {"month without work",
                {fillWorkload, u"exec dbo.YueLiuTongTJ '2026-04',30"_s, QStringList {u"0x7"_s}}},
            {"classes of a leap day",
                {fillClasses, u"exec dbo.YueJieChuFenLeiTJ '2024-2',29"_s,
                    QStringList {u"29 I类=1 Z类=1 小计=2"_s, u"合计 I类=1 Z类=1 小计=2"_s, u"30x24"_s}}},
            {"classes of a year",
                {fillClasses, u"exec dbo.NianJieChuFenLeiTJ '2024'"_s,
                    QStringList {u"2 I类=1 Z类=1 小计=2"_s, u"3 I类=1 小计=1"_s, u"12 I类=1 小计=1"_s,
                        u"合计 I类=3 Z类=1 小计=4"_s, u"13x24"_s}}},
            {"only a class without a column",
                {fillClasses, u"exec dbo.NianJieChuFenLeiTJ '2023'"_s, QStringList {u"0x24"_s}}},
            {"types of a month in the order of their list",
                {fillReaders, u"exec procydztj '2026','2'"_s,
                    QStringList {u"学生 小计=2 T1=1 T28=1"_s, u"Guest 小计=1 T3=1"_s, u" 小计=1 T3=1"_s,
                        u"家长 小计=1 T3=1"_s, u"5x33"_s}}},
            {"types without a loan", {fillReaders, u"exec procydztj '2026','3'"_s, QStringList {u"0x33"_s}}},
            {"types in December",
                {fillReaders, u"exec procydztj '2025','12'"_s,
                    QStringList {u"学生 小计=1 T31=1"_s, u"3x33"_s}}},
        });
    }

    void figures()
    {
        const auto [fill, call, expected] = given<Fill, QString, QStringList>();
        Circulation& library = filled(fill);
        QCOMPARE(library.figures(call).join(u'\n'), expected.join(u'\n'));
    }

    void rows_data()
    {
        const QString r1 = u"一中|读者R1|学生|R1|2|0|2|0|0|0|0|0|0|0|0|0|0"_s;
        const QString r2 = u"二'中|读者R2|GUEST |R2|1|0|1|0|0|0|0|0|0|0|0|0|0"_s;
        const QString r3 = u"一中|读者R3|家长|R3|1|0|1|0|0|0|0|0|0|0|0|0|0"_s;
        const QString gone = u"null|null|null|gone|1|0|1|0|0|0|0|0|0|0|0|0|0"_s;
        const QString b4 = u"1|全部|I3/0|书名4|著者4|3"_s;
        const QString b2 = u"2|全部|I1/0|书名2|著者2|2"_s;
        const QString b1 = u"2|全部|I247.5/0|书名1|著者1|2"_s;
        const QString b3 = u"4|全部|TP311/0|书名3|著者3|1"_s;
        const QString january = u",'2026-01-01','2026-01-31',"_s;
        cases<Fill, QString, QStringList>({
            {"readers of a year",
                {fillReaders, u"exec procndztj '2026','全部','全部'"_s, QStringList {gone, r1, r3, r2}}},
            {"readers of a unit",
                {fillReaders, u"exec procndztj '2026','一中 ','全部'"_s, QStringList {r1, r3}}},
            {"readers of a type",
                {fillReaders, u"exec procndztj '2026','二''中','guest'"_s, QStringList {r2}}},
            {"the year before",
                {fillReaders, u"exec procndztj '2025','一中','学生'"_s,
                    QStringList {u"一中|读者R1|学生|R1|1|0|0|0|0|0|0|0|0|0|0|0|1"_s}}},
            {"nobody borrowed", {fillReaders, u"exec procndztj '2024','全部','全部'"_s, {}}},
            {"titles, with a shared rank",
                {fillRankings, u"exec procjhphb '全部','10'"_s + january + u"'全部' "_s,
                    QStringList {b4, b2, b1, b3}}},
            {"titles, cut inside a rank",
                {fillRankings, u"exec procjhphb '','2'"_s + january + u"'' "_s, QStringList {b4, b2}}},
            {"titles without a class, to the last day of all",
                {fillRankings, u"exec procjhphb '全部','10','2026-03-01','9999-12-31','' "_s,
                    QStringList {u"1|全部|null|书名5|著者5|1"_s}}},
            {"titles of a class",
                {fillRankings, u"exec procjhphb '全部','10'"_s + january + u"'tp' "_s,
                    QStringList {u"1|全部|TP311/0|书名3|著者3|1"_s}}},
            {"a class is no pattern",
                {fillRankings, u"exec procjhphb '全部','10'"_s + january + u"'%' "_s, {}}},
            {"titles of a unit",
                {fillRankings, u"exec procjhphb '一中','10'"_s + january + u"'I' "_s,
                    QStringList {u"1|一中|I247.5/0|书名1|著者1|2"_s, u"2|一中|I3/0|书名4|著者4|1"_s}}},
            {"readers, with a shared rank",
                {fillRankings, u"exec procdzjyphb '全部','10','2026-01-01','2026-01-31'"_s,
                    QStringList {
                        u"1|读者R1|教师|一中|2"_s, u"1|读者R2|学生|二中|2"_s, u"3|读者R3|学生|一中 |1"_s}}},
            {"readers of a type on one day",
                {fillRankings, u"exec procdzjyphb '学生 ','1','2026-01-31','2026-01-31'"_s,
                    QStringList {u"1|读者R2|学生|二中|1"_s}}},
            {"readers to the last day of all",
                {fillRankings, u"exec procdzjyphb '全部','10','2026-02-01','9999-12-31'"_s,
                    QStringList {u"1|读者R2|学生|二中|2"_s}}},
            {"from after to",
                {fillRankings, u"exec procdzjyphb '全部','10','2026-02-01','2026-01-31'"_s, {}}},
            {"history of a copy",
                {fillHistory, u"exec procjylstj 0,'B1',''"_s,
                    QStringList {u"在借|b1 |r1|2025-01-01|null|王馆员"_s,
                        u"已还|B1|R2|2025-06-01|2025-06-20|李馆员"_s,
                        u"已还|B1|R1|2025-05-01|2025-05-20|李馆员"_s}}},
            {"history of a reader",
                {fillHistory, u"exec procjylstj 17,'B1','R1'"_s,
                    QStringList {u"在借|b1 |r1|2025-01-01|null|王馆员"_s,
                        u"已还|B2|R1|2025-06-01|2025-06-20|李馆员"_s,
                        u"已还|B1|R1|2025-05-01|2025-05-20|李馆员"_s}}},
            {"history of nothing", {fillHistory, u"exec procjylstj 1,'B1','R1'"_s, {}}},
        });
    }

    void rows()
    {
        const auto [fill, call, expected] = given<Fill, QString, QStringList>();
        QCOMPARE(filled(fill).rows(call).join(u'\n'), expected.join(u'\n'));
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
            {u"exec procdzjyphb '全部','1;delete from dzk"_s + tail, true},
            {u"exec procdzjyphb '全部','99999999999"_s + tail, true},
            {u"exec procdzjyphb '全部','"_s + tail, false},
            {u"exec procdzjyphb '全部','-3"_s + tail, false},
            {u"exec procjhphb '全部','10','2026-02-30','2026-03-31','A' "_s, true},
            {u"exec procjylstj 0,'B1'"_s, true},
            {u"exec procnone 0"_s, true},
        };
        Circulation& library = filled(fillRankings);
        const QString before = library.everything();
        for (const auto& [call, isError] : calls) {
            QString told;
            try {
                QCOMPARE(library.rows(call), QStringList());
            } catch (const Error& error) {
                told = error.text;
            }
            QVERIFY2(told.isEmpty() != isError, qPrintable(call + told));
        }
        QCOMPARE(library.everything(), before);
    }

    void countsEachClassInItsColumn()
    {
        QStringList expected {u"3"_s};
        for (int at = 0; at < Letters.size(); ++at)
            expected += QString::number(at % 3 + 1);
        expected += u"43"_s;
        Circulation& library = filled(fillLetters);
        QCOMPARE(library.rows(u"exec dbo.NianJieChuFenLeiTJ '2026'"_s).at(2), expected.join(u'|'));
        expected.first() = u"8"_s;
        QCOMPARE(library.rows(u"exec dbo.YueJieChuFenLeiTJ '2026-3',31"_s).at(7), expected.join(u'|'));
    }

    void answersCommands()
    {
        Circulation& library = filled(fillWorkload);
        Connection connection = library.factory.open(library.connectionText);
        Command month(connection, u"dbo.YueLiuTongTJ"_s);
        month.append(u"@tongjiData", u"2026-3"_s, 7);
        month.append(u"@monthDays", 31);
        QCOMPARE(Circulation::figuresOf(month.execute()),
            QStringList({u"1 还回册数=1 读者人次=1"_s, u"合计 还回册数=1 读者人次=1"_s, u"32x7"_s}));
        Command year(connection, u"dbo.nianLiuTongTJ"_s);
        year.append(u"@tongjiData", u"20261"_s, 4);
        QCOMPARE(year.execute().recordCount(), 13);
        Command injected(connection, u"dbo.nianLiuTongTJ"_s);
        injected.append(u"@tongjiData", u"',1"_s, 4);
        QVERIFY_THROWS_EXCEPTION(Error, injected.execute());
    }
};

QTEST_GUILESS_MAIN(TestProcedures)
#include "test_procedures.moc"
