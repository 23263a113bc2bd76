#include "readers/holiday_editor.h"
#include "readers/holiday_form.h"
#include "readers/parameter_editor.h"
#include "readers/parameter_form.h"
#include "readers/reader_list_form.h"
#include "readers/reader_name_editor.h"
#include "support/report_double.h"
#include "support/test_library.h"
#include "support/window_steps.h"

#include <QApplication>
#include <QScrollBar>
#include <QTimer>

using namespace quilla;

/// The lists of the rules and their editors, by keys.
class TestRulesForms : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m = std::make_unique<TestLibrary>(); }
    void cleanup();

    void holidayByKeys();
    void holidayChangedInItsLine();
    void holidayNameOnLeaving();
    void holidayNameTakenAtTheSaveButton();
    void emptyListsDoNothing();
    void longListsNeedNoSecondScrollBar();
    void selectedLinesAreRemoved();
    void parametersByKeys();
    void parametersChanged();
    void faultyParameterKeepsTheFocus();
    void printsTheRules();
    void typesByKeys();
    void unitsByKeys();

private:
    template <typename Screen> Screen& shown(std::unique_ptr<Screen> screen)
    {
        Screen& there = *screen;
        m_screen = std::move(screen);
        appear(there);
        return there;
    }
    /// What happens in the dialog that the next step opens.
    template <typename Editor> void inDialog(std::function<void(Editor&)> steps)
    {
        m_dialogDone = false;
        auto* timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, [this, timer, steps] {
            auto* editor = qobject_cast<Editor*>(QApplication::activeModalWidget());
            if (!editor || !editor->isActiveWindow()) return;
            timer->deleteLater();
            timer->stop();
            steps(*editor);
            QCoreApplication::processEvents();
            m_dialogDone = true;
            editor->close();
        });
        timer->start();
    }
    static QString focus()
    {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }
    static QString lines(const FlexGrid& grid, int columns)
    {
        QStringList list;
        for (int row = 1; row < grid.Rows(); ++row)
            for (int col = 0; col < columns; ++col)
                list.append(grid.TextMatrix(row, col));
        return list.join(u'|');
    }
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

    std::unique_ptr<TestLibrary> m;
    ReportDouble m_reports;
    std::unique_ptr<QWidget> m_screen;
    bool m_dialogDone = true;
};

void TestRulesForms::cleanup()
{
    QVERIFY(m_dialogDone);
    m_screen.reset();
    QCOMPARE(m->prompt.takeComplaints(), QString());
}

void TestRulesForms::holidayByKeys()
{
    m->holiday(u"国庆"_s, u"2026-10-01 2026-10-07"_s);
    auto& list = shown(std::make_unique<holidayfrm>(m->session));
    QCOMPARE(lines(list.Grid1, 2), u"国庆|2026-10-01  至  2026-10-07"_s);
    inDialog<holidayaddFrm>([](holidayaddFrm& editor) {
        QCOMPARE(focus(), u"Text1(0)"_s);
        enter(editor.Text1[0], u" 元'旦 "_s);
        enter(editor.Text1[1], u"2026-1-1"_s);
        enter(editor.Text1[2], u"2026-1-3"_s);
        QCOMPARE(focus(), u"Command1(0)"_s);
        press(editor.Command1[0], Qt::Key_Return);
        QCOMPARE(editor.Text1[0].text() + editor.Text1[1].text() + editor.Text1[2].text(), QString());
        QCOMPARE(focus(), u"Text1(0)"_s);
        QCOMPARE(editor.windowTitle(), u"假期管理-添加"_s);
    });
    press(list, Qt::Key_A, Qt::AltModifier);
    QTRY_VERIFY(m_dialogDone);
    // at the end and as typed, until the list is opened anew
    QCOMPARE(lines(list.Grid1, 2), u"国庆|2026-10-01  至  2026-10-07|元'旦|2026-1-1  至  2026-1-3"_s);
    QCOMPARE(list.lCounts.text(), u"记录数：2"_s);
    list.loadData();
    QCOMPARE(lines(list.Grid1, 2), u"元'旦|2026-01-01  至  2026-01-03|国庆|2026-10-01  至  2026-10-07"_s);
}

