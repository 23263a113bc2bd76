#include "reservations/reservation_ops.h"
#include "reservations/return_notice_ops.h"
#include "support/library_test.h"
#include "support/report_double.h"

using namespace quilla;

namespace {

const QString Question = u"确实要预约【书名1】吗？(y/n)"_s;
const QString NoRight = u"该读者没有预约图书的权限！\n如果确定要预约，您可以重新设置该读者的流通参数！"_s;
const QString AtLimit
    = u"该读者预约图书的册数已经到达规定的册数！不能再预约了！\n如果确定要预约，您可以重新设置该读者的流通参数！"_s;
const QString Repeated = u"该读者已经预约了该种图书，不能再预约这种图书了！"_s;
const QString OnShelf = u"该种图书有可以借的书(状态为库本的书可借)，不必预约这种图书！"_s;
const QString Success = u"图书预约成功！"_s;

} // namespace

/// Checks and statements of reservations, without their screens. The clock stands at 2026-03-10.
class TestReservationOps : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m->copy(u"B1"_s);
        m->reader(u"R1"_s, {{u"ordercount"_s, u"3"_s}});
        m_request = {u" R1 "_s, u"书名1"_s, u"B1"_s, u"书名1"_s, u"B1"_s, u"1"_s, {u"借出"_s}};
    }

