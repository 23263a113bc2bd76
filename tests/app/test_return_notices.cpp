#include "app/screen_register.h"
#include "frame/main_form.h"
#include "output/report_designs.h"
#include "platform/report/report_preview.h"
#include "platform/report/report_previews.h"
#include "report/pdf_text.h"
#include "support/screen_test.h"

using namespace quilla;

/// What the menu does about reservations without a screen: the notices on paper, and the clearing.
class TestReturnNotices : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        m_reports = std::make_unique<ReportPreviews>(
            reportDesigns(), m->prompt, m->clock, [] { return QString(); });
    }

private Q_SLOTS:
    void printedUntilCleared()
    {
        for (const QString& title : {u"1"_s, u"2"_s})
            held(title);
        const Outputs outputs {*m_reports, m_work->sheets, m_work->printer};
        m_window = &opened<LtMainFrm>(outputs, m->session, allScreens(), allActions());
        printNotices();
        m->setNow({QDate(2026, 3, 16), QTime(9, 0)});
        m->prompt.expect(u"确定要清除过期的预约信息吗？"_s).answer(Answer::Yes);
        m->prompt.expect(u"成功清除过期的预约信息！"_s);
        choose(u"清除过期的预约"_s);
        m->prompt.expectStart(u"请将打印机设置为"_s);
        m->prompt.expect(u"没有符合条件的图书！"_s);
        choose(u"打印预约图书回库通知单"_s);
        m_screens.clear(); // before its outputs go
        QCOMPARE(m->value(u"select count(*) from yyk"_s), u"0"_s);
    }

private:
    /// A copy that came back today and is kept for a reader until the 15th.
    void held(const QString& title)
    {
        const QString barcode = u"B"_s + title;
        m->reader(u"R"_s + title);
        m->copy(barcode);
        m->reservation(u"R"_s + title,
            {{u"zskid"_s, title}, {u"barcode"_s, barcode}, {u"oldtime"_s, u"2026-03-15"_s},
                {u"orderstatus"_s, u"1"_s}});
        m->insert(u"jhslsk"_s,
            {{u"readercode"_s, u"R8"_s}, {u"barcode"_s, barcode}, {u"backdate"_s, u"2026-03-10"_s}});
    }

    void choose(const QString& item)
    {
        for (QAction* action : m_window->findChildren<QAction*>())
            if (action->text() == item) return action->trigger();
        QFAIL(qPrintable(item));
    }

    void printNotices()
    {
        m->prompt.expectStart(u"请将打印机设置为【A4--横向(宽行)打印】"_s);
        choose(u"打印预约图书回库通知单"_s);
        auto* preview = shown<ReportPreview>();
        QVERIFY(preview);
        const QString page = textsOf(preview->pages(), *m_reports->fonts()).join(u'\f');
        QVERIFY2(
            page.startsWith(
                u"以下预约图书已经还回，欢迎预约者前来借阅 书 名 条形码 最先预约 读者证号 预约日期 到书日期 截止日期"_s),
            qPrintable(page));
        for (const QString& number : {u"1"_s, u"2"_s})
            QVERIFY2(page.contains(u"书名%1 B%1 读者R%1 R%1 2026-03-01 2026-03-10 2026-03-15"_s.arg(number)),
                qPrintable(page));
        QVERIFY2(page.endsWith(u"打印日期:2026年3月10日 第1页 共1页"_s), qPrintable(page));
        preview->close();
    }

    std::unique_ptr<ReportPreviews> m_reports;
    LtMainFrm* m_window = nullptr;
};

QTEST_MAIN(TestReturnNotices)
#include "test_return_notices.moc"
