#include "readers/holiday_editor.h"
#include "readers/holiday_form.h"
#include "readers/parameter_editor.h"
#include "readers/parameter_form.h"
#include "readers/reader_list_form.h"
#include "readers/reader_name_editor.h"
#include "support/screen_test.h"

#include <QScrollBar>

using namespace quilla;

/// The lists of the rules and their editors, by keys.
class TestRulesForms : public ScreenTest {
    Q_OBJECT

private Q_SLOTS:
    void holidays()
    {
        m->holiday(u"元旦"_s, u"2026-01-01 2026-01-03"_s);
        m->holiday(u"国庆"_s, u"2026-10-01 2026-10-07"_s);
        auto& list = opened<holidayfrm>(m->session);
        press(list.Grid1, Qt::Key_Down);
        inDialog<holidayaddFrm>([this](holidayaddFrm& editor) {
            QCOMPARE(editor.windowTitle(), u"假期管理-修改"_s);
            enter(editor.Text1[0], u"国庆"_s); // its own name is no other's
            editor.Text1[1].setText(u"2026-02-31"_s);
            m->prompt.expect(u"请输入正确的日期格式(例如:2003-01-01)"_s);
            editor.Command1[0].click();
            QCOMPARE(focusName() + editor.Text1[1].text(), u"Text1(1)2026-02-31"_s);
            editor.Text1[1].setText(u"2026-10-02"_s);
            editor.Command1[0].click();
            QCOMPARE(editor.windowTitle() + focusName(), u"假期管理-添加Text1(0)"_s);
            enter(editor.Text1[0], u" 春'节 "_s);
            enter(editor.Text1[1], u"2026-2-16"_s);
            enter(editor.Text1[2], u"2026-2-20"_s);
            QCOMPARE(focusName(), u"Command1(0)"_s);
            editor.Command1[1].click();
            QVERIFY(!editor.isVisible());
        });
        press(list.Grid1, Qt::Key_Return);
        // at the end and as typed, until the list is opened anew
        const QString shown = u"元旦|2026-01-01  至  2026-01-03 国庆|2026-10-02  至  2026-10-07"_s;
        QCOMPARE(linesOf(list.Grid1), shown + u" 春'节|2026-2-16  至  2026-2-20"_s);
        QCOMPARE(list.lCounts.text(), u"记录数：3"_s);
        list.loadData();
        QCOMPARE(columnOf(list.Grid1, 0), u"元旦 春'节 国庆"_s);
        QCOMPARE(list.Grid1.TextMatrix(2, 1), u"2026-02-16  至  2026-02-20"_s);
    }

    /// A press takes the focus from the name, whose test empties the box; the save then finds no name.
    void holidayNameTaken()
    {
        m->holiday(u"元旦"_s, u"2026-01-01 2026-01-03"_s);
        auto& editor = opened<holidayaddFrm>(m->session);
        m->prompt.expect(u"假期名称‘元旦’已经存在。"_s);
        enter(editor.Text1[0], u"元旦 "_s);
        QCOMPARE(focusName() + editor.Text1[0].text(), u"Text1(0)"_s);
        editor.Text1[1].setText(u"2026-05-01"_s);
        editor.Text1[2].setText(u"2026-05-01"_s);
        const std::function<void()> presses[] {
            [&] { QTest::mouseClick(&editor.Command1[1], Qt::LeftButton); },
            [&] { QTest::keyClick(&editor, Qt::Key_S, Qt::AltModifier); },
        };
        for (const auto& press : presses) {
            m->prompt.expect(u"假期名称‘元旦’已经存在。"_s);
            m->prompt.expect(u"无效假期名称，取消该操作。"_s);
            editor.Text1[0].insert(u"元旦"_s);
            press();
            QTRY_VERIFY(!editor.Command1[1].isDown());
            QTRY_COMPARE(focusName() + editor.Text1[0].text(), u"Text1(0)"_s);
            QCOMPARE(m->prompt.takeComplaints(), QString());
        }
        QVERIFY(editor.isVisible());
    }

