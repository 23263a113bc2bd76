#include "database/check.h"
#include "database/scale.h"
#include "database/test_base.h"
#include "support/cases.h"

using namespace quilla;

namespace {

/// A reader with two loans, one waiting and one held reservation; a lost and a withdrawn copy.
void fillSound(Connection& connection)
{
    for (const char16_t* statement : {
             u"insert into zsk(bookname) values('甲')",
             u"insert into zsk(bookname) values('乙')",
             u"insert into sck(zskid,barcode,borrowstatus,bookstatus) values(1,'A1',0,'借出')",
             u"insert into sck(zskid,barcode,borrowstatus,bookstatus) values(1,'A2',0,'借出')",
             u"insert into sck(zskid,barcode,borrowstatus,bookstatus) values(2,'B1',1,'库本')",
             u"insert into sck(zskid,barcode,borrowstatus,bookstatus) values(2,'B2',0,'丢失')",
             u"insert into sck(zskid,barcode,borrowstatus,bookstatus) values(2,'B3',0,'注销')",
             u"insert into sck(zskid,barcode,borrowstatus,bookstatus) values(2,'B4',0,'典藏')",
             u"insert into BookOut(barcode,cause) values('b2 ','丢失')",
             u"insert into BookOut(barcode,cause) values('B3','注销')",
             u"insert into dzk(readercode,name,orderbook,yordercshu) values('R1','张三',2,0)",
             u"insert into dzk(readercode,name,orderbook,yordercshu) values('R2','李四',0,2)",
             u"insert into jhsk(readercode,barcode) values('r1','A1')",
             u"insert into jhsk(readercode,barcode) values('R1','a2')",
             u"insert into yyk(readercode,zskid,barcode,orderstatus) values('R2',1,null,0)",
             u"insert into yyk(readercode,zskid,barcode,orderstatus) values('R2',2,'B1',1)",
         })
        connection.execute(statement);
}

} // namespace

