#include "desk/charge_ops.h"
#include "desk/discharge_ops.h"
#include "reservations/reservation_ops.h"
#include "support/desk_double.h"
#include "support/library_test.h"
#include "support/quiet_fines.h"

using namespace quilla;

namespace {

enum Event {
    Place,
    PlaceAgain,
    Return,
    ReturnDeclined,
    ReturnLate,
    Collect,
    LendToOther,
    LendUnasked,
    Clear
};

/// On which day of March 2026 what happens, and what stands then: state, copy and last day of the
/// reservation, and its reader's counter.
struct Turn {
    int day;
    Event event;
    QString state;
};
using Life = std::vector<Turn>;

const QString Waiting = u"False|null|null 1"_s;
const QString Held = u"True|B1|2026-03-15 1"_s;
const QString WaitsAgain = u"False||2026-03-15 1"_s;
const QString NoLastDay = u"True|B1|null 1"_s;
const QString Collected = u" 0"_s;
const QString Cleared = u" 1"_s;

} // namespace

/// R2, who may have one reservation, reserves what R1 has until the 20th.
class TestReservationLife : public LibraryTest {
    Q_OBJECT

private Q_SLOTS:
    void life_data()
    {
        cases<Life>({
            {"collected", {{{10, Place, Waiting}, {10, Return, Held}, {14, Collect, Collected}}}},
            {"declined at the return",
                {{{10, Place, Waiting}, {10, ReturnDeclined, Waiting}, {11, Collect, Waiting}}}},
            {"collected too late, which leaves it",
                {{{10, Place, Waiting}, {10, Return, Held}, {15, Collect, Held}, {16, Clear, Cleared}}}},
            {"lent to another and set aside again",
                {{{10, Place, Waiting}, {10, Return, Held}, {11, LendToOther, WaitsAgain},
                    {12, Return, u"True|B1|2026-03-17 1"_s}, {13, Collect, Collected}}}},
            {"lent to another and cleared without a copy",
                {{{10, Place, Waiting}, {10, Return, Held}, {11, LendToOther, WaitsAgain},
                    {15, Clear, WaitsAgain}, {16, Clear, Cleared}, {16, PlaceAgain, Cleared}}}},
            {"lent to another once the hold is over",
                {{{10, Place, Waiting}, {10, Return, Held}, {15, LendUnasked, Held}, {16, Clear, Cleared}}}},
            {"settled late, which sets no last day and lives on",
                {{{10, Place, Waiting}, {24, ReturnLate, NoLastDay}, {31, Clear, NoLastDay},
                    {31, Collect, NoLastDay}}}},
        });
    }
    void life()
    {
        m->reader(u"R1"_s, FineRules);
        m->reader(u"R2"_s, {{u"ordercount"_s, u"1"_s}, {u"orderday"_s, u"5"_s}});
        m->reader(u"R3"_s);
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-20"_s);
        const auto [life] = given<Life>();
        for (const Turn& turn : life) {
            m->setNow({QDate(2026, 3, turn.day), QTime(9, 30)});
            happens(turn.event);
            QCOMPARE(m->prompt.takeComplaints(), QString());
            QCOMPARE(m->value(u"select orderstatus,barcode,oldtime from yyk"_s) + u' '
                    + m->value(u"select yordercshu from dzk where readercode='R2'"_s),
                turn.state);
            QCOMPARE(m->broken(), QString());
        }
    }

private:
    void happens(Event event)
    {
        switch (event) {
        case Place:
            return place(u"图书预约成功！"_s, ReservationOutcome::Placed);
        case PlaceAgain:
            return place(
                u"该读者预约图书的册数已经到达规定的册数！不能再预约了！\n如果确定要预约，您可以重新设置该读者的流通参数！"_s,
                ReservationOutcome::Refused);
        case Return:
        case ReturnDeclined:
        case ReturnLate:
            return giveBack(event == ReturnDeclined ? Answer::No : Answer::Yes);
        case Collect:
            return lend(u"R2"_s);
        case LendToOther:
            m->prompt.expectStart(u"这本书已经有人预约了！"_s).answer(Answer::Yes, Answer::No);
            return lend(u"R3"_s);
        case LendUnasked:
            return lend(u"R3"_s);
        case Clear:
            m->prompt.expect(u"确定要清除过期的预约信息吗？"_s).answer(Answer::Yes);
            m->prompt.expect(u"成功清除过期的预约信息！"_s);
            return ClearExpiredReservations(m->session);
        }
    }

    void place(const QString& told, ReservationOutcome outcome)
    {
        ReservationRequest request {u"R2"_s, u"书名1"_s, u"B1"_s, u"书名1"_s, u"B1"_s, u"1"_s, {u"借出"_s}};
        m->prompt.expect(u"确实要预约【书名1】吗？(y/n)"_s).answer(Answer::Yes);
        m->prompt.expect(told);
        QCOMPARE(PlaceReservation(m->session, request), outcome);
    }

    void giveBack(Answer answer)
    {
        QuietFines fines(m->session);
        m->prompt.expect(u"读者证号为【R2】的读者最先预约了这本书。是否将这本书预约给这位读者？"_s)
            .answer(answer);
        QCOMPARE(DischargeBook(m->session, m_desk, fines, u"B1"_s), Discharged);
    }

    void lend(const QString& reader) { QCOMPARE(ChargeBook(m->session, m_desk, u"B1"_s, reader), Charged); }

    DeskDouble m_desk;
};

QTEST_GUILESS_MAIN(TestReservationLife)
#include "test_reservation_life.moc"
