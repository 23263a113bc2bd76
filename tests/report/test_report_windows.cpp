#include "desk/loan_query_page.h"
#include "output/report_designs.h"
#include "platform/report/form_print.h"
#include "platform/report/report_preview.h"
#include "platform/report/report_previews.h"
#include "platform/ui/grid/flex_grid.h"
#include "report/pdf_text.h"
#include "support/file_mode.h"
#include "support/library_test.h"
#include "support/window_steps.h"
#include "support/write_file.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPrinter>
#include <QTimer>

using namespace quilla;

/// The preview, the printer, and forms that print themselves.
class TestReportWindows : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m_reports = std::make_unique<ReportPreviews>(
            reportDesigns(), m->prompt, m->clock, [] { return QString(); });
    }
    void finish() override
    {
        for (ReportPreview* window : windows())
            delete window;
    }

private Q_SLOTS:
    void everyPrintIsAWindowOfItsOwn()
    {
        QCOMPARE(show(1)->windowTitle(), u"打印预览 - 流通情况统计表"_s);
        show(1);
        QCOMPARE(windows().size(), 2);
        appear(*windows().front());
        QTest::keyClick(windows().front(), Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(windows().size(), 1);
    }

    void screensPrint()
    {
        m->reader(u"R1"_s);
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-20"_s);
        LoanQueryPage desk(m->session, *m_reports);
        desk.Check2[3].click();
        desk.Text2[1].setText(u"B1"_s);
        desk.CmdFind.click();
        desk.CmdPrint.click();
        QCOMPARE(windows().size(), 1);
        const QString text = textsOf(windows().front()->pages(), *m_reports->fonts()).join(u' ');
        QVERIFY2(text.contains(u"R1 B1 书名1"), qPrintable(text));
    }

    void errorsOpenNothing()
    {
        Recordset nothing;
        m->prompt.expect(u"报表“借书记录统计表”需要的字段 readercode 不在查询结果中。"_s)
            .titled(u"操作提示")
            .icon(Icon::Warning);
        m_reports->showReport(u"JHSKReport"_s, nothing);
        m_reports->showReport(u"JHSKCQRpt"_s, nothing); // is silent
        QCOMPARE(windows().size(), 0);
    }

    void pagesByKeys()
    {
        ReportPreview& preview = *show(100);
        appear(preview);
        const int last = preview.pages().pageCount() - 1;
        preview.cboZoom.setCurrentIndex(1); // the whole page: nothing to scroll
        const std::pair<Qt::Key, int> keys[] {{Qt::Key_End, last}, {Qt::Key_Home, 0}, {Qt::Key_PageDown, 1},
            {Qt::Key_PageUp, 0}, {Qt::Key_PageUp, 0}};
        for (const auto& [key, page] : keys) {
            QTest::keyClick(&preview, key);
            QCOMPARE(preview.page(), page);
            QCOMPARE(preview.cmdNext.isEnabled(), page < last);
        }
        preview.cboZoom.setCurrentText(u"200%"_s);
        QTest::keyClick(&preview, Qt::Key_PageDown);
        QCOMPARE(preview.page(), 0); // scrolls first
        preview.txtPage.setValue(3);
        QCOMPARE(preview.page(), 2);
    }

    void savesAndPrints()
    {
        ReportPreview& preview = *show(100);
        const QString file = m->folder.filePath(u"a.pdf"_s);
        QVERIFY(preview.save(file));
        QCOMPARE(modeOf(file), 0600u);
        QCOMPARE(int(textsOf(file).size()), preview.pages().pageCount());
        QProcess fonts;
        fonts.start(u"pdffonts"_s, {file});
        fonts.waitForFinished();
        const QString list = QString::fromUtf8(fonts.readAllStandardOutput());
        const QRegularExpression notEmbedded(u" no +(yes|no) +(yes|no) +\\d+ "_s);
        QVERIFY2(list.contains(u" yes ") && !list.contains(notEmbedded), qPrintable(list));
        m->prompt.expectStart(u"无法写入文件 /nowhere/a.pdf："_s).titled(u"操作提示");
        QVERIFY(!preview.save(u"/nowhere/a.pdf"_s));

        QPrinter printer;
        printer.setOutputFileName(m->folder.filePath(u"b.pdf"_s));
        setUpPrinter(printer, preview.pages());
        printer.setFromTo(2, 2);
        printPages(preview.pages(), FontBook(), printer);
        const QStringList printed = textsOf(m->folder.filePath(u"b.pdf"_s));
        QCOMPARE(int(printed.size()), 1);
        QCOMPARE(printed[0].count(u"a 1 2"), textsOf(file)[1].count(u"a 1 2"));
        printer.setOutputFileName(u"/dev/full"_s); // takes nothing, and is opened without a complaint
        QVERIFY_THROWS_EXCEPTION(Error, printPages(preview.pages(), FontBook(), printer));
    }

    /// Also when the name was typed without its ending.
    void asksBeforeAnOlderFileGoes()
    {
        ReportPreview& preview = *show(1);
        const QString older = m->folder.filePath(u"old.pdf"_s);
        writeFile(older, "old");
        bool asked = false;
        QTimer::singleShot(0, &preview, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            QTimer::singleShot(0, dialog, [&, dialog] {
                auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                asked = question != nullptr;
                if (question) question->reject();
                dialog->reject();
            });
            dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(m->folder.filePath(u"old"_s));
            static_cast<QDialog*>(dialog)->accept();
        });
        preview.cmdSave.click();
        QVERIFY(asked && QFileInfo(older).size() == 3);
    }

    /// The narrowest screen that desks have.
    void fitsOnTheScreen()
    {
        ReportPreview& preview = *show(400);
        QVERIFY(preview.minimumSizeHint().width() <= 1000);
        appear(preview);
        preview.cmdLast.click();
        const auto* page = preview.txtPage.findChild<QLineEdit*>();
        QVERIFY(page->width() > page->fontMetrics().horizontalAdvance(preview.txtPage.cleanText()) + 4);
    }

    /// As on the screen, longer than the form, longer than a page.
    void formsPrintTheirWholeGrid()
    {
        for (const auto& [lines, pages] : {std::pair(5, 1), std::pair(14, 1), std::pair(100, 5)}) {
            QWidget form;
            form.resize(800, 500);
            QLabel title(u"2003年流通工作量统计报表"_s, &form);
            title.setGeometry(200, 10, 400, 30);
            QLabel hidden(u"不打印"_s, &form);
            hidden.hide();
            FlexGrid grid(&form);
            grid.setGeometry(20, 60, 760, 300);
            QLabel date(u"打印日期："_s, &form);
            date.setGeometry(20, 400, 200, 30);
            grid.setFormatString(u"^月份|借出册数|罚款金额"_s);
            QString all = title.text();
            for (int line = 1; line <= lines; ++line) {
                const QStringList cells {u"%1月"_s.arg(line), u"R%1"_s.arg(line), u"1,234,567.00"_s};
                grid.cells().addRow(cells);
                all += u' ' + cells.join(u' ');
            }
            const FontBook fonts;
            const QStringList texts = textsOf(FormPages(form, Paper::Wide, fonts), fonts);
            QCOMPARE(int(texts.size()), pages);
            const QString captions = u" 月份 借出册数 罚款金额"_s;
            QString printed = u' ' + texts.join(u' ');
            QCOMPARE(printed.count(captions), pages);
            QCOMPARE(printed.remove(captions).mid(1), all + u" 打印日期："_s);
        }
    }

private:
    ReportPreview* show(int count)
    {
        QStringList parts(count, u"select 'a' as ItemKey,1 as JsCount,2 as HsCount"_s);
        Recordset rows = m->factory.open(m->connectionText).open(parts.join(u" union all "_s));
        m_reports->showReport(u"LtTjReport"_s, rows, {u"读者单位"_s, {}});
        return windows().back();
    }

    static QList<ReportPreview*> windows()
    {
        QList<ReportPreview*> found;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* preview = qobject_cast<ReportPreview*>(window)) found.append(preview);
        return found;
    }

    std::unique_ptr<ReportPreviews> m_reports;
};

QTEST_MAIN(TestReportWindows)
#include "test_report_windows.moc"
