#include "desk/reader_picker_form.h"
#include "reservations/reservation_list_form.h"
#include "reservations/reservation_list_ops.h"
#include "support/screen_test.h"

using namespace quilla;

/// The list of a reader's reservations, by keys; R'1 has two, R2 none.
class TestReservationList : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        m->reader(u"R'1"_s, {{u"name"_s, u"王一"_s}});
        m->reader(u"R2"_s, {{u"name"_s, u"Wang"_s}});
        m->copy(u"B1"_s);
        m->send(u"update zsk set zch=7,fzqfh='/2'"_s);
        m->reservation(
            u"R'1"_s, {{u"barcode"_s, u"B1"_s}, {u"orderstatus"_s, u"1"_s}, {u"oldtime"_s, u"2026-03-09"_s}});
        m->reservation(u"R'1"_s, {{u"ordertime"_s, u"2026-02-28"_s}}); // entered later all the same
        m->reservation(u"gone"_s);
        m->reservation(u"R2"_s, {{u"zskid"_s, u"999"_s}}); // its title was deleted
        m_form = &opened<frmTuShuYuyueList>(m->session);
    }

private Q_SLOTS:
    void listsByEnter()
    {
        type(code(), u"  r'1 "_s);
        QCOMPARE(name(), u"王一"_s);
        QCOMPARE(lines(), u"I247/7|B1|2026-03-01|2026-03-09|到书;I247/7||2026-02-28||没到"_s);
        QCOMPARE(m_form->Grid1.FormatString(), ReservationListFormat);
        QVERIFY(m_form->Grid1.isColumnHidden(0));
    }

    void noReservations()
    {
        for (const auto& [typed, named] :
            {std::pair {u"R2"_s, u"Wang"_s}, std::pair {u"nobody"_s, QString()}}) {
            search(u"R'1"_s);
            m->prompt.expect(u"该读者没有预约信息！"_s);
            search(typed);
            QCOMPARE(name(), named);
            QCOMPARE(lines(), u"||||"_s);
        }
        search(u"gone"_s); // a reader that was deleted
        QCOMPARE(name() + lines(), u"I247/7||2026-03-01||没到"_s);
    }

    void withoutCode()
    {
        m_form->Reader.Text2[1].setText(u"王一"_s);
        code().setText(u" "_s);
        for (QWidget* control :
            {static_cast<QWidget*>(&m_form->Reader.Text2[1]), static_cast<QWidget*>(&m_form->cmdYuYue[0])}) {
            control->setFocus();
            QTest::keyClick(control, Qt::Key_Return);
            QCOMPARE(focusName(), u"Text2(0)"_s);
        }
        QCOMPARE(name() + lines(), u"||||"_s);
        m_form->Reader.Text2[1].setText(u"王一"_s);
        m_form->cmdYuYue[0].setFocus();
        code().setFocus();
        QCOMPARE(name(), QString());
        GridModel everybody;
        ListReservations(m->session, {}, everybody);
        QCOMPARE(everybody.Rows(), 4);
    }

    void failures()
    {
        search(u"R'1"_s);
        const QString before = lines();
        for (const auto& [statement, box] :
            {std::pair {u"select yyk"_s, u"Wang"_s}, std::pair {u"from dzk"_s, u"Wang"_s}}) {
            m->failAt(statement);
            m->prompt.expectStart(QString());
            search(u"R2"_s);
            QCOMPARE(name(), box);
            QCOMPARE(lines(), before);
        }
    }

    void picksReader()
    {
        search(u"R'1"_s);
        pick(1);
        QCOMPARE(code().text() + name(), QString());
        pick(0);
        QCOMPARE(code().text() + name(), u"R2Wang"_s);
    }

private:
    TextBox& code() { return m_form->Reader.Text2[0]; }
    QString name() { return m_form->Reader.Text2[1].text(); }

    void search(const QString& typed)
    {
        code().clear();
        type(code(), typed);
    }

    /// Opens the picker, where both boxes are empty by then, and presses 选定 (0) or 取消 (1).
    void pick(int button)
    {
        whenShown<ReaderPickerFrm>([&](ReaderPickerFrm& picker) {
            QCOMPARE(code().text() + name(), QString());
            type(picker.Text1, u"Wang"_s);
            picker.Command1.click();
            picker.Command2[button].click();
        });
        m_form->Reader.cmdDuZhe.click();
    }

    /// Call number, barcode, both dates and state of each line.
    QString lines()
    {
        QStringList lines;
        for (int row = 1; row < m_form->Grid1.Rows(); ++row) {
            QStringList cells;
            for (const int col : {1, 4, 5, 6, 7})
                cells.append(m_form->Grid1.TextMatrix(row, col));
            lines.append(cells.join(u'|'));
        }
        return lines.join(u';');
    }

    frmTuShuYuyueList* m_form = nullptr;
};

QTEST_MAIN(TestReservationList)
#include "test_reservation_list.moc"