    void longListsNeedNoSecondScrollBar()
    {
        for (int number = 0; number < 60; ++number) {
            m->holiday(QString::number(number), u"2026-01-01 2026-01-03"_s);
            m->insert(u"jycs"_s, {{u"readerclass"_s, QString::number(number)}});
            m->insert(u"dzlx"_s, {{u"readerclass"_s, QString::number(number)}});
        }
        const auto settles = [](FlexGrid& grid) {
            return QTest::qWaitFor([&] {
                return grid.verticalScrollBar()->isVisible() && !grid.horizontalScrollBar()->isVisible();
            });
        };
        QVERIFY(settles(opened<holidayfrm>(m->session).Grid1));
        QVERIFY(settles(opened<JycsFrm>(m_work->place).Grid1));
        QVERIFY(settles(opened<MadddzlxFrm>(m->session, ReaderTypes).Grid1));
    }

    void selectedLinesAreRemoved()
    {
        for (const QString& type : {u"甲"_s, u"乙'"_s, u"丙"_s})
            m->insert(u"jycs"_s, {{u"readerclass"_s, type}});
        auto& list = opened<JycsFrm>(m_work->place);
        const QString question = u"是否确定删除所选的读者类型的参数？"_s;
        m->prompt.expect(question).answer(Answer::Yes);
        list.Grid1.setRow(3);
        press(list.Grid1, Qt::Key_Up, Qt::ShiftModifier);
        press(list.Grid1, Qt::Key_Delete);
        QCOMPARE(columnOf(list.Grid1, 0) + list.lCounts.text(), u"甲记录数：1"_s);
        QCOMPARE(m->value(u"select readerclass from jycs"_s), u"甲"_s);
        m->prompt.expect(question).answer(Answer::Yes);
        list.Command1[1].click();
        QCOMPARE(list.Grid1.current(0) + list.lCounts.text(), u"记录数：0"_s);
    }

