#include "exceptions/ledger_editor.h"
#include "exceptions/ledger_form.h"
#include "statistics/query_form.h"
#include "support/screen_test.h"

using namespace quilla;

/// The ledger of withdrawn copies, its editor, and its two transactions.
class TestLedger : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        // it is 2026-03-10
        m->copy(u"B1"_s, {{u"price"_s, u"12.5"_s}});
        m->copy(u"B2"_s, {{u"bookstatus"_s, u"注销"_s}, {u"borrowstatus"_s, u"0"_s}});
        m->copy(u"B3"_s, {{u"bookstatus"_s, u"丢失"_s}, {u"borrowstatus"_s, u"0"_s}});
        m->copy(u"B'4"_s, {{u"bookstatus"_s, u"注销"_s}, {u"borrowstatus"_s, u"0"_s}});
        entry(u"B'4"_s, u"丢失"_s, u"2026-01-05"_s);
        m_work->reports.fields = {u"barcode"_s};
        m_list = &opened<BookOutFrm>(m_work->place);
    }

private Q_SLOTS:
    /// The barcode typed, the message, and the ledger's last entry and the copy after it was saved.
    void withdraws_data()
    {
        cases<QString, QString, QString, QString>({
            {"in stock", {u"B1"_s, {}, u"书名1|著者1|B1|12.5|丢失|王馆员|2026-03-10"_s, u"False|注销"_s}},
            {"in the ledger", {u"B'4"_s, u"条形码B'4对应的图书已经注销!"_s, {}, {}}},
            {"withdrawn without an entry", {u"b2"_s, u"条形码b2对应的图书已经注销!"_s, {}, {}}},
            {"lost without an entry",
                {u"B3"_s, {}, u"书名3|著者3|B3|20|丢失|王馆员|2026-03-10"_s, u"False|注销"_s}},
            {"unknown to the catalogue", {u"X'9"_s, {}, u"手|||X'9|0|丢失|王馆员|2026-03-10"_s, {}}},
        });
    }
    void withdraws()
    {
        const auto [barcode, told, entry, copy] = given<QString, QString, QString, QString>();
        const QString before = m->everything();
        inDialog<AddBookOutFrm>([&, barcode = barcode, told = told](AddBookOutFrm& editor) {
            QCOMPARE(editor.windowTitle(), u"藏书注销帐-[登记注销]"_s);
            if (barcode.startsWith(u'X')) editor.Text1[1].setText(u"手"_s);
            if (!told.isEmpty()) m->prompt.expect(told).titled(OperationTitle);
            typeInto(editor.Text1[3], barcode);
            editor.Text1[4].setFocus();
            QCoreApplication::processEvents();
            if (!told.isEmpty()) m->prompt.expect(told);
            editor.CmdSave.click();
            QCOMPARE(editor.isVisible(), !told.isEmpty());
        });
        QTest::keyClick(&m_list->Grid1, Qt::Key_Insert, Qt::ControlModifier);
        if (!told.isEmpty()) {
            QCOMPARE(m->everything(), before);
            return;
        }
        const QString line = m->value(
            u"select bookname,author,barcode,price,cause,operater,outdate from BookOut where barcode='%1'"_s
                .arg(doubled(barcode)));
        QCOMPARE(
            trimmedZeros(line), entry.startsWith(u"手"_s) ? u"手||X'9|0|丢失|王馆员|2026-03-10"_s : entry);
        QCOMPARE(
            m->value(u"select borrowstatus,bookstatus from sck where barcode='%1'"_s.arg(doubled(barcode))),
            copy);
        QCOMPARE(m_list->iRec.text(), u"2"_s);
    }

    /// The check at saving overwrites what was corrected by hand; a price that is no number becomes 0.
    void editorChecks()
    {
        AddBookOutFrm editor(m->session);
        editor.SetDataMode(u"a"_s);
        editor.InfoLoad(0);
        appear(editor);
        editor.Text1[4].setFocus();
        QTest::keyClicks(&editor.Text1[4], u"viel"_s);
        typeInto(editor.Text1[3], u"B1"_s);
        QCOMPARE(editor.Text1[4].text(), u"12.50"_s);
        editor.Text1[1].setText(u"别名"_s);
        editor.Text1[7].setEnabled(true);
        for (const auto& [text, message] : {std::pair {u"bald"_s, u"请正确输入登记日期(例如:2003-01-01)"_s},
                 {u"01-02-2003"_s, u"请输入完整的日期格式!(例如:2003-01-01)"_s}}) {
            editor.Text1[7].setText(text);
            m->prompt.expect(message).titled(OperationTitle).icon(Icon::Information);
            editor.CmdSave.click();
            QCOMPARE(focusName(), u"Text1(7)"_s);
        }
        const QString before = m->everything();
        editor.Text1[7].clear(); // passes the test and fails in the statement
        editor.CmdSave.click();
        QCOMPARE(focusName(), u"Text1(1)"_s);
        QCOMPARE(m->everything(), before);
        editor.Text1[7].setText(u"2026-3-1"_s);
        editor.CmdSave.click();
        QCOMPARE(
            m->value(u"select bookname,outdate from BookOut where barcode='B1'"_s), u"书名1|2026-03-01"_s);
    }

    /// Only the entry changes, and a title longer than what may be typed stays whole.
    void corrects()
    {
        const QString longTitle(80, u'长');
        m->send(u"update BookOut set bookname='%1',memo='旧',price=null"_s.arg(longTitle));
        inDialog<AddBookOutFrm>([](AddBookOutFrm& editor) {
            QCOMPARE(editor.windowTitle() + editor.Text1[0].text(), u"藏书注销帐-[查看注销]1"_s);
            QVERIFY(editor.Text1[3].isReadOnly());
            QCOMPARE(editor.Text1[4].text() + editor.Text1[7].text(), u"0.002026-01-05"_s);
            editor.Combo1.setEditText(u"水'渍"_s);
            editor.Text1[5].setText(u"新"_s);
            editor.CmdSave.click();
        });
        m_list->ReloadLedger();
        QTest::keyClick(&m_list->Grid1, Qt::Key_Return);
        QCOMPARE(m->value(u"select bookname,cause,memo,operater,outdate from BookOut"_s),
            longTitle + u"|水'渍|新|李馆员|2026-01-05"_s);
        QCOMPARE(m->value(u"select bookstatus from sck where barcode='B''4'"_s), u"注销"_s);
        QCOMPARE(m_list->Grid1.TextMatrix(1, 6), u"水'渍"_s);
        AddBookOutFrm gone(m->session);
        gone.SetDataMode(u"E"_s);
        gone.InfoLoad(99);
        QVERIFY(!gone.CmdSave.isEnabled());
    }

    void restores()
    {
        entry(u"X9"_s, u"注销"_s, u"2026-01-06"_s); // unknown to the catalogue
        m_list->loadData({}, u"barcode"_s);
        rightClick(2);
        QCOMPARE(barcodes(), u"B'4 | 1"_s);
        rightClick(1);
        QCOMPARE(barcodes(), u" | 0"_s);
        QCOMPARE(m->value(u"select borrowstatus,bookstatus from sck where barcode='B''4'"_s), u"True|库本"_s);
        m_list->RestoreWithdrawnCopy(); // nothing on an empty list
    }

    /// A fault at any statement of a transaction leaves every table as it was, and no box is shown.
    void transactionsAreAllOrNothing()
    {
        const QString before = m->everything();
        for (const QString& part : {u"insert into BookOut"_s, u"update sck set bookstatus"_s}) {
            m->failAt(part);
            QVERIFY(SaveWithdrawal(m->session, EditorMode(u"A"_s),
                {.barcode = u"B1"_s, .price = u"1"_s, .outdate = u"2026-03-10"_s}));
            m->factory.setHook({});
            QCOMPARE(m->everything(), before);
        }
        for (const QString& part : {u"update sck set borrowstatus=1"_s, u"delete from BookOut"_s}) {
            m->failAt(part);
            QVERIFY(!restoreWithdrawnCopy(m->session, 1));
            m->factory.setHook({});
            QCOMPARE(m->everything(), before);
        }
        QVERIFY(!m->session.error.isSet());
    }

    void finds_data()
    {
        cases<int, QString, QString>({
            {"title", {0, u"'"_s, u" | 0"_s}},
            {"part of a barcode", {2, u"4"_s, u"B'4 | 1"_s}},
            {"a quote", {2, u"b'"_s, u"B'4 | 1"_s}},
            {"wild card", {2, u"%"_s, u"B'4 B7 | 2"_s}},
            {"cause", {3, u"销"_s, u"B7 | 1"_s}},
        });
    }
    void finds()
    {
        const auto [field, text, found] = given<int, QString, QString>();
        entry(u"B7"_s, u"注销"_s, u"2026-01-06"_s);
        QCOMPARE(m_list->Combo1.currentText(), u"条码号"_s);
        m_list->Combo1.setCurrentIndex(field);
        m_list->CmdFind.click();
        QCOMPARE(focusName(), u"Text1"_s); // there is nothing to look for yet
        m_list->Text1.setText(text);
        QTest::keyClick(&m_list->Text1, Qt::Key_Return);
        QVERIFY(m_list->Grid1.hasFocus());
        QCOMPARE(barcodes(), found);
    }

    /// Grid emptied before the connection; the list's order counts neither on paper nor on the sheet.
    void listPrintsAndExports()
    {
        entry(u"B7"_s, u"注销"_s, u"2026-01-06"_s);
        m_list->loadData(u"cause<>'无'"_s, u"barcode desc"_s);
        QCOMPARE(barcodes(), u"B7 B'4 | 2"_s);
        m_list->CmdPrint.click();
        QCOMPARE(
            m_work->reports.shown.join(u' ') + m_work->reports.last.title, u"PrintBookOut B'4 B72026年度"_s);
        m_list->cmdToExcel.click();
        QCOMPARE(m_work->sheets.shown.size(), 1);
        m_work->reports.shown.clear();
        inDialog<QueryFrm>([](QueryFrm& query) {
            QCOMPARE(query.windowTitle(), u"统计条件"_s);
            query.LFields.setCurrentRow(2);
            type(query.lSql, u"nix"_s);
            query.Command1[1].click();
        });
        QTest::keyClick(&m_list->Grid1, Qt::Key_F, Qt::ControlModifier);
        m->prompt.expect(u"没有需要打印的信息！"_s).titled(OperationTitle).icon(Icon::Information);
        m_list->CmdPrint.click();
        m->prompt.expect(u"没有需要输出的信息！"_s);
        m_list->cmdToExcel.click();
        m_list->loadData({}, {});
        m->send(u"delete from BookOut"_s); // the list does not know yet
        m_list->CmdPrint.click();
        QCOMPARE(m_work->reports.shown, QStringList());
        m->settings.values.clear();
        m->prompt.expectStart(u"无法取得正确连接数据库的信息!"_s).answer(Answer::No);
        m_list->ReloadLedger();
        QCOMPARE(barcodes(), u" | 0"_s);
    }

private:
    QString barcodes() const { return columnOf(m_list->Grid1, 4) + u" | "_s + m_list->iRec.text(); }
    static QString trimmedZeros(QString text)
    {
        return text.replace(QRegularExpression(u"(\\.\\d*?)0+\\|"_s), u"\\1|"_s).replace(u".|"_s, u"|"_s);
    }
    void entry(const QString& barcode, const QString& cause, const QString& date)
    {
        m->insert(u"BookOut"_s,
            {{u"bookname"_s, u"书"_s}, {u"author"_s, u"人"_s}, {u"barcode"_s, barcode}, {u"price"_s, u"3"_s},
                {u"cause"_s, cause}, {u"outdate"_s, date}, {u"operater"_s, u"李馆员"_s}});
    }
    void rightClick(int row)
    {
        m_list->Menu.setChooser(
            [](const QStringList& items) { return items == QStringList(u"恢复注销"_s) ? 1 : 0; });
        clickLine(m_list->Grid1, row, Qt::RightButton);
    }

    BookOutFrm* m_list = nullptr;
};

QTEST_MAIN(TestLedger)
#include "test_ledger.moc"
