#include "output/export_desk.h"
#include "platform/grid/grid_model.h"
#include "platform/ui/form/working_progress.h"
#include "support/file_mode.h"
#include "support/library_test.h"
#include "support/progress_double.h"
#include "support/sheet_reader.h"
#include "support/window_steps.h"
#include "support/workplace_double.h"

#include <QDir>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>

#include <csignal>
#include <sys/resource.h>

using namespace quilla;

namespace {

/// No file may grow beyond this while it lives: as on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit {bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before {};
};

const ExportLayout FineLayout {u"清单"_s,
    {{u"书名"_s, u"BOOKNAME"_s, 40}, {u"条码"_s, u"barcode"_s, 13},
        {u"金额"_s, u"sfmoney"_s, 10, CellFormat::Money}, {u"日期"_s, u"opratedate"_s, 0},
        {u"天数"_s, u"days"_s, 7}}};

} // namespace

/// Spreadsheets as another program reads them.
class TestExport : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_program = {};
        m_program.place = m_folder->path();
        m_progress = {};
    }
    void finish() override { QCOMPARE(m_progress.begun, m_progress.ended); }

private Q_SLOTS:
    void listCellForCell()
    {
        fine(u"=1+1"_s, u"0001"_s, u"12.5"_s, u"2003-05-31 23:59:59"_s);
        fine(u"  他说\"it's\" <&> {=A1}  "_s, u"0002"_s, u"null"_s, u"null"_s);
        fine(u"null"_s, u"123456789012345678"_s, u"0"_s, u"1900-01-01"_s);
        fine(u"http://x.cn"_s, u"2003-05-31"_s, u"-3.05"_s, u"2004-02-29"_s);
        exportList(exporter(), FineLayout, m_select, NothingToPrint);
        QCOMPARE(files(), QStringList {u"清单.xlsx"_s});
        QCOMPARE(modeOf(m_folder->filePath(u"清单.xlsx"_s)), 0600u);
        QCOMPARE(m_program.shown, QStringList {m_folder->filePath(u"清单.xlsx"_s)});
        QCOMPARE(m_progress.done, m_progress.total);
        const QString ground = u" solid FFCCFFCC center"_s;
        const QStringList cells {u"sheet Sheet1 7 A1:E2"_s, u"widths A=41 B=14 C=11 E=8"_s,
            u"A1 s \"清单\" 宋体 14 center center"_s, u"A3 s \"书名\""_s + ground,
            u"B3 s \"条码\""_s + ground, u"C3 s \"金额\""_s + ground, u"D3 s \"日期\""_s + ground,
            u"E3 s \"天数\""_s + ground, u"A4 s \"=1+1\" General"_s, u"B4 s \"0001\" General"_s,
            u"C4 n 12.5 0.00"_s, u"D4 d \"2003-05-31\" yyyy-mm-dd"_s, u"E4 n 7 General"_s,
            u"A5 s \"他说\\\"it's\\\" <&> {=A1}\" General"_s, u"B5 s \"0002\" General"_s, u"E5 n 7 General"_s,
            u"B6 s \"123456789012345678\" General"_s, u"C6 n 0 0.00"_s, u"D6 s \"1900-01-01\" General"_s,
            u"E6 n 7 General"_s, u"A7 s \"http://x.cn\" General"_s, u"B7 s \"2003-05-31\" General"_s,
            u"C7 n -3.05 0.00"_s, u"D7 d \"2004-02-29\" yyyy-mm-dd"_s, u"E7 n 7 General"_s,
            u"sheet Sheet2 1 "_s, u"widths A=41 B=14 C=11 E=8"_s, u"sheet Sheet3 1 "_s,
            u"widths A=41 B=14 C=11 E=8"_s};
        QCOMPARE(readBack(m_program.shown[0]).join(u'\n'), cells.join(u'\n'));
        exportList(exporter(), FineLayout, m_select, NothingToPrint); // an older file is not written over
        QCOMPARE(files(), (QStringList {u"清单 (2).xlsx"_s, u"清单.xlsx"_s}));
    }

    void gridCellForCell()
    {
        GridModel grid;
        grid.setFormatString(u"^单位|^证号|^小计"_s);
        grid.addRow({QString(10'000, u'书'), u" 0012 "_s, u"15"_s});
        grid.addRow({QString(40'000, u'x'), u"12"_s, u"0.50"_s});
        grid.addRow({u"a\tb\x01"_s, u""_s, u"007"_s});
        grid.addRow({u"-"_s, u""_s, u"1234567890123456"_s});
        // would be an A, and a file that nobody can read
        grid.addRow({u"_x0041_\xffff\xfffe"_s, u""_s, u""_s});
        const ExportLayout layout {u"统计/表"_s,
            {{u"单位"_s, {}, 15, CellFormat::Text}, {u"证号"_s, {}, 10, CellFormat::Text},
                {u"小计"_s, {}, 7}}};
        exportGrid(exporter(), layout, grid, 5);
        QCOMPARE(m_program.shown, QStringList {m_folder->filePath(u"统计-表.xlsx"_s)});
        QStringList cells = readBack(m_program.shown[0]).mid(6, 11);
        QVERIFY2(cells[6].startsWith(u"A6 s \"a\\tb"), qPrintable(cells[6]));
        cells.removeAt(6);
        const QStringList expected {u"A4 s \"%1\" General"_s.arg(QString(10'000, u'书')),
            u"B4 s \"0012\" General"_s, u"C4 n 15 General"_s,
            u"A5 s \"%1\" General"_s.arg(QString(32'767, u'x')), u"B5 s \"12\" General"_s,
            u"C5 n 0.5 General"_s, u"C6 s \"007\" General"_s, u"A7 s \"-\" General"_s,
            u"C7 s \"1234567890123456\" General"_s, u"A8 s \"_x005F_x0041_\xfffd\xfffd\" General"_s};
        QCOMPARE(cells, expected);
    }

    /// One row more than a sheet holds stands under captions of its own, without a title.
    void secondSheet()
    {
        for (int digit = 0; digit < 10; ++digit)
            m->insert(u"dzdw"_s, {{u"readunit"_s, QString::number(digit)}});
        const QString select
            = u"select top 50001 a.readunit+b.readunit+c.readunit+d.readunit+e.readunit as unit from dzdw a,"
              "dzdw b,dzdw c,dzdw d,dzdw e order by a.readunit,b.readunit,c.readunit,d.readunit,e.readunit"_s;
        exportList(exporter(), {u"大表"_s, {{u"单位"_s, u"unit"_s, 8}}}, select, NothingToPrint);
        QCOMPARE(m_progress.done, 50'001);
        QCOMPARE(rowsOfSheets(200'000), (std::vector<qsizetype> {50'000, 50'000, 100'000}));
        const QStringList cells = readBack(m_program.shown[0]);
        QCOMPARE(cells[0], u"sheet Sheet1 50003 A1:A2"_s);
        QCOMPARE(cells[50'003], u"A50003 s \"49999\" General"_s);
        QCOMPARE(cells.mid(50'004, 4).join(u'\n'),
            u"sheet Sheet2 2 \nwidths A=9\nA1 s \"单位\" solid FFCCFFCC center\nA2 s \"50000\" General"_s);
    }

    void nothingToExport()
    {
        m->prompt.expect(u"没有可以打印的信息！"_s).titled(u"操作提示");
        exportList(exporter(), FineLayout, {}, NothingToPrint);
        m->prompt.expect(u"没有符合条件的记录！"_s).titled(u"操作提示");
        exportList(exporter(), FineLayout, m_select, NothingToPrint);
        m->prompt.expect(u"没有需要导出的数据！"_s).titled(u"操作提示");
        exportGrid(exporter(), FineLayout, GridModel(), 0);
        QVERIFY(files().isEmpty() && m_program.shown.isEmpty());
    }

    void failuresAreTold()
    {
        for (int row = 0; row < 300; ++row)
            fine(QString(400, u'x'), QString::number(row), u"1"_s, u"2003-05-31"_s);
        const auto fails = [this](const QString& words, const QString& select, const ExportLayout& layout) {
            m->prompt.expectStart(u"出现意外错误！详细信息如下：\n"_s + words);
            exportList(exporter(), layout, select, NothingToPrint);
        };
        fails({}, u"select nowhere from fkk"_s, FineLayout);
        fails({}, m_select, {u"清单"_s, {{u"?"_s, u"nosuch"_s}}});
        m_program.place = u"/nonexistent/folder"_s;
        fails(u"无法写入文件 "_s, m_select, FineLayout);
        m_program.place = m_folder->path();
        for (const int bytes : {100'000, 1'000}) { // the rows do not fit; the file, packed, would
            const FullDisk disk(bytes);
            fails(bytes == 100'000 ? u"磁盘已满"_s : QString(), m_select, FineLayout);
        }
        QCOMPARE(files(), QStringList());
        QVERIFY(m_program.shown.isEmpty());
    }

    /// The export worked even so.
    void noProgramToShowIt()
    {
        fewFines();
        m_program.works = false;
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            m->prompt.expectStart(u"数据已导出到文件：\n"_s + m_folder->path())
                .icon(Icon::Information)
                .answer(answer);
            exportList(exporter(), FineLayout, m_select, NothingToPrint);
        }
        QCOMPARE(m_program.folders, m_program.shown.mid(1));
        QCOMPARE(files().size(), 2);
    }

    void cancelLeavesNothing()
    {
        fewFines();
        for (const qsizetype after : {0, 1, 4}) {
            m_progress = {};
            m_progress.endAt = after;
            exportList(exporter(), FineLayout, m_select, NothingToPrint);
            QCOMPARE(m_progress.done, after);
        }
        QVERIFY(files().isEmpty() && m_program.shown.isEmpty());
    }

    void cancelByTheButton()
    {
        fewFines();
        auto screen = std::make_unique<QWidget>();
        const auto run = [&](const std::function<void(WorkingFrm&)>& meanwhile) {
            WorkingProgress progress(screen.get());
            QTimer::singleShot(0, qApp, [&] {
                QVERIFY(QGuiApplication::overrideCursor() && !screen->isEnabled());
                meanwhile(*screen->findChild<WorkingFrm*>());
            });
            exportList({m->session, progress, m_program}, FineLayout, m_select, NothingToPrint);
            QVERIFY(!QGuiApplication::overrideCursor());
        };
        run([](WorkingFrm& form) { form.cmdQuit.click(); });
        QVERIFY(files().isEmpty() && m_program.shown.isEmpty());
        run([](WorkingFrm&) {});
        QCOMPARE(files(), QStringList {u"清单.xlsx"_s});
        QVERIFY(screen->isEnabled() && !screen->findChild<WorkingFrm*>());
        run([&](WorkingFrm&) { screen.reset(); }); // the screen is closed in the middle of its run
        QCOMPARE(m_program.shown.size(), 1);
    }

    /// A scan goes on where the operator is when an export of another screen ends.
    void focusStaysWhereTheOperatorWent()
    {
        fewFines();
        for (const bool goes : {false, true}) {
            QMdiArea area;
            QWidget list;
            QPushButton button(&list);
            QLineEdit desk;
            QMdiSubWindow* deskWindow = area.addSubWindow(&desk);
            area.setActiveSubWindow(area.addSubWindow(&list));
            appear(area);
            button.setFocus();
            WorkingProgress progress(&list);
            QTimer::singleShot(0, qApp, [&] {
                if (goes) area.setActiveSubWindow(deskWindow);
                if (goes) desk.setFocus();
            });
            exportList({m->session, progress, m_program}, FineLayout, m_select, NothingToPrint);
            appear(area);
            QCOMPARE(QApplication::focusWidget(), goes ? static_cast<QWidget*>(&desk) : &button);
        }
    }

    void layouts()
    {
        using enum ListExport;
        const std::pair<ListExport, QString> sources[] {{Readers, u"dzk"_s}, {Withdrawals, u"BookOut"_s},
            {LoanHistory, u"JhslskV"_s}, {OpenLoans, u"JhskV"_s}, {Fines, u"FkkV"_s},
            {LostBooks, u"BookOut"_s}, {Overdue, u"JhskCqV"_s}};
        for (const auto& [list, source] : sources) {
            QStringList fields;
            for (const ExportColumn& column : listLayout(list).columns)
                fields.append(column.field);
            m->rows(u"select "_s + fields.join(u',') + u" from "_s + source);
        }
    }

private:
    Exporter exporter() { return {m->session, m_progress, m_program}; }
    QStringList files() const { return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden); }

    void fine(const QString& bookname, const QString& barcode, const QString& money, const QString& date)
    {
        m->insert(u"fkk"_s,
            {{u"bookname"_s, bookname}, {u"barcode"_s, barcode}, {u"sfmoney"_s, money},
                {u"opratedate"_s, date}});
    }

    void fewFines()
    {
        for (int row = 0; row < 5; ++row)
            fine(u"x"_s, QString::number(row), u"1"_s, u"2003-05-31"_s);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    SheetsDouble m_program;
    CountedProgress m_progress;
    const QString m_select
        = u"select bookname,barcode,sfmoney,opratedate,7 as days from fkk order by barcode"_s;
};

QTEST_MAIN(TestExport)
#include "test_export.moc"
