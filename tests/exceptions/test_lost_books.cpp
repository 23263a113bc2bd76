#include "exceptions/lost_editor.h"
#include "exceptions/lost_list_form.h"
#include "platform/ui/form/list_chooser.h"
#include "support/screen_test.h"

using namespace quilla;

namespace {

const QString NoSuchLoan = u"此条形码不存在 或 不存在借阅信息。"_s;
const QString NotHis = u"该读者并不存在此书刊的节阅信息。"_s;
const QString SaveFailed = u"数据添加出错，取消该操作。"_s;
const QString DeleteQuestion = u"是否确定删除所选的丢失登记资料？"_s;

} // namespace

/// The register of lost books: its list, its editor and the chooser, by keys.
class TestLostBooks : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        // it is 2026-03-10
        m->reader(u"R1"_s, {{u"name"_s, u"甲"_s}, {u"readunit"_s, u"一'班"_s}, {u"lost"_s, u"3"_s}});
        m->reader(u"R2"_s, {{u"name"_s, u"乙"_s}, {u"readunit"_s, u"二班"_s}, {u"lost"_s, u"null"_s}});
        for (const auto& [barcode, reader] :
            {std::pair {u"B1"_s, u"R1"_s}, {u"B2"_s, u"R2"_s}, {u"B3"_s, u"R1"_s}}) {
            m->loan(barcode, reader, u"2026-03-01"_s);
        }
    }