    void parametersByKeys()
    {
        m->insert(u"dzlx"_s, {{u"readerclass"_s, u"外'来人"_s}});
        auto& list = opened<JycsFrm>(m_work->place);
        QCOMPARE(list.lCounts.text(), u"记录数：0"_s);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Delete}) // of the empty list
            press(list.Grid1, key);
        m->prompt.expect(u"没有可以打印的信息！"_s);
        list.Command1[4].click();
        inDialog<JycsAddFrm>([](JycsAddFrm& editor) {
            QCOMPARE(focusName() + editor.Combo1.itemText(0), u"Combo1外'来人"_s);
            enter(editor.Combo1, u"外'来"_s);
            for (TextBox& box : editor.Text1) {
                QCOMPARE(focusName(), box.objectName());
                enter(box, u"3"_s);
            }
            press(editor.Check1[0], Qt::Key_Space);
            press(editor.Check1[0], Qt::Key_Return);
            QCOMPARE(focusName(), u"Check1(1)"_s);
            QVERIFY(editor.Combo1.findText(u"外'来"_s) > 0);
            editor.Command1[0].click();
            QCOMPARE(focusName() + editor.Text1[10].text(), u"Combo1"_s);
            QVERIFY(!editor.Check1[0].isChecked());
        });
        press(list.Grid1, Qt::Key_Insert);
        QCOMPARE(linesOf(list.Grid1), u"外'来|3|3|3|3|3|3|3|是|否|3|3|3|3"_s);
    }

    void parametersChangedAndPrinted()
    {
        for (const QString& type : {u"甲"_s, u"乙"_s})
            m->insert(u"jycs"_s, {{u"readerclass"_s, type}, {u"fine"_s, u"0.1"_s}, {u"wuzheng"_s, u"1"_s}});
        auto& list = opened<JycsFrm>(m_work->place);
        list.Grid1.setRow(2);
        inDialog<JycsAddFrm>([](JycsAddFrm& editor) {
            QCOMPARE(editor.windowTitle(), u"流通参数设置----修改【乙】的流通参数"_s);
            QVERIFY(!editor.Combo1.isEnabled() && !editor.Command1[0].isEnabled());
            QCOMPARE(editor.Text1[2].text(), u"0.1"_s);
            QVERIFY(!editor.Check1[0].isChecked() && editor.Check1[1].isChecked());
            enter(editor.Text1[0], u"45"_s);
            editor.Command1[1].click();
            QVERIFY(!editor.isVisible());
        });
        list.Command1[3].click();
        QCOMPARE(list.Grid1.current(0) + list.Grid1.current(1) + list.Grid1.current(9), u"乙45是"_s);
        m->prompt.expectStart(u"请将打印机设置为"_s);
        list.Command1[4].click();
        QCOMPARE(m_work->reports.shown, QStringList {u"ltcsPrint"_s});
    }

    void faultyParameterKeepsTheFocus()
    {
        auto& editor = opened<JycsAddFrm>(m->session);
        editor.Text1[3].setFocus();
        m->prompt.expect(u"无效数字格式，取消该操作。"_s);
        enter(editor.Text1[3], u"zwei"_s);
        QCOMPARE(focusName() + editor.Text1[3].text(), u"Text1(3)"_s);
        editor.Combo1.setEditText(u"新"_s);
        m->prompt.expect(u"无效数字类型，取消该操作。"_s);
        editor.Command1[1].click();
        QCOMPARE(focusName() + editor.Combo1.currentText(), u"Text1(0)新"_s);
    }

    void typesByKeys()
    {
        m->insert(u"dzlx"_s, {{u"readerclass"_s, u"学生"_s}});
        auto& list = opened<MadddzlxFrm>(m->session, ReaderTypes);
        QCOMPARE(list.Grid1.ColWidth(0), 0);
        inDialog<ReaderNameFrm>([this](ReaderNameFrm& editor) {
            editor.cmdAdd.click(); // empty: only the focus
            QCOMPARE(focusName(), u"Text1"_s);
            m->prompt.expectStart(u"该读者类型已经存在"_s);
            enter(editor.Text1, u" 学生 "_s); // no other than 学生
            press(editor.cmdAdd, Qt::Key_Return);
            QCOMPARE(editor.Text1.selectedText(), u" 学生 "_s);
            m->prompt.expectStart(u"你已经增加了一个读者类型:教'师,"_s);
            editor.Text1.insert(u"教'师"_s);
            editor.cmdAdd.click();
            QCOMPARE(focusName() + editor.Text1.text(), u"Text1"_s);
            m->prompt.expectStart(u"你已经增加了一个读者类型:外来,"_s);
            editor.Text1.insert(u"外来"_s);
            editor.CmdSave.click();
            QVERIFY(!editor.isVisible());
        });
        list.CmdDzcs[0].click();
        QCOMPARE(columnOf(list.Grid1, 1), u"学生 教'师 外来"_s);
        list.Grid1.setRow(2);
        inDialog<ReaderNameFrm>([](ReaderNameFrm& editor) {
            QVERIFY(!editor.cmdAdd.isEnabled() && editor.CmdSave.isEnabled());
            QCOMPARE(editor.Text1.text(), u"教'师"_s);
            editor.Text1.setText(u"职工"_s);
            editor.CmdSave.click();
            QVERIFY(!editor.isVisible());
        });
        list.CmdDzcs[1].click();
        QCOMPARE(list.Grid1.current(1), u"职工"_s);
        list.CmdDzcs[3].click();
        QVERIFY(!list.isVisible());
    }

    void unitsByTheTwoSaveButtons()
    {
        m->insert(u"dzdw"_s, {{u"readunit"_s, u"一班"_s}});
        auto& list = opened<MadddzlxFrm>(m->session, ReaderTypes);
        for (const int command : {1, 2}) // of the empty list of types
            list.CmdDzcs[command].click();
        list.Option1[1].click();
        QCOMPARE(list.Grid1.TextMatrix(0, 1) + list.Grid1.TextMatrix(1, 1), u"读者单位一班"_s);
        inDialog<ReaderNameFrm>([this](ReaderNameFrm& editor) {
            m->prompt.expectStart(u"输入的读者单位已经存在"_s);
            editor.Text1.insert(u"一班"_s);
            editor.cmdAdd.click();
            QCOMPARE(focusName() + editor.Text1.text(), u"Text1"_s);
            editor.Text1.insert(u"一班"_s);
            editor.CmdSave.click();
            QVERIFY(!editor.isVisible());
        });
        list.CmdDzcs[0].click();
        QCOMPARE(list.Grid1.Rows(), 3);
        list.CmdDzcs[2].click();
        QCOMPARE(list.Grid1.Rows(), 2);
    }

private:
    /// A text by an input method, and Enter.
    static void enter(QWidget& box, const QString& text)
    {
        QInputMethodEvent typed;
        typed.setCommitString(text);
        QCoreApplication::sendEvent(&box, &typed);
        press(box, Qt::Key_Return);
    }
    static void press(QWidget& control, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&control, key, modifiers);
        QCoreApplication::processEvents();
    }
};

QTEST_MAIN(TestRulesForms)
#include "test_rules_forms.moc"
