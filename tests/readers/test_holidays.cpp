#include "readers/holiday_ops.h"
#include "support/test_library.h"

#include <QTest>

using namespace quilla;

class TestHolidays : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<TestLibrary>(); }
    void cleanup() { QCOMPARE(m->prompt.takeComplaints(), QString()); }

    void checks_data();
    void checks();
    void linesGiveBackWhatTheyShow_data();
    void linesGiveBackWhatTheyShow();
    void savingReformatsTheDays();
    void changingGoesByTheOldName();
    void takenNames();
    void removing();
    void failures();

private:
    QString stored()
    {
        return m->rows(u"select memo,code from Global where type='holiday' order by code"_s).join(u' ');
    }

    std::unique_ptr<TestLibrary> m;
};

void TestHolidays::checks_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("last");
    QTest::addColumn<QString>("message"); // empty: accepted
    QTest::addColumn<int>("box");
    const QString noName = u"无效假期名称，取消该操作。"_s;
    const QString noDate = u"请输入正确的日期格式(例如:2003-01-01)"_s;
    const QString shortYear = u"请输入完整的日期格式!(例如:2003-01-01)"_s;
    const QString reversed = u"假期开始时间不能大于结束时间。"_s;
    const QString day = u"2003-10-01"_s;
    QTest::newRow("nothing") << QString() << QString() << QString() << noName << 0;
    QTest::newRow("no first day") << u"x"_s << QString() << day << noDate << 1;
    QTest::newRow("no last day") << u"x"_s << day << QString() << noDate << 2;
    QTest::newRow("31 February") << u"x"_s << u"2003-02-31"_s << day << noDate << 1;
    QTest::newRow("letters") << u"x"_s << day << u"下周"_s << noDate << 2;
    QTest::newRow("eight digits") << u"x"_s << u"20031001"_s << day << noDate << 1;
    QTest::newRow("quotes") << u"x"_s << u"2003-10-01'"_s << day << noDate << 1;
    QTest::newRow("overlong") << u"x"_s << day << day.repeated(50) << noDate << 2;
    QTest::newRow("short year") << u"x"_s << u"1-10-2003"_s << day << shortYear << 1;
    QTest::newRow("year of two digits") << u"x"_s << day << u"03-10-02"_s << shortYear << 2;
    QTest::newRow("reversed") << u"x"_s << day << u"2003-09-30"_s << reversed << 1;
    QTest::newRow("September behind October as text")
        << u"x"_s << u"2003-9-1"_s << u"2003-10-1"_s << reversed << 1;
    QTest::newRow("a single day") << u"x"_s << day << day << QString() << -1;
    QTest::newRow("as typed") << u"O'x"_s << u"2003-10-1"_s << u"2003-10-7"_s << QString() << -1;
}

void TestHolidays::checks()
{
    QFETCH(QString, name);
    QFETCH(QString, first);
    QFETCH(QString, last);
    QFETCH(QString, message);
    QFETCH(int, box);
    const bool aboutDay = message.startsWith(u"请输入");
    if (!message.isEmpty())
        m->prompt.expect(message).titled(OperationTitle).icon(aboutDay ? Icon::Information : Icon::Warning);
    QCOMPARE(CheckHolidayForm(m->session, {name, first, last}).value_or(-1), box);
}

void TestHolidays::linesGiveBackWhatTheyShow_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("last");
    QTest::newRow("stored") << u"2003-10-01"_s << u"2003-10-07"_s;
    QTest::newRow("short, as typed") << u"2003-1-1"_s << u"2003-1-2"_s;
    QTest::newRow("long, as typed") << u"2003-10- 11"_s << u"2003年10月12日"_s;
}

void TestHolidays::linesGiveBackWhatTheyShow()
{
    QFETCH(QString, first);
    QFETCH(QString, last);
    const QString shown = periodText({u"x"_s, first, last});
    QCOMPARE(shown, first + u"  至  "_s + last);
    const ClosingPeriod again = holidayOfLine(u"x"_s, shown);
    QCOMPARE(again.name, u"x"_s);
    QCOMPARE(again.first, first);
    QCOMPARE(again.last, last);
}

