#include "reservations/reservation_form.h"
#include "support/screen_test.h"

using namespace quilla;

/// Placing a reservation by keys and mouse: title 1 is out, title 2 has a copy on the shelf, title 3 is lost.
class TestReservationForm : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        for (const QString& reader : {u"R1"_s, u"R2"_s})
            m->reader(reader, {{u"ordercount"_s, u"2"_s}});
        m->copy(u"B1"_s, {{u"bookstatus"_s, u"借出"_s}});
        m->copy(u"B2"_s);
        m->copy(u"B3"_s, {{u"bookstatus"_s, u"丢失"_s}});
        m->copy(u"B1b"_s, {{u"bookstatus"_s, u"典藏"_s}, {u"zskid"_s, u"1"_s}});
        m->send(u"delete from zsk where zskid=4"_s);
        m->send(u"update zsk set isbn='7-'+convert(varchar,zskid)"_s);
        m_form = &opened<frmTushuYuYue>(m->session);
        QCOMPARE(focusName(), u"Text1"_s);
    }

private Q_SLOTS:
    /// One title for one reader after the other.
    void reserves()
    {
        m->prompt.expect(u"请输入检索条件！"_s).titled(OperationTitle);
        m_form->cmdQuery.click();
        enter(m_form->Text1, u"书名1"_s);
        QCOMPARE(chosen(), u"7-1|书名1|B1|reserve"_s);
        QCOMPARE(focusName(), u"Text2(0)"_s);
        clickLine(m_form->Grid2, 2, Qt::LeftButton, 2);
        QCOMPARE(chosen(), u"7-1|书名1|B1b|reserve"_s);
        for (const QString& reader : {u"R1"_s, u"R2"_s}) {
            m->prompt.expect(u"确实要预约【书名1】吗？(y/n)"_s).answer(Answer::Yes);
            m->prompt.expect(u"图书预约成功！"_s);
            type(m_form->Reader.Text2[0], reader);
            QCOMPARE(m_form->Reader.Text2[0].text() + m_form->Reader.Text2[1].text(), QString());
            QCOMPARE(focusName(), u"Text2(0)"_s);
        }
        QCOMPARE(m->rows(u"select readercode,zskid from yyk order by readercode"_s),
            (QStringList {u"R1|1"_s, u"R2|1"_s}));

        m->prompt.expect(u"确实要预约【书名1】吗？(y/n)"_s).answer(Answer::Yes);
        m->prompt.expectStart(u"出现意外错误！"_s);
        type(m_form->Reader.Text2[0], u"R9"_s);
        QCOMPARE(m_form->Reader.Text2[0].selectedText() + m_form->Reader.Text2[1].text(), u"R9"_s);
    }

    /// The shelf is judged by the lines shown, all of them.
    void shelfAsLoaded()
    {
        enter(m_form->Text1, u"书名2"_s);
        m->send(u"update sck set bookstatus='借出'"_s);
        m->prompt.expect(u"确实要预约【书名2】吗？(y/n)"_s).answer(Answer::Yes);
        m->prompt.expectStart(u"该种图书有可以借的书"_s);
        type(m_form->Reader.Text2[0], u"R1"_s);
    }

    void keysMoveButDoNotChoose()
    {
        enter(m_form->Text1, u"书名"_s);
        m_form->Grid1.setFocus();
        QTest::keyClick(&m_form->Grid1, Qt::Key_Down);
        QCOMPARE(chosen(), u"7-1|书名1|B1|reserve"_s);
        m->prompt.expect(u"图书选择可能有问题，请检查后重新预约！"_s).titled(OperationTitle);
        m_form->Reader.Text2[0].setText(u"R1"_s);
        m_form->cmdYuYue[0].click();
        QCOMPARE(focusName(), u"cmdYuYue(0)"_s);

        m_form->Grid1.setFocus();
        QTest::keyClick(&m_form->Grid1, Qt::Key_Return);
        QCOMPARE(chosen(), u"7-2|书名2|B2|reserve"_s);
        clickLine(m_form->Grid1, 3, Qt::LeftButton, 2); // lost
        QCOMPARE(chosen(), u"7-3|书名3||"_s);
        QCOMPARE(m_form->Grid2.Rows(), 2);
        type(m_form->Reader.Text2[0], u"R1"_s);

        m->failAt(u"from zsk"_s);
        m->prompt.expect(u"语句失败：from zsk"_s).titled(OperationTitle);
        m_form->cmdQuery.click();
        QCOMPARE(chosen() + m_form->labZhongShu.text(), u"7-3|书名3||3"_s);
        m->failAt({});
        m_form->Text1.setText(u"无此书"_s);
        m_form->cmdQuery.click();
        QCOMPARE(chosen() + m_form->labZhongShu.text(), u"|||0"_s);
    }

    void longTitleLeavesTheButtonsInSight()
    {
        m->send(u"update zsk set bookname='%1' where zskid=1"_s.arg(QString(150, u'长')));
        const QSize usual = m_form->size();
        enter(m_form->Text1, u"长"_s);
        QCOMPARE(m_form->labBookName.text().size(), 150);
        QTRY_VERIFY(m_form->labBookName.height() > 3 * m_form->fontMetrics().height());
        QCOMPARE(m_form->size(), usual);
        for (QPushButton& button : m_form->cmdYuYue)
            QCOMPARE(button.visibleRegion().boundingRect(), button.rect());
    }

    void tipOfTheLineUnderThePointer()
    {
        QCOMPARE(m_form->Tip.ToolText(&m_form->Grid1), u"Tool1"_s);
        enter(m_form->Text1, u"书名"_s);
        clickLine(m_form->Grid1, 2, Qt::RightButton, 2);
        QVERIFY(m_form->Tip.ToolText(&m_form->Grid1).startsWith(u"正 题 名:书名2\n责 任 者:著者2\n"));
        QCOMPARE(m_form->Grid1.Row(), 1);
        m_form->Text1.setFocus();
        QCoreApplication::processEvents();
        QCOMPARE(m_form->Tip.ToolText(&m_form->Grid1), QString());
    }

    void leavingEmptiesAndHides()
    {
        enter(m_form->Text1, u"书名1"_s);
        m_form->Reader.Text2[0].setText(u"R1"_s);
        m_form->Reader.Text2[1].setText(u"x"_s);
        m_form->close();
        QVERIFY(!m_form->isVisible());
        QCOMPARE(
            chosen() + m_form->Text1.text() + m_form->Reader.Text2[0].text() + m_form->Reader.Text2[1].text(),
            u"|||"_s);
        QCOMPARE(m_form->Grid1.TextMatrix(1, 0) + m_form->Grid2.TextMatrix(1, 0), QString());
    }

private:
    QString chosen() const
    {
        return QStringList {m_form->labBookISBN.text(), m_form->labBookName.text(), m_form->labBarCode.text(),
            m_form->cmdYuYue[0].isEnabled() ? u"reserve"_s : QString()}
            .join(u'|');
    }

    frmTushuYuYue* m_form = nullptr;
};

QTEST_MAIN(TestReservationForm)
#include "test_reservation_form.moc"