void TestRulesForms::holidayChangedInItsLine()
{
    m->holiday(u"元旦"_s, u"2026-01-01 2026-01-03"_s);
    m->holiday(u"国庆"_s, u"2026-10-01 2026-10-07"_s);
    auto& list = shown(std::make_unique<holidayfrm>(m->session));
    press(list.Grid1, Qt::Key_Down);
    inDialog<holidayaddFrm>([this](holidayaddFrm& editor) {
        QCOMPARE(editor.windowTitle(), u"假期管理-修改"_s);
        QCOMPARE(editor.Text1[1].text() + editor.Text1[2].text(), u"2026-10-012026-10-07"_s);
        enter(editor.Text1[0], u"国庆"_s); // its own name is no other's
        QCoreApplication::processEvents();
        editor.Text1[1].setText(u"2026-02-31"_s);
        m->prompt.expect(u"请输入正确的日期格式(例如:2003-01-01)"_s);
        editor.Command1[0].click();
        QCOMPARE(focus() + editor.Text1[1].text(), u"Text1(1)2026-02-31"_s);
        editor.Text1[1].setText(u"2026-10-02"_s);
        editor.Command1[0].click();
        // the next one is a new one
        QCOMPARE(editor.windowTitle(), u"假期管理-添加"_s);
        enter(editor.Text1[0], u"春节"_s);
        enter(editor.Text1[1], u"2026-02-16"_s);
        enter(editor.Text1[2], u"2026-02-20"_s);
        editor.Command1[1].click();
        QVERIFY(!editor.isVisible());
    });
    press(list.Grid1, Qt::Key_Return);
    QCOMPARE(lines(list.Grid1, 1), u"元旦|国庆|春节"_s);
    QCOMPARE(list.Grid1.current(1), u"2026-10-02  至  2026-10-07"_s);
    QCOMPARE(m->rows(u"select memo,code from Global order by code"_s).join(u' '),
        u"元旦|2026-01-01 2026-01-03 春节|2026-02-16 2026-02-20 国庆|2026-10-02 2026-10-07"_s);
}

void TestRulesForms::holidayNameOnLeaving()
{
    m->holiday(u"元旦"_s, u"2026-01-01 2026-01-03"_s);
    auto& editor = shown(std::make_unique<holidayaddFrm>(m->session));
    m->prompt.expect(u"假期名称‘元旦’已经存在。"_s);
    enter(editor.Text1[0], u"元旦 "_s);
    QCoreApplication::processEvents();
    QCOMPARE(focus() + editor.Text1[0].text(), u"Text1(0)"_s);
}

/// The press takes the focus from the name, whose test empties the box; the save then finds no name.
void TestRulesForms::holidayNameTakenAtTheSaveButton()
{
    m->holiday(u"元旦"_s, u"2026-01-01 2026-01-03"_s);
    auto& editor = shown(std::make_unique<holidayaddFrm>(m->session));
    editor.Text1[1].setText(u"2026-05-01"_s);
    editor.Text1[2].setText(u"2026-05-01"_s);
    const std::function<void()> presses[] {
        [&] { QTest::mouseClick(&editor.Command1[1], Qt::LeftButton); },
        [&] { QTest::keyClick(&editor, Qt::Key_S, Qt::AltModifier); },
        [&] { QTest::mouseClick(&editor.Command1[0], Qt::LeftButton); },
    };
    for (const auto& press : presses) {
        m->prompt.expect(u"假期名称‘元旦’已经存在。"_s).titled(u"操作提示").icon(Icon::Warning);
        m->prompt.expect(u"无效假期名称，取消该操作。"_s).titled(u"操作提示").icon(Icon::Warning);
        editor.Text1[0].insert(u"元旦"_s);
        press();
        QTRY_VERIFY(!editor.Command1[1].isDown());
        QTRY_COMPARE(focus() + editor.Text1[0].text(), u"Text1(0)"_s);
        QCOMPARE(m->prompt.takeComplaints(), QString());
    }
    QVERIFY(editor.isVisible());
    QCOMPARE(m->value(u"select count(*) from Global"_s), u"1"_s);
}

