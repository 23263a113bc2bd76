#include "desk/loan_query_page.h"
#include "support/screen_test.h"

using namespace quilla;

/// The desk's query page.
class TestLoanQuery : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        m->reader(u"R1"_s, {{u"name"_s, u"王O'Neil %1"_s}, {u"readunit"_s, u"一班"_s}});
        m->reader(
            u"R2"_s, {{u"name"_s, u"王二"_s}, {u"readunit"_s, u"二班"_s}, {u"readerclass"_s, u"教师"_s}});
        for (const QString& unit : {u"一班"_s, u"二班"_s})
            m->insert(u"dzdw"_s, {{u"readunit"_s, unit}});
        for (const auto& [barcode, reader] :
            {std::pair {u"B3"_s, u"R2"_s}, std::pair {u"B1"_s, u"R1"_s}, std::pair {u"B2"_s, u"R2"_s}})
            m->loan(barcode, reader, u"2026-03-20"_s);
        m_page = &opened<LoanQueryPage>(m->session, m_work->reports);
    }

private Q_SLOTS:
    /// Quotes and place marks stay text; loans stand as they were entered.
    void findsByTheBoxes()
    {
        const std::tuple<int, QString, QString> rows[] {
            {0, u"王"_s, u"B3 B1 B2"_s},
            {0, u" r2 "_s, u"B3 B2"_s},
            {1, u"一班"_s, u"B1"_s},
            {2, u"教师"_s, u"B3 B2"_s},
            {3, u"书名3"_s, u"B2"_s},
            {3, u"' or 1=1 --"_s, {}},
            {0, u"o'neil %1"_s, u"B1"_s},
        };
        for (const auto& [tick, text, barcodes] : rows) {
            m_page->Check2[tick].click();
            QInputMethodEvent input;
            input.setCommitString(text);
            QCoreApplication::sendEvent(QApplication::focusWidget(), &input);
            if (barcodes.isEmpty())
                m->prompt.expect(u"找不到任何匹配的记录"_s).titled(u"操作提示").icon(Icon::Information);
            m_page->CmdFind.click();
            QCOMPARE(columnOf(m_page->Grid3, 2).trimmed(), barcodes);
            m_page->Check2[tick].click();
        }
    }

    void ticksFillAndEmpty()
    {
        m_page->Check2[1].click();
        QCOMPARE(m_page->Combo1.count(), 2);
        m_page->Combo1.setEditText(u"二班"_s);
        m_page->Text2[0].setText(u"x"_s);
        m_page->Check2[2].click();
        QCOMPARE(m_page->Combo1.currentText() + m_page->Text2[0].text(), u"二班"_s);
        m_page->Combo2.setEditText(u"学生"_s);
        m->prompt.expect(u"找不到任何匹配的记录"_s); // each has loans, both together have none
        QTest::keyClick(&m_page->Combo1, Qt::Key_Return);
        m_page->Check2[1].click();
        QCOMPARE(m_page->Combo1.count(), 0);
        QCOMPARE(m_page->Combo1.currentText(), QString());
        m_page->Text2[0].setText(u"x"_s);
        m_page->CmdFind
            .click(); // ticked but empty, or filled but not ticked: nothing happens, nothing is said
    }

    void printsTheLastThatFound()
    {
        m_page->CmdPrint.click();
        m_page->Check2[3].click();
        type(m_page->Text2[1], u"B1"_s);
        QCOMPARE(m_page->Grid3.Rows(), 13);
        QCOMPARE(m_page->Grid3.TextMatrix(1, 2) + m_page->Grid3.TextMatrix(1, 4), u"B120.00"_s);
        QCOMPARE(m_page->Grid3.TextMatrix(1, 6), u"2026-03-20"_s);
        m_page->Text2[1].setText(u"B9"_s);
        m->prompt.expect(u"找不到任何匹配的记录"_s);
        m_page->CmdFind.click();
        QCOMPARE(m_page->Grid3.TextMatrix(1, 2), QString());
        m->failAt({});
        m_page->CmdPrint.click();
        QCOMPARE(m_work->reports.shown, QStringList {u"JHSKReport"_s});
        QVERIFY(m->sent.last().contains(u"'B1'"));
    }

private:
    LoanQueryPage* m_page = nullptr;
};

QTEST_MAIN(TestLoanQuery)
#include "test_loan_query.moc"