private Q_SLOTS:
    /// Right, limit, repetition, shelf, in this order.
    void checks_data()
    {
        cases<QString, QString, QString, QString>({
            {"right", {u"update dzk set ordercount=0,yordercshu=9"_s, u"库本"_s, NoRight, u"9"_s}},
            {"null right", {u"update dzk set ordercount=null"_s, u"借出"_s, NoRight, u"0"_s}},
            {"below the limit", {u"update dzk set yordercshu=2"_s, u"借出"_s, Success, u"3"_s}},
            {"at the limit", {u"update dzk set yordercshu=3"_s, u"库本"_s, AtLimit, u"3"_s}},
            {"null counter", {u"update dzk set yordercshu=null"_s, u"借出"_s, Success, u"null"_s}},
            {"repetition, held",
                {u"insert into yyk(readercode,zskid,barcode,orderstatus) values('r1',1,'B9',1)"_s, u"库本"_s,
                    Repeated, u"0"_s}},
            {"another title",
                {u"insert into yyk(readercode,zskid,orderstatus) values('R1',2,0)"_s, u"典藏"_s, Success,
                    u"1"_s}},
            {"shelf, not the chosen copy", {u"select 1"_s, u"库本"_s, OnShelf, u"0"_s}},
            {"unknown reader",
                {u"update dzk set readercode='R9'"_s, u"库本"_s, u"出现意外错误！\n没有找到该读者的信息！"_s,
                    u"0"_s}},
        });
    }
    void checks()
    {
        const auto [before, lastState, told, counter] = given<QString, QString, QString, QString>();
        m->send(before);
        const bool placed = told == Success;
        m_request.copyStates.append(lastState);
        m->prompt.expect(Question).titled(OperationTitle).answer(Answer::Yes);
        m->prompt.expect(told).titled(OperationTitle).icon(Icon::Information);
        QCOMPARE(PlaceReservation(m->session, m_request),
            placed ? ReservationOutcome::Placed : ReservationOutcome::Refused);
        QCOMPARE(m->value(u"select yordercshu from dzk"_s), counter);
        QCOMPARE(m->rows(u"select barcode,oldtime,orderstatus from yyk where readercode='R1' and zskid=1 "
                         "and ordertime='2026-03-10'"_s),
            placed ? QStringList {u"null|null|False"_s} : QStringList());
    }

    void nothingIsAskedInVain()
    {
        ReservationRequest request = m_request;
        request.readercode = u"  "_s;
        QCOMPARE(PlaceReservation(m->session, request), ReservationOutcome::Refused);
        request = m_request;
        request.barcode.clear();
        QCOMPARE(PlaceReservation(m->session, request), ReservationOutcome::Untouched);
        for (QString ReservationRequest::*line :
            {&ReservationRequest::currentName, &ReservationRequest::currentBarcode}) {
            request = m_request;
            request.*line += u'2';
            m->prompt.expect(u"图书选择可能有问题，请检查后重新预约！"_s).icon(Icon::Information);
            QCOMPARE(PlaceReservation(m->session, request), ReservationOutcome::Untouched);
        }
        m->prompt.expect(Question).answer(Answer::No);
        QCOMPARE(PlaceReservation(m->session, m_request), ReservationOutcome::Refused);
        QCOMPARE(m->value(u"select count(*) from yyk"_s), u"0"_s);
    }

    /// The connection goes back to the pool with nothing on it: the next reservation is written once.
    void faults_data()
    {
        cases<QString>({{"reader", {u"select ordercount"_s}}, {"repetition", {u"from yyk where"_s}},
            {"begin", {u"begin"_s}}, {"row", {u"insert yyk"_s}}, {"counter", {u"update dzk"_s}},
            {"commit", {u"commit"_s}}});
    }
    void faults()
    {
        const QString before = m->everything();
        m->failAt(std::get<0>(given<QString>()));
        m->prompt.expect(Question).answer(Answer::Yes);
        m->prompt.expectStart(u"图书预约失败！错误原因如下：\n语句失败："_s)
            .titled(OperationTitle)
            .icon(Icon::Information);
        QCOMPARE(PlaceReservation(m->session, m_request), ReservationOutcome::Refused);
        m->failAt({});
        QCOMPARE(m->everything(), before);
        m->prompt.expect(Question).answer(Answer::Yes);
        m->prompt.expect(Success);
        QCOMPARE(PlaceReservation(m->session, m_request), ReservationOutcome::Placed);
        QCOMPARE(
            m->value(u"select count(*) from yyk"_s) + m->value(u"select yordercshu from dzk"_s), u"11"_s);
    }

    /// The reservation goes on with the clock of the desk.
    void serverDateFails()
    {
        m->failAt(u"getdate"_s);
        m->prompt.expect(Question).answer(Answer::Yes);
        m->prompt.expectStart(u"获取服务器日期时出现错误！原因如下：\n"_s);
        m->prompt.expect(Success);
        QCOMPARE(PlaceReservation(m->session, m_request), ReservationOutcome::Placed);
        QCOMPARE(m->value(u"select ordertime from yyk"_s), u"2026-03-10"_s);
    }

    void clearing()
    {
        m->reservation(u"R1"_s, {{u"oldtime"_s, u"2026-03-09"_s}, {u"barcode"_s, u"B1"_s}});
        m->prompt.expect(u"确定要清除过期的预约信息吗？"_s).titled(OperationTitle).answer(Answer::No);
        ClearExpiredReservations(m->session);
        m->failAt(u"delete"_s);
        m->prompt.expect(u"确定要清除过期的预约信息吗？"_s).answer(Answer::Yes);
        m->prompt.expect(u"清除失败，原因如下：\n语句失败：delete"_s).titled(OperationTitle);
        ClearExpiredReservations(m->session);
        QCOMPARE(m->value(u"select count(*) from yyk"_s), u"1"_s);
    }

    void notices()
    {
        const auto held = [&](const QString& barcode, const QString& lastDay, const QString& returned) {
            m->copy(barcode, {{u"zskid"_s, u"1"_s}});
            m->reservation(
                u"R1"_s, {{u"barcode"_s, barcode}, {u"oldtime"_s, lastDay}, {u"orderstatus"_s, u"1"_s}});
            for (const QString& day : {u"2025-01-01"_s, returned})
                m->insert(
                    u"jhslsk"_s, {{u"readercode"_s, u"R9"_s}, {u"barcode"_s, barcode}, {u"backdate"_s, day}});
        };
        held(u"TODAY"_s, u"2026-03-10"_s, u"2026-03-05"_s);
        held(u"SAME"_s, u"2026-03-11"_s, u"2026-03-11"_s);
        held(u"OVER"_s, u"2026-03-09"_s, u"2026-03-05"_s);
        held(u"NEVER"_s, u"null"_s, u"2026-03-05"_s);
        held(u"LATER"_s, u"2026-03-12"_s, u"2026-03-13"_s);
        m->reservation(u"R1"_s, {{u"oldtime"_s, u"2026-03-20"_s}}); // waits again
        m->reservation(u"R8"_s, {{u"oldtime"_s, u"2026-03-20"_s}, {u"barcode"_s, u"TODAY"_s}});

        ReportDouble report({u"barcode"_s, u"name"_s, u"backdate"_s});
        PrintReturnNotices(m->session, report, u"2026-03-10"_s);
        report.shown.sort();
        QCOMPARE(report.shown,
            (QStringList {u"2026-03-05"_s, u"2026-03-11"_s, u"SAME"_s, u"TODAY"_s, u"printYuYueOk"_s,
                u"读者R1"_s, u"读者R1"_s}));
        m->prompt.expect(u"没有符合条件的图书！"_s).titled(OperationTitle);
        PrintReturnNotices(m->session, report, u"2026-03-12"_s);
        m->failAt(u"max(backdate)"_s);
        m->prompt.expectStart(u"出现异常错误！错误原因如下：\n语句失败："_s).titled(OperationTitle);
        PrintReturnNotices(m->session, report, u"2026-03-10"_s);
        m->failAt({});
        m->prompt.expect(u"请将打印机设置为【A4--横向(宽行)打印】\n设置正确后点击确定按钮！"_s)
            .titled(OperationTitle)
            .icon(Icon::Information);
        QCOMPARE(prepareReturnNotices(m->session), u"2026-03-10"_s);
    }

private:
    ReservationRequest m_request;
};

QTEST_GUILESS_MAIN(TestReservationOps)
#include "test_reservation_ops.moc"