private Q_SLOTS:
    /// What stands in the boxes before, the box that is left, the message, and the boxes and the focus after.
    void looksUp_data()
    {
        cases<QStringList, int, QString, QString, int>({
            {"by code", {{u" r1 "_s}, 0, {}, u"r1,甲,,,"_s, 1}},
            {"by name", {{{}, u"乙"_s}, 1, {}, u"R2,乙,,,"_s, 2}},
            {"by barcode", {{{}, {}, u"b1"_s}, 2, {}, u"R1,甲,b1,书名1,60.00"_s, 0}},
            {"a null rate", {{{}, {}, u"B2"_s}, 2, {}, u"R2,乙,B2,书名2,0.00"_s, 0}},
            {"by title", {{{}, {}, {}, u"书名3"_s}, 3, {}, u"R1,甲,B3,书名3,60.00"_s, 5}},
            {"no such reader",
                {{u"R'9"_s, u"乙"_s, u"B1"_s}, 0, u"无效读者证号，取消该操作。"_s, u",乙,B1,,"_s, 0}},
            {"no such name", {{u"R1"_s, u"丙"_s}, 1, u"无效读者姓名，取消该操作。"_s, u"R1,,,,"_s, 1}},
            {"no such loan", {{u"R1"_s, u"甲"_s, u"B9"_s, u"书"_s}, 2, NoSuchLoan, u",,,,"_s, 2}},
            {"no such title",
                {{u"R1"_s, u"甲"_s, u"B1"_s, u"无"_s}, 3, u"此图书名不存在 或 不存在借阅信息。"_s, u",,,,"_s,
                    3}},
            {"not his book", {{u"R2"_s, {}, u"B1"_s, u"书名1"_s}, 0, NotHis, u"R2,乙,,书名1,"_s, 2}},
        });
    }
    void looksUp()
    {
        const auto [before, left, message, after, focus] = given<QStringList, int, QString, QString, int>();
        open(u"A"_s);
        m_editor->Text1[left].setFocus();
        QCoreApplication::processEvents();
        for (qsizetype index = 0; index < before.size(); ++index)
            m_editor->Text1[index].setText(before[index]);
        if (!message.isEmpty()) m->prompt.expect(message).titled(OperationTitle);
        QTest::keyClick(&m_editor->Text1[left], Qt::Key_Return);
        QCoreApplication::processEvents();
        QStringList boxes;
        for (int index = 0; index < LostBox::Date; ++index)
            boxes.append(m_editor->Text1[index].text());
        QCOMPARE(boxes.join(u','), after);
        if (!message.isEmpty()) QCOMPARE(focusName(), u"Text1(%1)"_s.arg(focus));
    }

    /// A box that was filled by a look-up is not looked up again until a box changes; the date is none of
    /// them.
    void looksUpOnceUntilABoxChanges()
    {
        open(u"A"_s);
        typeInto(m_editor->Text1[LostBox::Barcode], u"B1"_s);
        m->failAt({});
        m->sent.clear();
        for (const int box : {0, 1, 3, 5})
            m_editor->Text1[box].setFocus(), QCoreApplication::processEvents();
        m_editor->Text1[LostBox::Date].setText(u"2026-01-01"_s);
        m_editor->Text1[0].setFocus();
        QCoreApplication::processEvents();
        QCOMPARE(m->sent, QStringList());
        QTest::keyClicks(&m_editor->Text1[0], u"R2"_s);
        m->prompt.expect(NotHis);
        m_editor->Text1[1].setFocus();
        QCoreApplication::processEvents();
        QCOMPARE(m_editor->Text1[2].text() + focusName(), u"Text1(2)"_s);
    }

    void refusesDates()
    {
        open(u"A"_s);
        for (const auto& [text, message] : {std::pair {u"abc"_s, u"请输入正确的日期格式(例如:2003-01-01)"_s},
                 {u"01-02-2003"_s, u"请输入完整的日期格式!(例如:2003-01-01)"_s}}) {
            m_editor->Text1[LostBox::Date].setText(text);
            m_editor->Text1[LostBox::Date].setFocus();
            m->prompt.expect(message).titled(OperationTitle).icon(Icon::Information);
            m_editor->Text1[0].setFocus();
            QCOMPARE(focusName(), u"Text1(5)"_s);
        }
    }

    /// Entered by keys alone, with the chooser; the line stands at the end of a list that shows no such
    /// entry.
    void entersByKeys()
    {
        openList();
        m_list->loadData(u"barcode='none'"_s, {});
        inDialog<lostMangerAddfrm>([this](lostMangerAddfrm& editor) {
            QCOMPARE(editor.windowTitle() + editor.Text1[5].text(), u"丢失登记-->增加2026-03-10"_s);
            typeInto(editor.Text1[0], u"R1"_s);
            int chosen = 1;
            whenShown<gListfrm>([&](gListfrm& chooser) {
                QCOMPARE(chooser.size(), chooser.Grid1.size());
                QTest::keyClick(&chooser.Grid1, Qt::Key_Down);
                QTest::keyClick(&chooser.Grid1, Qt::Key_Space);
                --chosen;
            });
            editor.Command2.click();
            QTRY_COMPARE(chosen, 0);
            editor.activateWindow(); // a popup that goes leaves that to the window manager
            QVERIFY(QTest::qWaitForWindowActive(&editor));
            QCOMPARE(editor.focusWidget(), &editor.Text1[2]);
            QCOMPARE(editor.Text1[2].text(), u"B3"_s);
            QTest::keyClick(&editor, Qt::Key_A, Qt::AltModifier); // looks the chosen copy up, then saves
            QTRY_COMPARE(editor.Text1[0].text(), QString());
            QCOMPARE(editor.Text1[5].text() + focusName(), u"2026-03-10Text1(0)"_s);
        });
        choose(1);
        QCOMPARE(lines(), u"B3|书名3|一'班|R1|甲|60.00|2026-03-10 记录数：1"_s);
        QCOMPARE(m->value(u"select readercode,name,readunit,barcode,bookname,createdate from diushik"_s),
            u"R1|甲|一'班|B3|书名3|2026-03-10"_s);
    }

    /// The same book of the same reader is refused, with the boxes emptied; nothing may be missing.
    void refusesEntries()
    {
        entry(u"B1"_s, u"R1"_s);
        open(u"A"_s);
        m->prompt.expect(u"无效数据输入，取消该操作。"_s);
        m_editor->Command1[1].click();
        QCOMPARE(focusName(), u"Text1(0)"_s);
        typeInto(m_editor->Text1[2], u"B1"_s);
        m->prompt.expect(u"已经存在此书的丢失登记资料。"_s).titled(OperationTitle);
        m_editor->Command1[1].click();
        QCOMPARE(m_editor->Text1[2].text() + m_editor->Text1[5].text() + focusName(), u"Text1(0)"_s);
        QCOMPARE(m->value(u"select count(*) from diushik"_s), u"1"_s);
    }

    /// Only the date of an entry changes; 保存增加 goes on to a new entry of that date.
    void changesTheDate()
    {
        entry(u"B1"_s, u"R1"_s);
        entry(u"B1"_s, u"R2"_s); // another reader's entry of the same copy stays as it is
        openList();
        inDialog<lostMangerAddfrm>([](lostMangerAddfrm& editor) {
            QCOMPARE(editor.windowTitle() + focusName(), u"丢失登记-->修改Text1(5)"_s);
            QVERIFY(!editor.Text1[0].isEnabled() && !editor.Text1[4].isEnabled());
            editor.Text1[5].setText(u"2026/3/5"_s);
            editor.Command1[0].click();
            QCOMPARE(editor.windowTitle() + editor.Text1[0].text() + editor.Text1[5].text() + focusName(),
                u"丢失登记-->增加2026/3/5Text1(0)"_s);
            QVERIFY(editor.Text1[0].isEnabled() && !editor.Text1[4].isEnabled());
        });
        QTest::keyClick(&m_list->Grid1, Qt::Key_Return);
        QCOMPARE(m_list->Grid1.TextMatrix(1, LostColumn::Date), u"2026-03-05"_s);
        QCOMPARE(m->rows(u"select readercode,createdate from diushik order by readercode"_s).join(u' '),
            u"R1|2026-03-05 R2|2026-02-02"_s);
    }

    /// From the last selected line up, by the barcode alone; the only line left is emptied.
    void deletesSelectedLines()
    {
        for (const QString& barcode : {u"B1"_s, u"B2"_s, u"B'3"_s})
            entry(barcode, u"R1"_s);
        entry(u"B'3"_s, u"R2"_s);
        openList();
        m_list->Grid1.setRow(2);
        m->prompt.expect(DeleteQuestion).titled(OperationTitle).icon(Icon::Warning).answer(Answer::No);
        QTest::keyClick(&m_list->Grid1, Qt::Key_Delete);
        QTest::keyClick(&m_list->Grid1, Qt::Key_Down, Qt::ShiftModifier);
        m->prompt.expect(DeleteQuestion).answer(Answer::Yes);
        choose(3);
        QCOMPARE(m->rows(u"select barcode from diushik"_s).join(u' '), u"B1"_s);
        QCOMPARE(m_list->Grid1.TextMatrix(2, 0) + m_list->lCounts.text(), u"B'3记录数：2"_s);
        m_list->loadData({}, {});
        m->prompt.expect(DeleteQuestion).answer(Answer::Yes);
        choose(3);
        QCOMPARE(lines(), u"|||||| 记录数：0"_s);
        choose(3); // nothing is asked of an empty list
        inDialog<lostMangerAddfrm>([](lostMangerAddfrm& editor) {
            QCOMPARE(editor.windowTitle() + editor.Text1[2].text(), u"丢失登记-->修改"_s);
        });
        choose(5); // but its entry can be looked at
    }

    /// A failing look-up of the unit leaves it empty; a write that fails is reported and changes nothing.
    void failures_data()
    {
        cases<QString, QString>({
            {"unit", {u"Select readunit"_s, {}}},
            {"insert", {u"Insert into diushik"_s, SaveFailed}},
            {"update", {u"Update diushik"_s, SaveFailed}},
            {"delete", {u"Delete From DiuShiK"_s, {}}},
        });
    }
    void failures()
    {
        const auto [part, message] = given<QString, QString>();
        const bool changes = part.startsWith(u"Update"_s);
        if (!part.startsWith(u"Select"_s) && !part.startsWith(u"Insert"_s)) entry(u"B1"_s, u"R1"_s);
        openList();
        const QString before = m->everything();
        if (part.startsWith(u"Delete"_s)) {
            m->failAt(part);
            m->prompt.expect(DeleteQuestion).answer(Answer::Yes);
            m_list->DeleteLostEntries();
            QCOMPARE(lines(), u"|||||| 记录数：0"_s); // the line goes whatever became of its entry
        } else {
            open(changes ? u"E"_s : u"A"_s);
            if (!changes) typeInto(m_editor->Text1[2], u"B1"_s);
            m->failAt(part);
            if (!message.isEmpty()) m->prompt.expect(message).titled(OperationTitle);
            m_editor->Command1[1].click();
            QCOMPARE(m_editor->isVisible(), !message.isEmpty());
        }
        m->factory.setHook({});
        if (part.startsWith(u"Select"_s))
            QCOMPARE(m->value(u"select readunit from diushik"_s), QString());
        else
            QCOMPARE(m->everything(), before);
        QVERIFY(!m->session.error.isSet());
    }

