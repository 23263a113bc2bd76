#include "exceptions/fine_form.h"
#include "exceptions/fine_screen_double.h"
#include "support/screen_test.h"

using namespace quilla;

/// The fine screen by keys and mouse.
class TestFineForm : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        m->reader(u"R1"_s, FineRules);
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-07"_s);
        m->loan(u"B2"_s, u"R1"_s, u"2026-03-10"_s);
    }

private Q_SLOTS:
    void enterLooksUpAndMovesOn()
    {
        open();
        QVERIFY(m_form->Text1[0].hasFocus());
        for (const int index : {4, 7, 10})
            QVERIFY(!m_form->Text1[index].isEnabled());
        type(m_form->Text1[0], u"R1"_s);
        QCOMPARE(focusName(), u"Text1(1)"_s);
        QCOMPARE(m_form->Text1[1].text(), u"甲"_s);
        QCOMPARE(m_form->Grid1[0].TextMatrix(2, 0) + m_form->Grid1[0].TextMatrix(2, 3), u"B22026-03-10"_s);
        m->prompt.expect(u"此条形码不存在 或 不存在借阅信息。"_s);
        typeInto(m_form->Text1[2], u"B9"_s);
        QCOMPARE(m_form->Text1[0].text() + focusName(), u"Text1(2)"_s);
    }

    void faultyAmountComesBackIntoItsBox()
    {
        open();
        m_form->Text1[2].setFocus();
        QTest::keyClicks(&m_form->Text1[2], u"B1"_s);
        QTest::mouseClick(&m_form->Check1[1], Qt::LeftButton); // the look-up comes first
        QCOMPARE(m_form->SSTab1.currentIndex(), 1);
        QCOMPARE(m_form->Text1[7].text() + m_form->lXinXi[1].text(), u"10.00=(20.00*0.5)"_s);
        m_form->Text1[8].setFocus();
        QTest::keyClicks(&m_form->Text1[8], u"zehn"_s); // over the selected text
        m->prompt.expect(u"无效数字格式，取消该操作。"_s);
        m_form->SSTab1.setCurrentIndex(4);
        QCoreApplication::processEvents();
        QCOMPARE(m_form->SSTab1.currentIndex(), 1);
        QCOMPARE(m_form->Text1[8].text() + focusName(), u"Text1(8)"_s);
    }

    /// An access key presses a button without taking the focus, and still the box is looked up first.
    void accessKeyLeavesTheBoxFirst()
    {
        open();
        m_form->Text1[2].setFocus();
        QTest::keyClicks(&m_form->Text1[2], u"B1"_s);
        QTest::keyClick(m_form, Qt::Key_S, Qt::AltModifier);
        QTRY_COMPARE(m_form->SavedFlag(), u"yes"_s);
        QCOMPARE(m->value(u"select readercode,sfmoney from fkk"_s), u"R1|0.3"_s);
    }

    void deskLocksReaderAndBook()
    {
        open(u"E"_s);
        m_form->Text1[2].setText(u"B2"_s);
        m_form->Text1_LostFocus(2);
        for (int index = 0; index < 4; ++index)
            QVERIFY(!m_form->Text1[index].isEnabled());
        QVERIFY(!m_form->Check1[0].isEnabled() && !m_form->Check1[0].isChecked());
        QCOMPARE(focusName(), u"Command1(1)"_s);
        QVERIFY(m_form->lHint.text().contains(u"没有超期罚款"));
        m->prompt.expect(u"请选择罚款类别（罚款原因）。"_s); // due today: no fine of its own
        m_form->Command1[1].click();
        QCOMPARE(focusName(), u"Check1(1)"_s);
        QTest::keyClick(&m_form->Check1[1], Qt::Key_Space);
        QCOMPARE(m_form->lSum.text() + m_form->lHint.text(), u"合计：10.00"_s);
        m_form->Command1[0].click();
        QVERIFY(!m_form->isVisible());
        QCOMPARE(m->value(u"select cause,sfmoney from fkk"_s), u"污损|10"_s);
    }

    void savedAndKeptOpen()
    {
        open();
        m_form->Text1[2].setText(u"B1"_s);
        m_form->Text1_LostFocus(2);
        m_form->Text1[5].setText(u"0.2"_s);
        m_form->Command1[0].click();
        QVERIFY(m_form->isVisible());
        QCOMPARE(m_form->Grid1[0].TextMatrix(1, 0), u"B2"_s);
        QCOMPARE(m_form->Grid1[1].TextMatrix(1, 2) + m_form->Grid1[1].TextMatrix(1, 3), u"超期0.20"_s);
        m_form->Command1[2].click();
        QVERIFY(!m_form->isVisible());
    }

private:
    void open(const QString& mode = u"A"_s) { m_form = &opened<FKmangerFrm>(m->session, mode); }

    FKmangerFrm* m_form = nullptr;
};

QTEST_MAIN(TestFineForm)
#include "test_fine_form.moc"
