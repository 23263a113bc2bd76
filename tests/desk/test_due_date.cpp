#include "desk/due_date_ops.h"
#include "support/library_test.h"

using namespace quilla;

namespace {

std::vector<Holiday> holidays(const QString& periods)
{
    std::vector<Holiday> all;
    for (const QString& period : periods.split(u','))
        all.push_back(*readHoliday(period));
    return all;
}

} // namespace

class TestDueDate : public LibraryTest {
    Q_OBJECT

private Q_SLOTS:
    /// Charged on 2026-03-01.
    void moves_data()
    {
        cases<int, QString, QString>({
            {"before the loan", {30, u"2026-02-01 2026-02-28"_s, u"2026-03-31"_s}},
            {"after the due date", {30, u"2026-04-01 2026-04-05"_s, u"2026-03-31"_s}},
            {"wholly inside, six days", {30, u"2026-03-10 2026-03-15"_s, u"2026-04-01"_s}},
            {"runs past the due date", {30, u"2026-03-25 2026-04-04"_s, u"2026-04-11"_s}},
            {"ends on the due date", {30, u"2026-03-25 2026-03-31"_s, u"2026-04-07"_s}},
            {"begins on the due date", {30, u"2026-03-31 2026-04-02"_s, u"2026-04-03"_s}},
            {"runs already", {30, u"2026-02-20 2026-03-05"_s, u"2026-04-04"_s}},
            {"begins on the day of the charge", {30, u"2026-03-01 2026-03-05"_s, u"2026-04-04"_s}},
            {"runs already, the second counted from its end",
                {30, u"2026-02-20 2026-03-05,2026-03-10 2026-03-15"_s, u"2026-04-05"_s}},
            {"covers the whole loan", {10, u"2026-02-20 2026-03-20"_s, u"2026-03-30"_s}},
            {"two, the second reached by the first",
                {30, u"2026-03-25 2026-04-04,2026-04-10 2026-04-20"_s, u"2026-05-05"_s}},
            {"two inside, the second counted from where the first began",
                {30, u"2026-03-10 2026-03-15,2026-03-20 2026-03-25"_s, u"2026-04-10"_s}},
            {"the second begins within the first",
                {30, u"2026-03-05 2026-03-07,2026-03-06 2026-03-09"_s, u"2026-04-05"_s}},
        });
    }

    void moves()
    {
        const auto [days, periods, due] = given<int, QString, QString>();
        QCOMPARE(isoDate(moveOverHolidays(QDate(2026, 3, 1), days, holidays(periods))), due);
    }

    void calendarOfTheDatabase()
    {
        m->setNow({QDate(2026, 3, 1), QTime(23, 59, 59)});
        m->holiday(u"二"_s, u"2026-04-10 2026-04-20"_s);
        m->holiday(u"一"_s, u"2026-03-25 2026-04-04"_s);
        m->holiday(u"坏行"_s, u"2026-03-xx"_s);
        m->insert(u"Global"_s, {{u"type"_s, u"other"_s}, {u"code"_s, u"2026-03-02 2026-09-01"_s}});
        QCOMPARE(ComputeDueDate(m->session, 30), Moment {QDate(2026, 5, 5)});
    }

    /// Without a connection it is the zero date; without the calendar the days are counted on.
    void failures()
    {
        m->failAt(u"From Global"_s);
        m->session.error.keep(Error(1, u"test"_s, u"old"_s));
        QCOMPARE(ComputeDueDate(m->session, 3), m->clock.moment.addDays(3));
        QVERIFY(!m->session.error.isSet());
        m->settings.values.clear();
        m->prompt.expect(u"无法取得正确连接数据库的信息!现在输入吗?"_s).answer(Answer::No);
        QCOMPARE(isoDate(ComputeDueDate(m->session, 30)), u"1899-12-30"_s);
    }
};

QTEST_GUILESS_MAIN(TestDueDate)
#include "test_due_date.moc"
