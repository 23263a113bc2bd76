#include "platform/ui/grid_model.h"
#include "platform/ui/grid_widths.h"
#include "support/cases.h"
#include "ui/reader_rows.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace quilla;

namespace {

QString marked(const GridFormat& format)
{
    QString text;
    for (const GridFormat::Column& column : format.columns)
        text += u"-<^>"_s[int(column.align == CellAlign::Default ? 0
                        : column.align == CellAlign::Left        ? 1
                        : column.align == CellAlign::Center      ? 2
                                                                 : 3)]
            + column.caption + u'/';
    return text;
}

QStringList column(const GridModel& grid, int col)
{
    QStringList texts;
    for (int row = 1; row < grid.Rows(); ++row)
        texts << grid.TextMatrix(row, col);
    return texts;
}

Qt::Alignment alignment(const GridModel& grid, int row, int col)
{
    return grid.data(grid.index(row - 1, col), Qt::TextAlignmentRole).value<Qt::Alignment>()
        & Qt::AlignHorizontal_Mask;
}

} // namespace

class TestGridModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsFormatStrings()
    {
        const struct {
            QString text, columns;
            bool marker = false;
        } formats[] {
            {u""_s, u""_s},
            {u"^条形码|<书     名|价格|>超期天数"_s, u"^条形码/<书     名/-价格/>超期天数/"_s},
            {u"<书名      |^操作员   "_s, u"<书名      /^操作员   /"_s}, // blanks behind are kept
            {u" ^甲|^^乙"_s, u"- ^甲/^^乙/"_s}, // only the first character is a mark
            {u"^|^标志  "_s, u"^/^标志  /"_s, true}, {u"|甲"_s, u"-/-甲/"_s, true}, {u"甲|"_s, u"-甲/-/"_s},
            {u">|甲"_s, u">/-甲/"_s}, // an empty right column is no marker
        };
        for (const auto& [text, columns, marker] : formats) {
            QCOMPARE(marked(GridFormat::parse(text)), columns);
            QCOMPARE(GridFormat::parse(text).hasMarker(), marker);
        }
    }

    void keepsItsCellsOverChangesOfSize()
    {
        GridModel grid;
        QAbstractItemModelTester tester(&grid, QAbstractItemModelTester::FailureReportingMode::QtTest);
        grid.setFormatString(u"甲|乙"_s);
        grid.setRows(3);
        grid.setTextMatrix(2, 1, u"x"_s);
        grid.setCols(3);
        QCOMPARE(grid.TextMatrix(2, 1), u"x");
        grid.setFormatString(u"^一"_s); // fewer sections than columns
        QCOMPARE(
            QStringList({grid.TextMatrix(0, 0), grid.TextMatrix(0, 1)}), QStringList({u"一"_s, u"乙"_s}));
        grid.setRows(2);
        grid.setRows(3);
        QCOMPARE(grid.TextMatrix(2, 1), QString());
        grid.setRows(0);
        QCOMPARE(grid.Rows(), 1);
        grid.setTextMatrix(7, 7, u"outside"_s);
        QCOMPARE(grid.TextMatrix(7, 7), QString());
    }

    void growsAndShrinksAsAList()
    {
        GridModel grid;
        QAbstractItemModelTester tester(&grid, QAbstractItemModelTester::FailureReportingMode::QtTest);
        grid.setFormatString(u"键|名"_s);
        QVERIFY(grid.isEmptyList());
        QCOMPARE(grid.addRow({u"a"_s, u"1"_s}), 1); // the one empty line is filled
        QCOMPARE(grid.addRow({u"b"_s, u"2"_s}), 2);
        QCOMPARE(grid.addRow({u"c"_s, u"3"_s}), 3);
        grid.setRowData(3, 33);
        grid.removeRow(2);
        QCOMPARE(column(grid, 0), QStringList({u"a"_s, u"c"_s}));
        QCOMPARE(grid.RowData(2), 33);
        QCOMPARE(grid.RowData(1), 0);
        QCOMPARE(grid.findRow(u"C "_s, 0), 2);
        QCOMPARE(grid.findRow(u""_s, 0), 0);
        grid.removeRow(1);
        grid.removeRow(1); // the only line is emptied and stays
        QCOMPARE(grid.Rows(), 2);
        QVERIFY(grid.isEmptyList());
        QCOMPARE(grid.RowData(1), 0);
    }

    void alignsByMarkAndByContent()
    {
        GridModel grid;
        grid.setFormatString(u"<左|^中|>右|随"_s);
        grid.setRows(3);
        grid.setTextMatrix(1, 0, u"12"_s);
        grid.setTextMatrix(1, 3, u"-1.50"_s);
        grid.setTextMatrix(2, 3, u"1.5元"_s);
        QCOMPARE(alignment(grid, 1, 0), Qt::AlignLeft);
        QCOMPARE(alignment(grid, 1, 1), Qt::AlignHCenter);
        QCOMPARE(alignment(grid, 1, 2), Qt::AlignRight);
        QCOMPARE(alignment(grid, 1, 3), Qt::AlignRight);
        QCOMPARE(alignment(grid, 2, 3), Qt::AlignLeft);
    }

    void rewritesBooleans()
    {
        GridModel grid;
        grid.setFormatString(u"过期可借"_s);
        for (const QString& text : {u"True"_s, u"False"_s, u"true"_s, u"1"_s})
            grid.addRow({text});
        grid.setRows(6);
        grid.yesNo(0);
        QCOMPARE(column(grid, 0), QStringList({u"是"_s, u"否"_s, u"否"_s, u"否"_s, u""_s}));
    }

    void sortsLines()
    {
        const std::pair<const char*, const char*> lists[] {{"10 9  -1 2.5", " -1 2.5 9 10"},
            {"10 9 1a", "10 1a 9"}, // one text makes all text
            {"b A a B", "A a b B"}, // case does not count, equals stay in order
            {"nan 2 10", "10 2 nan"}};
        for (const auto& [text, sorted] : lists) {
            const QStringList given = QString::fromLatin1(text).split(u' ');
            GridModel grid;
            grid.setFormatString(u"键"_s);
            grid.setRows(int(given.size()) + 1);
            for (int i = 0; i < given.size(); ++i)
                grid.setTextMatrix(i + 1, 0, given[i]);
            grid.sortRows(0, 0);
            QCOMPARE(column(grid, 0).join(u' '), QString::fromLatin1(sorted));
        }
    }

    void sortsByTheLeftmostColumnFirst()
    {
        GridModel grid;
        grid.setFormatString(u"甲|乙"_s);
        const std::vector<QStringList> lines {{u"2"_s, u"x"_s}, {u"1"_s, u"z"_s}, {u"2"_s, u"a"_s}};
        for (const QStringList& line : lines)
            grid.setRowData(grid.addRow(line), line[0].toInt() * 10);
        grid.sortRows(0, 1);
        QCOMPARE(column(grid, 1), QStringList({u"z"_s, u"a"_s, u"x"_s}));
        QCOMPARE(grid.RowData(1), 10);
        QCOMPARE(grid.RowData(3), 20);
    }

    void sortsDownwards()
    {
        GridModel grid;
        grid.setFormatString(u"甲|乙"_s);
        for (const QString& line : {u"b1"_s, u"李2"_s, u"B3"_s, u"王4"_s, u"李5"_s})
            grid.addRow({line.first(1), line.last(1)});
        grid.sortRows(0, 0, Qt::DescendingOrder);
        QCOMPARE(column(grid, 1).join(u' '), u"1 3 4 2 5"_s);
    }

    void longListsKeepTheirTexts()
    {
        GridModel grid;
        Recordset records = readers(1500);
        grid.bind(records);
        for (int row = 4; row <= 1500; ++row)
            QCOMPARE(grid.TextMatrix(row, 0) + grid.TextMatrix(row, 1) + grid.TextMatrix(row, 3),
                u"R%1"_s.arg(row) + QString::number(row - 1)
                    + QDate(2004, 3, 9).addDays(row - 1).toString(Qt::ISODate));
    }

    void fillsQuietly()
    {
        GridModel grid;
        QSignalSpy resets(&grid, &GridModel::modelReset);
        QSignalSpy changes(&grid, &GridModel::dataChanged);
        QSignalSpy inserts(&grid, &GridModel::rowsInserted);
        {
            const GridModel::Filling filling(grid);
            grid.setFormatString(u"一|二|三|四|五|六|七|八|九|十|甲|乙"_s);
            grid.setRows(100'001);
            for (int row = 1; row <= 100'000; ++row)
                for (int col = 0; col < 12; ++col)
                    grid.setTextMatrix(row, col, QString::number(row * 12 + col));
        }
        QCOMPARE(resets.count(), 1);
        QCOMPARE(changes.count() + inserts.count(), 0);
        QCOMPARE(grid.rowCount(), 100'000);
        QCOMPARE(grid.TextMatrix(100'000, 11), QString::number(100'000 * 12 + 11));
        QCOMPARE(grid.findRow(u"1200000"_s, 0), 100'000);
        grid.sortRows(0, 11);
        QCOMPARE(grid.TextMatrix(1, 0), u"12");
    }

    void sharesTheWidth_data()
    {
        const auto few = 10;
        const auto full = 11;
        cases<const WidthRule*, int, std::vector<int>>({
            {"parameters, small spare",
                {&circulationParameterWidths(), few,
                    std::vector<int> {990, 840, 840, 840, 840, 840, 840, 840, 840, 840, 990, 990, 0, 0}}},
            {"parameters, exactly full",
                {&circulationParameterWidths(), full,
                    std::vector<int> {973, 823, 823, 823, 823, 823, 823, 823, 823, 823, 973, 973, 0, 0}}},
            {"holidays know no spare", {&holidayWidths(), full, std::vector<int> {3000, 8000}}},
            {"overdue, small spare",
                {&overdueWidths(), few, std::vector<int> {1200, 2520, 1200, 1200, 1200, 1200, 1200, 1200}}},
            {"overdue, exactly full",
                {&overdueWidths(), full, std::vector<int> {1200, 2240, 1200, 1200, 1200, 1200, 1200, 1200}}},
            {"lost books, small spare",
                {&lostBookWidths(), few, std::vector<int> {1200, 3720, 1200, 1200, 1200, 1200, 1200}}},
            {"lost books, overfull",
                {&lostBookWidths(), 500, std::vector<int> {1200, 3440, 1200, 1200, 1200, 1200, 1200}}},
        });
    }

    void sharesTheWidth()
    {
        const auto [rule, rows, widths] = given<const WidthRule*, int, std::vector<int>>();
        QCOMPARE(gridFix(*rule, {11000, 350 + 10 * 300, 300, rows}), widths);
        for (int width : gridFix(*rule, {200, 3350, 300, rows}))
            QVERIFY(width >= 0);
    }

    void countsHalfALineAsHalf()
    {
        QVERIFY(!needsScrollBar({0, 350 + 10 * 300 + 150, 300, 11}));
        QVERIFY(needsScrollBar({0, 350 + 10 * 300 - 150, 300, 11}));
    }

    void laysColumns()
    {
        using Widths = std::vector<int>;
        QCOMPARE(layColumns({100, 200, 0}, {10, 10, 10}, 401), (Widths {133, 268, 0})); // to the last pixel
        QCOMPARE(layColumns({50, 150, 100}, {90, 60, 60}, 300), (Widths {90, 123, 87}));
        QCOMPARE(layColumns({200, 200}, {10, 10}, 300), (Widths {200, 200})); // too wide by design
        QCOMPARE(layColumns({50, 50}, {90, 80}, 120), (Widths {90, 80})); // the captions alone overflow
    }
};

QTEST_GUILESS_MAIN(TestGridModel)
#include "tst_grid_model.moc"
