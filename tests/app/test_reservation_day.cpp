#include "app/screen_register.h"
#include "desk/desk_form.h"
#include "frame/main_form.h"
#include "output/report_designs.h"
#include "platform/report/report_preview.h"
#include "platform/report/report_previews.h"
#include "report/pdf_text.h"
#include "reservations/reservation_form.h"
#include "reservations/reservation_list_form.h"
#include "support/test_library.h"
#include "support/window_steps.h"
#include "support/workplace_double.h"

using namespace quilla;

/// Reservations from the search to the clearing, through the menu and the windows of the desk.
class TestReservationDay : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void day()
    {
        open();
        reserve(u"书名1"_s, u"R1"_s, u"图书预约成功！"_s);
        reserve(u"书名2"_s, u"R2"_s, u"图书预约成功！"_s);
        turnDesk(1);
        comesBackFor(u"R1"_s, u"B1"_s);
        comesBackFor(u"R2"_s, u"B2"_s);
        printNotices();
        collect();
        clearAfterTheLastDay();
        atTheLimit();
        QCOMPARE(m.prompt.takeComplaints(), QString());
        QCOMPARE(m.rows(u"select readercode,orderbook,yordercshu from dzk where readercode<'R8'"
                        " order by readercode"_s),
            (QStringList {u"R1|1|0"_s, u"R2|0|1"_s}));
        QCOMPARE(m.value(u"select count(*) from yyk"_s), u"0"_s);
        QCOMPARE(m.rows(u"select barcode,bookstatus from sck order by barcode"_s),
            (QStringList {u"B1|借出"_s, u"B2|库本"_s}));
        QCOMPARE(m.broken(), QString());
        m_window.reset();
    }

private:
    void open()
    {
        for (const QString& reader : {u"R1"_s, u"R2"_s})
            m.reader(reader, {{u"ordercount"_s, u"1"_s}, {u"orderday"_s, u"5"_s}});
        m.reader(u"R8"_s);
        for (const QString& barcode : {u"B1"_s, u"B2"_s}) {
            m.copy(barcode);
            m.loan(barcode, u"R8"_s, u"2026-03-20"_s);
        }
        m_window = std::make_unique<LtMainFrm>(m_outputs, m.session, allScreens(), allActions());
        appear(*m_window);
        choose(u"图书借还"_s);
        m_desk = m_window->findChild<TsjhFrm*>();
    }

    void choose(const QString& item)
    {
        for (QAction* action : m_window->findChildren<QAction*>())
            if (action->text() == item) return action->trigger();
        QFAIL(qPrintable(item));
    }

    void reserve(const QString& title, const QString& reader, const QString& told)
    {
        choose(u"图书预约"_s);
        auto* form = m_window->findChild<frmTushuYuYue*>();
        QCOMPARE(focusName(), u"Text1"_s);
        enter(form->Text1, title);
        m.prompt.expect(u"确实要预约【%1】吗？(y/n)"_s.arg(title)).answer(Answer::Yes);
        m.prompt.expectStart(told);
        type(*QApplication::focusWidget(), reader);
        form->cmdYuYue[1].click();
    }

    void turnDesk(int page)
    {
        choose(u"图书借还"_s);
        m_desk->SSTab1.setCurrentIndex(page);
    }

    void comesBackFor(const QString& reader, const QString& barcode)
    {
        m.prompt.expect(u"读者证号为【%1】的读者最先预约了这本书。是否将这本书预约给这位读者？"_s.arg(reader))
            .answer(Answer::Yes);
        type(m_desk->TxtRetBook, barcode);
        QCOMPARE(m_desk->tMsg.text(), u"还书成功"_s);
    }

    void printNotices()
    {
        m.prompt.expectStart(u"请将打印机设置为【A4--横向(宽行)打印】"_s);
        choose(u"打印预约图书回库通知单"_s);
        auto* preview = shown<ReportPreview>();
        QVERIFY(preview);
        const QString page = textsOf(preview->pages(), *m_reports.fonts()).join(u'\f');
        QVERIFY2(
            page.startsWith(
                u"以下预约图书已经还回，欢迎预约者前来借阅 书 名 条形码 最先预约 读者证号 预约日期 到书日期 截止日期"_s),
            qPrintable(page));
        for (const QString& number : {u"1"_s, u"2"_s})
            QVERIFY2(page.contains(u"书名%1 B%1 读者R%1 R%1 2026-03-10 2026-03-10 2026-03-15"_s.arg(number)),
                qPrintable(page));
        QVERIFY2(page.endsWith(u"打印日期:2026年3月10日 第1页 共1页"_s), qPrintable(page));
        const QString sheet = m.folder.filePath(u"notices.xlsx"_s);
        QVERIFY(preview->save(sheet));
        QVERIFY(QFileInfo(sheet).size() > 0);
        preview->close();
        appear(*m_window);
    }

    void collect()
    {
        m.setNow({QDate(2026, 3, 12), QTime(9, 0)});
        turnDesk(0);
        type(m_desk->TxtReaderCode, u"R1"_s);
        type(m_desk->TxtBarCode, u"B1"_s);
        QCOMPARE(m_desk->tMsg.text(), u"借书成功"_s);
    }

    void clearAfterTheLastDay()
    {
        m.setNow({QDate(2026, 3, 16), QTime(9, 0)});
        choose(u"查看预约信息"_s);
        auto* list = m_window->findChild<frmTuShuYuyueList*>();
        type(list->Reader.Text2[0], u"R2"_s);
        QCOMPARE(list->Grid1.current(7) + list->Grid1.current(6), u"到书2026-03-15"_s);
        m.prompt.expect(u"确定要清除过期的预约信息吗？"_s).answer(Answer::Yes);
        m.prompt.expect(u"成功清除过期的预约信息！"_s);
        choose(u"清除过期的预约"_s);
        m.prompt.expectStart(u"请将打印机设置为"_s);
        m.prompt.expect(u"没有符合条件的图书！"_s);
        choose(u"打印预约图书回库通知单"_s);
        m.prompt.expect(u"该读者没有预约信息！"_s);
        list->cmdYuYue[0].click();
        list->cmdYuYue[1].click();
        QVERIFY(!list->isVisible());
    }

    /// A cleared reservation goes on counting.
    void atTheLimit()
    {
        reserve(u"书名1"_s, u"R2"_s, u"该读者预约图书的册数已经到达规定的册数！不能再预约了！\n"_s);
    }

    TestLibrary m;
    ReportPreviews m_reports {reportDesigns(), m.prompt, m.clock, [] { return QString(); }};
    SheetsDouble m_sheets;
    FormPrinterDouble m_printer;
    const Outputs m_outputs {m_reports, m_sheets, m_printer};
    std::unique_ptr<LtMainFrm> m_window;
    TsjhFrm* m_desk = nullptr;
};

QTEST_MAIN(TestReservationDay)
#include "test_reservation_day.moc"