void TestHolidays::savingReformatsTheDays()
{
    addHoliday(m->session, {u"国庆'节"_s, u"2003-10-1"_s, u"2003/10/7"_s});
    addHoliday(m->session, {u"元旦"_s, u"2003年1月1日"_s, u"2003-01-01"_s});
    m->insert(
        u"Global"_s, {{u"type"_s, u"other"_s}, {u"code"_s, u"2003-01-01 2003-01-02"_s}, {u"memo"_s, u"x"_s}});
    QCOMPARE(stored(), u"元旦|2003-01-01 2003-01-01 国庆'节|2003-10-01 2003-10-07"_s);
    const auto read = readHolidays(m->session);
    QCOMPARE(read.size(), std::size_t(2));
    QCOMPARE(periodText(read[1]), u"2003-10-01  至  2003-10-07"_s);
}

void TestHolidays::changingGoesByTheOldName()
{
    m->holiday(u"a'b"_s, u"2003-01-01 2003-01-02"_s);
    m->holiday(u"other"_s, u"2004-01-01 2004-01-02"_s);
    m->insert(u"Global"_s, {{u"type"_s, u"other"_s}, {u"code"_s, u"1"_s}, {u"memo"_s, u"a'b"_s}});
    changeHoliday(m->session, {u"c'd"_s, u"2003-2-1"_s, u"2003-2-3"_s}, u"a'b"_s);
    QCOMPARE(stored(), u"c'd|2003-02-01 2003-02-03 other|2004-01-01 2004-01-02"_s);
    QCOMPARE(m->value(u"select memo,code from Global where type='other'"_s), u"a'b|1"_s);
}

void TestHolidays::takenNames()
{
    m->holiday(u"春节'x"_s, u"2003-01-01 2003-01-02"_s);
    QVERIFY(!holidayNameIsTaken(m->session, {}, {}));
    QVERIFY(!holidayNameIsTaken(m->session, u"元旦"_s, {}));
    QVERIFY(!holidayNameIsTaken(m->session, u"春节'x"_s, u"春节'x"_s));
    m->prompt.expect(u"假期名称‘春节'x’已经存在。"_s).titled(OperationTitle).icon(Icon::Warning);
    QVERIFY(holidayNameIsTaken(m->session, u"春节'x"_s, u"元旦"_s));
    m->failAt(u"Select type"_s);
    QVERIFY_THROWS_EXCEPTION(Error, holidayNameIsTaken(m->session, u"春节"_s, {}));
}

void TestHolidays::removing()
{
    for (const QString& name : {u"a"_s, u"b'"_s, u"c"_s})
        m->holiday(name, u"2003-01-01 2003-01-02"_s);
    const QString question = u"是否确定删除所选的假期管理？"_s;
    int gone = 0;
    const auto remove = [&](Answer answer, const QStringList& names) {
        m->prompt.expect(question).titled(OperationTitle).icon(Icon::Question).answer(answer);
        removeRecords(m->session, holidayRemoval(), names, [&] { ++gone; });
    };
    remove(Answer::No, {u"a"_s});
    QCOMPARE(gone, 0);
    m->failAt(u"memo='c'"_s);
    QVERIFY_THROWS_EXCEPTION(Error, remove(Answer::Yes, {u"a"_s, u"b'"_s, u"c"_s}));
    m->failAt({});
    QCOMPARE(gone, 2);
    QCOMPARE(stored(), u"c|2003-01-01 2003-01-02"_s);
}

void TestHolidays::failures()
{
    m->holiday(u"a"_s, u"2003-01-01 2003-01-02"_s);
    const QString before = stored();
    m->failAt(u"global"_s);
    addHoliday(m->session, {u"x"_s, u"2003-10-01"_s, u"2003-10-07"_s});
    changeHoliday(m->session, {u"x"_s, u"2003-10-01"_s, u"2003-10-07"_s}, u"a"_s);
    QCOMPARE(m->sent.filter(u"global"_s).size(), 2);
    QVERIFY(!m->session.error.isSet());
    m->failAt({});
    QCOMPARE(stored(), before);
}

QTEST_GUILESS_MAIN(TestHolidays)
#include "test_holidays.moc"