class TestCheck : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsViolation_data()
    {
        cases<QString, QStringList>({
            {"nothing wrong", {u"update dzk set name=name"_s, {}}},
            {"counter of loans too high",
                {u"update dzk set orderbook=3 where readercode='R1'"_s,
                    QStringList {u"orderbook: 读者证号=R1  姓名=张三  已借册数=3  借书记录=2"_s}}},
            {"counter of loans null beside loans",
                {u"update dzk set orderbook=null where readercode='R1'"_s,
                    QStringList {u"orderbook: 读者证号=R1  姓名=张三  已借册数=  借书记录=2"_s}}},
            {"counter of loans null without loans",
                {u"update dzk set orderbook=null where readercode='R2'"_s, {}}},
            {"loan of nobody",
                {u"delete from dzk where readercode='R1'"_s,
                    QStringList {
                        u"loan-reader: 借书控制号=1  读者证号=r1  条形码=A1\n借书控制号=2  读者证号=R1  条形码=a2"_s}}},
            {"copy lent twice",
                {u"insert into jhsk(readercode,barcode) values('R2','A1')"_s,
                    QStringList {u"orderbook: 读者证号=R2  姓名=李四  已借册数=0  借书记录=1"_s,
                        u"one-loan-a-copy: 条形码=A1  借书记录=2"_s}}},
            {"loan of a copy on the shelf",
                {u"update sck set borrowstatus=1,bookstatus='库本' where barcode='A1'"_s,
                    QStringList {
                        u"loaned-copy: 借书控制号=1  读者证号=r1  条形码=A1  图书状态=库本  可借=True"_s}}},
            {"loan of a lendable copy",
                {u"update sck set borrowstatus=1 where barcode='A1'"_s,
                    QStringList {
                        u"loaned-copy: 借书控制号=1  读者证号=r1  条形码=A1  图书状态=借出  可借=True"_s}}},
            {"loan of an unknown copy",
                {u"delete from sck where barcode='A1'"_s,
                    QStringList {u"loaned-copy: 借书控制号=1  读者证号=r1  条形码=A1  图书状态=  可借="_s}}},
            {"copy out without a loan",
                {u"update sck set borrowstatus=0,bookstatus='借出' where barcode='B4'"_s,
                    QStringList {u"copy-out: 条形码=B4"_s}}},
            {"held copy of another title",
                {u"update yyk set barcode='A1' where orderstatus=1"_s,
                    QStringList {u"held-copy: 读者证号=R2  控制ID=2  条形码=A1"_s}}},
            {"held without a copy",
                {u"update yyk set barcode='' where orderstatus=1"_s,
                    QStringList {u"held-copy: 读者证号=R2  控制ID=2  条形码="_s}}},
            {"waiting again keeps its deadline",
                {u"update yyk set barcode='',orderstatus=0,oldtime='2003-09-01' where barcode='B1'"_s, {}}},
            {"counter of reservations too low",
                {u"update dzk set yordercshu=1 where readercode='R2'"_s,
                    QStringList {u"yordercshu: 读者证号=R2  姓名=李四  预借册数=1  预约记录=2"_s}}},
            {"cleared reservations still count", {u"delete from yyk where orderstatus=0"_s, {}}},
            {"reservations of a deleted card", {u"delete from dzk where readercode='R2'"_s, {}}},
            {"lost without a ledger row",
                {u"delete from BookOut where cause='丢失'"_s,
                    QStringList {u"ledger: 条形码=B2  图书状态=丢失"_s}}},
            {"a code twice",
                {u"insert into dzk(readercode,orderbook) values('r2 ',0)"_s,
                    QStringList {u"reader-code-once: 读者证号=R2  张数=2"_s,
                        u"yordercshu: 读者证号=r2   姓名=  预借册数=0  预约记录=2"_s}}},
        });
    }

    void findsViolation()
    {
        const auto [change, expected] = given<QString, QStringList>();
        TestBase base(fillSound);
        base.connection.execute(change);
        QStringList found;
        for (const Finding& finding : checkLibrary(base.connection))
            found += finding.rule + u": "_s + finding.texts().join(u'\n');
        QCOMPARE(found, expected);
    }

    /// What can't be derived stays: the loan of a withdrawn copy, the card without an owner for its loan.
    void repairsWhatCanBeDerived()
    {
        TestBase base(fillSound);
        for (const char16_t* damage : {u"update dzk set orderbook=9,yordercshu=0",
                 u"update sck set borrowstatus=1,bookstatus='典藏' where barcode='a1'",
                 u"update sck set bookstatus='注销' where barcode='A2'",
                 u"update sck set bookstatus='借出' where barcode='B4'"})
            base.connection.execute(damage);
        const auto states = [&] { return base.rows(u"select barcode,borrowstatus,bookstatus from sck"); };
        const QString before = states();
        const std::vector<Finding> findings = checkLibrary(base.connection);
        QCOMPARE(states(), before);
        repairLibrary(base.connection, findings);
        QStringList left;
        for (const Finding& finding : checkLibrary(base.connection))
            left += finding.rule + u": "_s + finding.texts().join(u'\n');
        QCOMPARE(left.size(), 2);
        QVERIFY2(left[0].startsWith(u"loaned-copy: 借书控制号=2"), qPrintable(left[0]));
        QCOMPARE(left[1], u"ledger: 条形码=A2  图书状态=注销"_s);
        QCOMPARE(base.rows(u"select orderbook,yordercshu from dzk order by readercode"), u"2|0\n0|2"_s);
        QVERIFY(states().contains(u"库本"));
    }

    void guardsRefuseWhatDesksNeverWrite()
    {
        TestBase base(fillSound);
        const QStringList doubles {u"insert into jhsk(readercode,barcode) values('R2','a1 ')"_s,
            u"insert into dzk(readercode) values('r1')"_s,
            u"insert into sck(zskid,barcode) values(2,'b1')"_s};
        const auto refused = [&] {
            int count = 0;
            for (const QString& statement : doubles) {
                LastError error;
                error.attempt([&] { base.connection.execute(statement); });
                count += error.isSet();
            }
            return count;
        };
        for (int time = 0; time < 2; ++time)
            guardLibrary(base.connection);
        QCOMPARE(refused(), 3);
        unguardLibrary(base.connection);
        QCOMPARE(refused(), 0);
        // Where rows stand in the way of one there is none.
        base.connection.execute(u"delete from jhsk");
        QVERIFY(!LastError().attempt([&] { guardLibrary(base.connection); }));
        base.connection.rollback();
        QCOMPARE(refused() + refused(), 0);
    }

    void scaleDataIsSound_data()
    {
        cases<int, int, int, int>({
            {"fewer loans than readers", {100, 900, 70, 2}},
            {"loans not shared evenly", {100, 901, 250, 2}},
            {"more loans than copies", {50, 60, 1000, 0}},
            {"nothing", {0, 0, 0, 0}},
        });
    }

    void scaleDataIsSound()
    {
        const auto [readers, copies, loans, holds] = given<int, int, int, int>();
        TestBase base([&](Connection& connection) {
            fillScaleData(connection,
                {.readers = readers,
                    .copies = copies,
                    .history = 500,
                    .loans = loans,
                    .today = QDate(2003, 10, 1)});
        });
        QVERIFY(checkLibrary(base.connection).empty());
        QCOMPARE(base.rows(u"select count(*) from jhsk").toInt(), std::min(loans, copies));
        QCOMPARE(base.rows(u"select count(*) from jhslsk where backdate<='2003-10-01'"), u"500"_s);
        QCOMPARE(base.rows(u"select count(*) from yyk where oldtime>='2003-10-01'").toInt(), holds);
    }
};

QTEST_GUILESS_MAIN(TestCheck)
#include "test_check.moc"
