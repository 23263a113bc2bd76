#include "support/cases.h"
#include "ui/recording_prompt.h"

#include "platform/ui/caption.h"
#include "platform/ui/date_box.h"
#include "platform/ui/digit_filter.h"
#include "platform/ui/editor_mode.h"

#include <QTest>

using namespace quilla;

class TestScreenRules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void testsDateBoxes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("outcome"); // pass, silent, no date, short year
        const QString pass = u"pass"_s;
        const QString silent = u"silent"_s;
        const QString none = u"no date"_s;
        const QString shortYear = u"short year"_s;
        const std::pair<QString, QString> cases[] {
            {u""_s, silent},
            {u"2003-01-01"_s, pass},
            {u"2003-1-5"_s, pass},
            {u"2003/1/5"_s, pass},
            {u"2003.1.5"_s, pass},
            {u"2003年1月5日"_s, pass},
            {u"2003 年 1 月 5 日"_s, pass},
            {u"2003-1-5 8:05"_s, pass},
            {u"2003-1-5 08:05:59"_s, pass},
            {u"2003-02"_s, pass},
            {u"2004-2-29"_s, pass},
            {u"2003-2-29"_s, none},
            {u"2003-13-45"_s, none},
            {u"2003-1/5"_s, none},
            {u"2003-1-5 25:00"_s, none},
            {u"0000-01-01"_s, none},
            {u"20030105"_s, none},
            {u"2003"_s, none},
            {u"昨天"_s, none},
            {u" "_s, none},
            {u"01-02-2003"_s, shortYear},
            {u"31-12-2003"_s, shortYear},
            {u"32-12-2003"_s, none},
            {u"03-1-5"_s, shortYear},
            {u"5/1/03"_s, shortYear},
            {u"03年1月5日"_s, shortYear},
            {u"1-5"_s, shortYear},
            {u"8:05"_s, shortYear},
            {u"____-__-__"_s, none},
            {u"2003-1_-__"_s, none},
        };
        for (const auto& [text, outcome] : cases)
            QTest::newRow(qPrintable(u"[%1]"_s.arg(text))) << text << outcome;
    }

    void testsDateBoxes()
    {
        QFETCH(QString, text);
        QFETCH(QString, outcome);
        RecordingPrompt prompt;
        const DateVerdict verdict = CheckDateBox(text, prompt);
        const bool told = outcome == u"no date" || outcome == u"short year";
        QCOMPARE(verdict.result, outcome == u"pass" ? u"pass"_s : QString());
        QCOMPARE(verdict.refused, told);
        QCOMPARE(prompt.shown.size(), std::size_t(told));
        if (!told) return;
        QCOMPARE(prompt.shown[0].text,
            outcome == u"no date" ? u"请输入正确的日期格式(例如:2003-01-01)"_s
                                  : u"请输入完整的日期格式!(例如:2003-01-01)"_s);
        QCOMPARE(prompt.shown[0].title, u"操作提示");
        QCOMPARE(prompt.shown[0].icon, Icon::Information);
    }

    void readsPlatformDates_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDate>("date");
        QTest::newRow("month first") << u"01-02-2003"_s << QDate(2003, 1, 2);
        QTest::newRow("day first where no month fits") << u"31-12-2003"_s << QDate(2003, 12, 31);
        QTest::newRow("short year first") << u"29-1-5"_s << QDate(2029, 1, 5);
        QTest::newRow("last century from 30 on") << u"30-1-5"_s << QDate(1930, 1, 5);
        QTest::newRow("short year last where none fits in front") << u"5/25/03"_s << QDate(2003, 5, 25);
        QTest::newRow("first day of a month") << u"2003年7月"_s << QDate(2003, 7, 1);
        QTest::newRow("of this year") << u"2-29"_s << QDate(2004, 2, 29);
        QTest::newRow("a time alone is the zero date") << u"8:05"_s << QDate(1899, 12, 30);
    }

    void readsPlatformDates()
    {
        QFETCH(QString, text);
        QFETCH(QDate, date);
        QCOMPARE(platformDate(text, QDate(2004, 3, 9)).value_or(QDate()), date);
    }

    using FiltersDigits = std::tuple<int, bool, bool>;
    void filtersDigits_data()
    {
        cases<FiltersDigits>({
            {"slash", {int('/'), true, true}},
            {"before it", {int('.'), false, false}},
            {"0", {int('0'), true, true}},
            {"9", {int('9'), true, true}},
            {"colon", {int(':'), true, true}},
            {"behind it", {int(';'), false, false}},
            {"backspace", {8, true, true}},
            {"enter", {13, true, true}},
            {"escape", {27, false, true}},
            {"wide digit", {0xff11, false, false}},
            {"blank", {32, false, false}},
        });
    }

    void filtersDigits()
    {
        const auto [code, titles, readers] = given<FiltersDigits>();
        RecordingPrompt prompt;
        QCOMPARE(passesFilter(titleRankingFilter(), QChar(code), prompt), titles);
        QCOMPARE(passesFilter(readerRankingFilter(), QChar(code), prompt), readers);
        if (titles || readers) return;
        QCOMPARE(prompt.shown[0].text, u"请输入0-9之间的数字");
        QCOMPARE(prompt.shown[0].shownTitle(), u""); // told as empty, so not the application's
        QCOMPARE(prompt.shown[1].text, u"请输入1-9之间的数字");
        QCOMPARE(prompt.shown[1].shownTitle(), u"操作提示");
    }

    using KeepsModeLetters = std::tuple<QString, QString, QString>;
    void keepsModeLetters_data()
    {
        cases<KeepsModeLetters>({
            {"add", {u"a"_s, u"A"_s, u"add save"_s}},
            {"edit", {u"E"_s, u"E"_s, u"save"_s}},
            {"show", {u"v"_s, u"V"_s, u""_s}},
            {"nothing", {u""_s, u""_s, u""_s}},
            {"more than a letter", {u"add"_s, u"ADD"_s, u""_s}},
        });
    }

    void keepsModeLetters()
    {
        const auto [mode, letter, enabled] = given<KeepsModeLetters>();
        const EditorMode kept(mode);
        QCOMPARE(kept.letter(), letter);
        QCOMPARE(kept.mayAdd(), enabled.contains(u"add"));
        QCOMPARE(kept.maySave(), enabled.contains(u"save"));
    }

    void namesByCaption_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("name");
        const std::pair<QString, QString> cases[] {
            {u"用户名(&U):"_s, u"用户名"_s},
            {u"密     码:"_s, u"密码"_s},
            {u"性    别："_s, u"性别"_s},
            {u"&Q 关闭"_s, u"关闭"_s},
            {u"&A加入"_s, u"加入"_s},
            {u"查询( &F )"_s, u"查询"_s},
            {u"退出(&Q]"_s, u"退出"_s},
            {u"基本资料（&M）"_s, u"基本资料"_s},
            {u"取消 &Q"_s, u"取消 Q"_s},
            {u"可借天数(天)"_s, u"可借天数(天)"_s},
            {u"Email："_s, u"Email"_s},
            {u"输出到 excel"_s, u"输出到 excel"_s},
        };
        for (const auto& [caption, name] : cases)
            QTest::newRow(qPrintable(caption)) << caption << name;
    }

    void namesByCaption()
    {
        QFETCH(QString, caption);
        QTEST(captionName(caption), "name");
    }
};

QTEST_GUILESS_MAIN(TestScreenRules)
#include "tst_screen_rules.moc"
