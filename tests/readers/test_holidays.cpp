#include "readers/holiday_ops.h"
#include "support/library_test.h"

using namespace quilla;

/// Checks and statements of the closing periods, without their screens.
class TestHolidays : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m->insert(u"Global"_s, {{u"type"_s, u"other"_s}, {u"code"_s, u"1"_s}, {u"memo"_s, u"a'b"_s}});
    }
    void finish() override
    {
        QCOMPARE(m->value(u"select memo,code from Global where type='other'"_s), u"a'b|1"_s);
    }

private Q_SLOTS:
    /// The table keeps more than holidays.

    void checks_data()
    {
        const QString noName = u"无效假期名称，取消该操作。"_s;
        const QString noDate = u"请输入正确的日期格式(例如:2003-01-01)"_s;
        const QString shortYear = u"请输入完整的日期格式!(例如:2003-01-01)"_s;
        const QString reversed = u"假期开始时间不能大于结束时间。"_s;
        const QString day = u"2003-10-01"_s;
        // name, first and last day, the message, which box is at fault
        cases<QString, QString, QString, QString, int>({
            {"nothing", {{}, {}, {}, noName, 0}},
            {"a name of blanks", {u"  "_s, day, day, noName, 0}},
            {"no first day", {u"x"_s, {}, day, noDate, 1}},
            {"31 February", {u"x"_s, day, u"2003-02-31"_s, noDate, 2}},
            {"short year", {u"x"_s, u"1-10-2003"_s, day, shortYear, 1}},
            {"September behind October as text", {u"x"_s, u"2003-9-1"_s, u"2003-10-1"_s, reversed, 1}},
            {"a single day", {u"O'x"_s, day, day, {}, -1}},
        });
    }
    void checks()
    {
        const auto [name, first, last, told, box] = given<QString, QString, QString, QString, int>();
        const bool aboutDay = told.startsWith(u"请输入");
        if (!told.isEmpty())
            m->prompt.expect(told).titled(OperationTitle).icon(aboutDay ? Icon::Information : Icon::Warning);
        QCOMPARE(toldBox(CheckHolidayForm({name, first, last})), box);
    }

    void linesGiveBackWhatTheyShow()
    {
        const QString shown = periodText({u"x"_s, u"2003-10- 11"_s, u"2003年10月12日"_s});
        QCOMPARE(shown, u"2003-10- 11  至  2003年10月12日"_s);
        const ClosingPeriod again = holidayOfLine(u"x"_s, shown);
        QCOMPARE(again.name + again.first + again.last, u"x2003-10- 112003年10月12日"_s);
    }

    void savedAsDaysAndChangedByTheOldName()
    {
        addHoliday(m->session, {u"国庆'节"_s, u"2003-10-1"_s, u"2003/10/7"_s});
        addHoliday(m->session, {u"a'b"_s, u"2003年1月1日"_s, u"2003-01-01"_s});
        QCOMPARE(stored(), u"a'b|2003-01-01 2003-01-01 国庆'节|2003-10-01 2003-10-07"_s);
        changeHoliday(m->session, {u"c'd"_s, u"2003-2-1"_s, u"2003-2-3"_s}, u"a'b"_s);
        QCOMPARE(stored(), u"c'd|2003-02-01 2003-02-03 国庆'节|2003-10-01 2003-10-07"_s);
        const auto read = readHolidays(m->session);
        QCOMPARE(read.size(), std::size_t(2));
        QCOMPARE(periodText(read[1]), u"2003-10-01  至  2003-10-07"_s);
    }

    void takenNames()
    {
        m->holiday(u"春节'x"_s, u"2003-01-01 2003-01-02"_s);
        QVERIFY(!takenHolidayName(m->session, u"a'b"_s, {}));
        QVERIFY(!takenHolidayName(m->session, u"春节'x"_s, u"春节'x"_s));
        m->prompt.expect(u"假期名称‘春节'x’已经存在。"_s).titled(OperationTitle).icon(Icon::Warning);
        QCOMPARE(toldBox(takenHolidayName(m->session, u"春节'x"_s, u"元旦"_s)), int(HolidayBox::Name));
        m->failAt(u"Select type"_s);
        QVERIFY(!takenHolidayName(m->session, {}, {}));
        QVERIFY_THROWS_EXCEPTION(Error, takenHolidayName(m->session, u"春节"_s, {}));
    }

    void removesUntilOneFails()
    {
        for (const QString& name : {u"a"_s, u"a'b"_s, u"c"_s})
            m->holiday(name, u"2003-01-01 2003-01-02"_s);
        int gone = 0;
        const auto remove = [&](Answer answer) {
            m->prompt.expect(u"是否确定删除所选的假期管理？"_s)
                .titled(OperationTitle)
                .icon(Icon::Question)
                .answer(answer);
            removeRecords(m->session, holidayRemoval(), {u"a"_s, u"a'b"_s, u"c"_s}, [&] { ++gone; });
        };
        remove(Answer::No);
        QCOMPARE(gone, 0);
        m->failAt(u"memo='c'"_s);
        QVERIFY_THROWS_EXCEPTION(Error, remove(Answer::Yes));
        m->failAt({});
        QCOMPARE(gone, 2);
        QCOMPARE(stored(), u"c|2003-01-01 2003-01-02"_s);
    }

    void failuresAreLeftUntold()
    {
        m->holiday(u"a"_s, u"2003-01-01 2003-01-02"_s);
        m->failAt(u"global"_s);
        addHoliday(m->session, {u"x"_s, u"2003-10-01"_s, u"2003-10-07"_s});
        changeHoliday(m->session, {u"x"_s, u"2003-10-01"_s, u"2003-10-07"_s}, u"a"_s);
        QVERIFY(!m->session.error.isSet());
        m->failAt({});
        QCOMPARE(stored(), u"a|2003-01-01 2003-01-02"_s);
    }

private:
    QString stored()
    {
        return m->rows(u"select memo,code from Global where type='holiday' order by code"_s).join(u' ');
    }
};

QTEST_GUILESS_MAIN(TestHolidays)
#include "test_holidays.moc"