void TestRulesForms::emptyListsDoNothing()
{
    auto& holidays = shown(std::make_unique<holidayfrm>(m->session));
    QCOMPARE(holidays.Grid1.Rows(), 2);
    press(holidays.Grid1, Qt::Key_Return);
    press(holidays.Grid1, Qt::Key_Delete);
    auto& rules = shown(std::make_unique<JycsFrm>(m->session, m_reports));
    QCOMPARE(rules.lCounts.text(), u"记录数：0"_s);
    press(rules.Grid1, Qt::Key_Return);
    rules.Command1[1].click();
    auto& types = shown(std::make_unique<MadddzlxFrm>(m->session, 0));
    types.CmdDzcs[1].click();
    types.CmdDzcs[2].click();
}

void TestRulesForms::longListsNeedNoSecondScrollBar()
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
    QVERIFY(settles(shown(std::make_unique<holidayfrm>(m->session)).Grid1));
    QVERIFY(settles(shown(std::make_unique<JycsFrm>(m->session, m_reports)).Grid1));
    QVERIFY(settles(shown(std::make_unique<MadddzlxFrm>(m->session, 0)).Grid1));
}

void TestRulesForms::selectedLinesAreRemoved()
{
    for (const QString& type : {u"甲"_s, u"乙"_s, u"丙"_s})
        m->insert(u"jycs"_s, {{u"readerclass"_s, type}});
    auto& list = shown(std::make_unique<JycsFrm>(m->session, m_reports));
    const QString question = u"是否确定删除所选的读者类型的参数？"_s;
    m->prompt.expect(question).answer(Answer::Yes);
    list.Grid1.setRow(3);
    press(list.Grid1, Qt::Key_Up, Qt::ShiftModifier);
    press(list.Grid1, Qt::Key_Delete);
    QCOMPARE(lines(list.Grid1, 1), u"甲"_s);
    QCOMPARE(list.lCounts.text(), u"记录数：1"_s);
    m->prompt.expect(question).answer(Answer::Yes);
    list.Command1[1].click();
    QCOMPARE(list.Grid1.Rows(), 2);
    QCOMPARE(list.Grid1.current(0) + list.lCounts.text(), u"记录数：0"_s);
    QCOMPARE(m->value(u"select count(*) from jycs"_s), u"0"_s);
}

void TestRulesForms::parametersByKeys()
{
    m->insert(u"dzlx"_s, {{u"readerclass"_s, u"外'来人"_s}});
    auto& list = shown(std::make_unique<JycsFrm>(m->session, m_reports));
    inDialog<JycsAddFrm>([](JycsAddFrm& editor) {
        QCOMPARE(editor.Combo1.itemText(0), u"外'来人"_s);
        QCOMPARE(focus(), u"Combo1"_s);
        enter(editor.Combo1, u"外'来"_s);
        for (TextBox& box : editor.Text1) {
            QCOMPARE(focus(), box.objectName());
            enter(box, u"3"_s);
        }
        QCOMPARE(focus(), u"Check1(0)"_s);
        press(editor.Check1[0], Qt::Key_Space);
        press(editor.Check1[0], Qt::Key_Return);
        QCOMPARE(focus(), u"Check1(1)"_s);
        QVERIFY(editor.Combo1.findText(u"外'来"_s) > 0);
        editor.Command1[0].click();
        QCOMPARE(focus(), u"Combo1"_s);
        QVERIFY(editor.Text1[10].text().isEmpty() && !editor.Check1[0].isChecked());
    });
    list.Command1[0].click();
    QCOMPARE(lines(list.Grid1, 14), u"外'来|3|3|3|3|3|3|3|是|否|3|3|3|3"_s);
    QCOMPARE(m->rows(u"select readerclass from dzlx order by dzlxid"_s).join(u' '), u"外'来人 外'来"_s);
}

void TestRulesForms::parametersChanged()
{
    for (const QString& type : {u"甲"_s, u"乙"_s})
        m->insert(u"jycs"_s, {{u"readerclass"_s, type}, {u"fine"_s, u"0.1"_s}, {u"wuzheng"_s, u"1"_s}});
    m->insert(u"jycs"_s, {{u"readerclass"_s, u"空"_s}, {u"ifcanre"_s, u"null"_s}, {u"wuzheng"_s, u"null"_s}});
    auto& list = shown(std::make_unique<JycsFrm>(m->session, m_reports));
    QCOMPARE(list.Grid1.TextMatrix(3, 8) + list.Grid1.TextMatrix(3, 9), QString());
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
    inDialog<JycsAddFrm>(
        [](JycsAddFrm& editor) { QVERIFY(!editor.Check1[0].isChecked() && !editor.Check1[1].isChecked()); });
    list.Grid1.setRow(3);
    press(list.Grid1, Qt::Key_Return);
}

