#include "desk/desk_form.h"
#include "exceptions/desk_fine_dialog.h"
#include "exceptions/fine_form.h"
#include "support/test_library.h"
#include "support/window_steps.h"
#include "support/workplace_double.h"

using namespace quilla;

/// A day at the desk through the real windows, and what every table holds at its end.
class TestCirculationDay : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m = std::make_unique<TestLibrary>();
        const Row rules {{u"recount"_s, u"2"_s}, {u"reday"_s, u"10"_s}, {u"fine"_s, u"0.1"_s},
            {u"defile"_s, u"0.5"_s}, {u"lost"_s, u"2"_s}, {u"orderday"_s, u"5"_s}};
        m->reader(u"R1"_s, rules);
        m->reader(u"R2"_s, rules);
        for (const QString& barcode : {u"B1"_s, u"B2"_s, u"B3"_s, u"B4"_s})
            m->copy(barcode);
        m->reservation(u"R2"_s, {{u"zskid"_s, u"2"_s}});
        m_work = std::make_unique<WorkplaceDouble>(m->session);
        m_fines = std::make_unique<DeskFineDialog>(m->session);
        m_desk = std::make_unique<TsjhFrm>(m_work->place, *m_fines);
        appear(*m_desk);
    }

    void day()
    {
        morning();
        renewals();
        returnWithReservation();
        lateReturn();
        loss();
        evening();

        QCOMPARE(m->prompt.takeComplaints(), QString());
        QCOMPARE(m->rows(u"select readercode,barcode,orderdate,yhdate,res from jhsk order by barcode"_s),
            (QStringList {u"R1|B1|2026-03-10|2026-04-09|2"_s, u"R2|B2|2026-03-12|2026-04-01|0"_s}));
        QCOMPARE(
            m->rows(u"select barcode,readercode,orderdate,yhdate,backdate from jhslsk order by jhslsk"_s),
            (QStringList {u"B1|R1|2026-03-10|2026-03-30|2026-03-10"_s,
                u"B1|R1|2026-03-10|2026-04-09|2026-03-10"_s, u"B2|R1|2026-03-10|2026-03-30|2026-03-10"_s,
                u"B3|R1|2026-03-10|2026-03-30|2026-04-05"_s, u"B4|R1|2026-03-10|2026-03-30|2026-04-05"_s}));
        QCOMPARE(m->rows(u"select barcode,borrowstatus,bookstatus from sck order by barcode"_s),
            (QStringList {u"B1|False|借出"_s, u"B2|False|借出"_s, u"B3|True|库本"_s, u"B4|False|丢失"_s}));
        QCOMPARE(m->rows(u"select readercode,orderbook,yordercshu from dzk order by readercode"_s),
            (QStringList {u"R1|1|0"_s, u"R2|1|0"_s}));
        QCOMPARE(
            m->rows(
                u"select barcode,cause,yfmoney*100,sfmoney*100,oprater from fkk order by barcode,cause"_s),
            (QStringList {
                u"B3|超期|60|60|王馆员"_s, u"B4|丢失|4000|4000|王馆员"_s, u"B4|超期|60|60|王馆员"_s}));
        QCOMPARE(m->value(u"select barcode,cause,outdate from BookOut"_s), u"B4|丢失|2026-04-05"_s);
        QCOMPARE(m->value(u"select count(*) from yyk"_s), u"0"_s);
        QCOMPARE(m->broken(), QString());
    }

private:
    void morning()
    {
        type(m_desk->TxtReaderCode, u"R1"_s);
        for (const QString& barcode : {u"B1"_s, u"B2"_s, u"B3"_s, u"B4"_s}) {
            type(m_desk->TxtBarCode, barcode);
            QCOMPARE(m_desk->tMsg.text(), u"借书成功"_s);
        }
        QCOMPARE(m_desk->Grid1.Rows(), 5);
        QTest::keyClick(&m_desk->TxtBarCode, Qt::Key_Space);
    }

    void renewals()
    {
        for (int renewal = 0; renewal < 2; ++renewal) {
            m_desk->Check1.click();
            scanBack(u"B1"_s, u"续借成功"_s);
            QVERIFY(!m_desk->Check1.isChecked());
        }
        m->prompt.expect(u"此书刊已经续借2次，不能再续借。"_s);
        m_desk->Check1.click();
        scanBack(u"B1"_s, u"续借成功"_s);
        QCOMPARE(m_desk->TxtRetBook.selectedText(), u"B1"_s);
    }

    void returnWithReservation()
    {
        m->prompt.expect(u"读者证号为【R2】的读者最先预约了这本书。是否将这本书预约给这位读者？"_s)
            .answer(Answer::Yes);
        scanBack(u"B2"_s, u"还书成功"_s);
        QCOMPARE(m_desk->Grid2.TextMatrix(1, 1), u"B2"_s);
        QCOMPARE(m_desk->TxtRetBook.text(), QString());
    }

    /// Six days late: first the operator leaves the fine open, then takes it.
    void lateReturn()
    {
        m->setNow({QDate(2026, 4, 5), QTime(10, 0)});
        whenShown<FKmangerFrm>([](FKmangerFrm& form) { form.Command1[2].click(); });
        scanBack(u"B3"_s, u"取消还书"_s);
        whenShown<FKmangerFrm>([](FKmangerFrm& form) { form.Command1[1].click(); });
        scanBack(u"B3"_s, u"还书成功"_s);
    }

    /// Late and lost: both fines, and the copy leaves the collection.
    void loss()
    {
        whenShown<FKmangerFrm>([](FKmangerFrm& form) {
            form.Check1[2].click();
            form.Command1[1].click();
        });
        scanBack(u"B4"_s, u"还书成功"_s);
    }

    /// The copy that was set aside goes to its reader, if the hold still lives; it died on 2026-03-15.
    void evening()
    {
        m->setNow({QDate(2026, 3, 12), QTime(18, 0)});
        QTest::keyClick(&m_desk->TxtRetBook, Qt::Key_Space);
        type(m_desk->TxtReaderCode, u"R2"_s);
        type(m_desk->TxtBarCode, u"B2"_s);
        QCOMPARE(m_desk->tMsg.text(), u"借书成功"_s);
    }

    void scanBack(const QString& barcode, const QString& message)
    {
        type(m_desk->TxtRetBook, barcode);
        QCOMPARE(m_desk->tMsg.text(), message);
    }

    std::unique_ptr<TestLibrary> m;
    std::unique_ptr<WorkplaceDouble> m_work;
    std::unique_ptr<DeskFineDialog> m_fines;
    std::unique_ptr<TsjhFrm> m_desk;
};

QTEST_MAIN(TestCirculationDay)
#include "test_circulation_day.moc"
