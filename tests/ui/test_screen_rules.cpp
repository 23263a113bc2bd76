#include "support/scripted_prompt.h"

#include "platform/core/caption.h"
#include "platform/core/date_box.h"
#include "platform/core/digit_filter.h"
#include "platform/core/editor_mode.h"

#include <QTest>

using namespace quilla;

class TestScreenRules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void testsDateBoxes()
    {
        const QString pass = u"pass"_s;
        const QString none = u"请输入正确的日期格式(例如:2003-01-01)"_s;
        const QString shortYear = u"请输入完整的日期格式!(例如:2003-01-01)"_s;
        const std::pair<QString, QString> dates[] {{u""_s, {}}, {u"2003-1-5"_s, pass},
            {u"2003 年 1 月 5 日"_s, pass}, {u"2003-1-5 08:05:59"_s, pass}, {u"2003-02"_s, pass},
            {u"2004-2-29"_s, pass}, {u"2003-2-29"_s, none}, {u"2003-1/5"_s, none},
            {u"2003-1-5 25:00"_s, none}, {u"0000-01-01"_s, none}, {u"20030105"_s, none}, {u"2003"_s, none},
            {u" "_s, none}, {u"31-12-2003"_s, shortYear}, {u"32-12-2003"_s, none}, {u"03-1-5"_s, shortYear},
            {u"03年1月5日"_s, shortYear}, {u"1-5"_s, shortYear}, {u"8:05"_s, shortYear},
            {u"2003-1_-__"_s, none}};
        for (const auto& [text, outcome] : dates) {
            ScriptedPrompt prompt;
            const bool told = outcome == none || outcome == shortYear;
            if (told) prompt.expect(outcome).titled(u"操作提示");
            const DateVerdict verdict = CheckDateBox(text, prompt);
            QCOMPARE(text + verdict.result, text + (outcome == pass ? pass : QString()));
            QCOMPARE(verdict.refused, told);
            QCOMPARE(text + prompt.takeComplaints(), text);
        }
    }

    /// Dates that do not say which is the day, the month and the year.
    void readsPlatformDates()
    {
        const std::pair<QString, QDate> dates[] {{u"01-02-2003"_s, {2003, 1, 2}},
            {u"31-12-2003"_s, {2003, 12, 31}}, {u"29-1-5"_s, {2029, 1, 5}},
            {u"30-1-5"_s, {1930, 1, 5}}, // the last century from 30 on
            {u"5/25/03"_s, {2003, 5, 25}}, {u"2003年7月"_s, {2003, 7, 1}}, {u"2-29"_s, {2004, 2, 29}},
            {u"8:05"_s, {1899, 12, 30}}};
        for (const auto& [text, date] : dates)
            QCOMPARE(platformDate(text, QDate(2004, 3, 9)).value_or(QDate()), date);
    }

    void filtersDigits()
    {
        const std::tuple<int, bool, bool> keys[] {{'/', true, true}, {'.', false, false}, {':', true, true},
            {';', false, false}, {8, true, true}, {13, true, true}, {27, false, true},
            {0xff11, false, false}};
        const DigitFilter untitled {false, u"0-9"_s, u""_s}; // an empty title is not the application's
        const DigitFilter withEscape {true, u"1-9"_s, u"操作提示"_s};
        for (const auto& [code, first, second] : keys) {
            ScriptedPrompt prompt;
            if (!first) prompt.expect(u"0-9"_s).titled(u"");
            if (!second) prompt.expect(u"1-9"_s).titled(u"操作提示");
            QCOMPARE(passesFilter(untitled, QChar(code), prompt), first);
            QCOMPARE(passesFilter(withEscape, QChar(code), prompt), second);
            QCOMPARE(prompt.takeComplaints(), QString());
        }
    }

    void keepsModeLetters()
    {
        QVERIFY(EditorMode(u"a"_s).mayAdd() && EditorMode(u"a"_s).maySave());
        QVERIFY(!EditorMode(u"E"_s).mayAdd() && EditorMode(u"E"_s).maySave());
        QVERIFY(!EditorMode(u"add"_s).maySave());
    }

    void namesByCaption()
    {
        const std::pair<QString, QString> captions[] {{u"密     码(&U):"_s, u"密码"_s},
            {u"性别："_s, u"性别"_s}, {u"&Q 关闭"_s, u"关闭"_s}, {u"&A加入"_s, u"加入"_s},
            {u"查询( &F )"_s, u"查询"_s}, {u"退出(&Q]"_s, u"退出"_s}, {u"基本资料（&M）"_s, u"基本资料"_s},
            {u"取消 &Q"_s, u"取消 Q"_s}, {u"可借天数(天)"_s, u"可借天数(天)"_s}};
        for (const auto& [caption, name] : captions)
            QCOMPARE(captionName(caption), name);
    }
};

QTEST_GUILESS_MAIN(TestScreenRules)
#include "test_screen_rules.moc"