void TestRulesForms::faultyParameterKeepsTheFocus()
{
    auto& editor = shown(std::make_unique<JycsAddFrm>(m->session));
    editor.Text1[3].setFocus();
    m->prompt.expect(u"无效数字格式，取消该操作。"_s);
    enter(editor.Text1[3], u"zwei"_s);
    QCoreApplication::processEvents();
    QCOMPARE(focus() + editor.Text1[3].text(), u"Text1(3)"_s);
    editor.Combo1.setEditText(u"新"_s);
    m->prompt.expect(u"无效数字类型，取消该操作。"_s);
    editor.Command1[1].click();
    QCOMPARE(focus() + editor.Combo1.currentText(), u"Text1(0)新"_s);
}

void TestRulesForms::printsTheRules()
{
    m->insert(u"jycs"_s, {{u"readerclass"_s, u"甲"_s}});
    auto& list = shown(std::make_unique<JycsFrm>(m->session, m_reports));
    m->prompt.expectStart(u"请将打印机设置为"_s);
    list.Command1[4].click();
    QCOMPARE(m_reports.shown, QStringList {u"ltcsPrint"_s});
}

void TestRulesForms::typesByKeys()
{
    m->insert(u"dzlx"_s, {{u"readerclass"_s, u"学生"_s}});
    auto& list = shown(std::make_unique<MadddzlxFrm>(m->session, 0));
    QCOMPARE(list.Grid1.ColWidth(0), 0);
    inDialog<ReaderNameFrm>([this](ReaderNameFrm& editor) {
        QVERIFY(editor.cmdAdd.isEnabled() && editor.CmdSave.isEnabled());
        editor.cmdAdd.click(); // empty: only the focus
        QCOMPARE(focus(), u"Text1"_s);
        m->prompt.expectStart(u"该读者类型已经存在"_s);
        enter(editor.Text1, u"学生"_s);
        press(editor.cmdAdd, Qt::Key_Return);
        QCOMPARE(editor.Text1.selectedText(), u"学生"_s);
        m->prompt.expectStart(u"你已经增加了一个读者类型:教'师,"_s);
        editor.Text1.insert(u"教'师"_s);
        editor.cmdAdd.click();
        QCOMPARE(focus() + editor.Text1.text(), u"Text1"_s);
    });
    list.CmdDzcs[0].click();
    QCOMPARE(list.Grid1.TextMatrix(2, 1), u"教'师"_s);
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
    QStringList keys;
    for (const QPushButton& button : list.CmdDzcs)
        keys.append(button.toolTip());
    QCOMPARE(keys.join(u' '), u"Add Edit Del Quit"_s);
    list.CmdDzcs[3].click();
    QVERIFY(!list.isVisible());
}

void TestRulesForms::unitsByKeys()
{
    m->insert(u"dzdw"_s, {{u"readunit"_s, u"一班"_s}});
    auto& list = shown(std::make_unique<MadddzlxFrm>(m->session, 0));
    press(list.Option1[0], Qt::Key_Down);
    list.Option1[1].click();
    QCOMPARE(list.Grid1.TextMatrix(0, 1) + lines(list.Grid1, 2).section(u'|', 1), u"读者单位一班"_s);
    inDialog<ReaderNameFrm>([this](ReaderNameFrm& editor) {
        QCOMPARE(editor.windowTitle(), u"增加读者单位"_s);
        m->prompt.expectStart(u"输入的读者单位已经存在"_s);
        editor.Text1.insert(u"一班"_s);
        editor.cmdAdd.click();
        QCOMPARE(focus() + editor.Text1.text(), u"Text1"_s);
        editor.Text1.insert(u"一班"_s);
        editor.CmdSave.click();
        QVERIFY(!editor.isVisible());
    });
    list.CmdDzcs[0].click();
    QCOMPARE(list.Grid1.Rows(), 3);
    list.CmdDzcs[2].click();
    list.CmdDzcs[2].click();
    QCOMPARE(list.Grid1.Rows(), 2);
    QCOMPARE(m->value(u"select count(*) from dzdw"_s), u"0"_s);
}

QTEST_MAIN(TestRulesForms)
#include "test_rules_forms.moc"