private:
    void entry(const QString& barcode, const QString& reader)
    {
        m->insert(u"diushik"_s,
            {{u"readercode"_s, reader}, {u"name"_s, u"甲"_s}, {u"readunit"_s, u"一班"_s},
                {u"barcode"_s, barcode}, {u"bookname"_s, u"书"_s}, {u"yfjine"_s, u"60"_s},
                {u"createdate"_s, u"2026-02-02"_s}});
    }
    void openList() { m_list = &opened<lostMangerfrm>(m_work->place); }
    void open(const QString& mode)
    {
        m_editor = &made<lostMangerAddfrm>(m->session, mode);
        if (mode == u"E") m_editor->LoadLostEntryFromGrid(m_list->Grid1);
        appear(*m_editor);
    }
    QString lines() const { return linesOf(m_list->Grid1) + u' ' + m_list->lCounts.text(); }
    /// An entry of the menu 基本操作.
    void choose(int number)
    {
        m_list->Menu.setChooser([number](const QStringList& items) {
            return items == QStringList({u"增加"_s, u"-"_s, u"删除"_s, u"-"_s, u"修改"_s}) ? number : 0;
        });
        m_list->Command1[4].click();
    }

    lostMangerfrm* m_list = nullptr;
    lostMangerAddfrm* m_editor = nullptr;
};

QTEST_MAIN(TestLostBooks)
#include "test_lost_books.moc"
