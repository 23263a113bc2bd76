#include "platform/grid/grid_model.h"
#include "platform/grid/grid_widths.h"
#include "support/grid_text.h"
#include "ui/reader_rows.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace quilla;

namespace {

/// Each caption with its mark, "-" for none.
QString marked(const GridFormat& format)
{
    QString text;
    for (const GridFormat::Column& column : format.columns)
        text += u"-<^>"_s[int(column.align)] + column.caption + u'/';
    return text;
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
        QCOMPARE(grid.TextMatrix(0, 0) + grid.TextMatrix(0, 1), u"一乙"_s);
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
        QCOMPARE(columnOf(grid, 0), u"a c"_s);
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
        grid.setFormatString(u"<左|^中|>右|数|文"_s);
        grid.addRow({u"12"_s, u"12"_s, u"x"_s, u"-1.50"_s, u"1.5元"_s});
        const Qt::Alignment columns[] {
            Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight, Qt::AlignRight, Qt::AlignLeft};
        for (int col = 0; col < grid.Cols(); ++col)
            QCOMPARE(grid.data(grid.index(0, col), Qt::TextAlignmentRole).value<Qt::Alignment>()
                    & Qt::AlignHorizontal_Mask,
                columns[col]);
    }

    void rewritesBooleans()
    {
        GridModel grid;
        grid.setFormatString(u"过期可借"_s);
        for (const QString& text : {u"True"_s, u"False"_s, u"true"_s, u"1"_s})
            grid.addRow({text});
        grid.setRows(6);
        grid.yesNo(0);
        QCOMPARE(columnOf(grid, 0), u"是 否 否 否 "_s);
    }

    void sortsLines()
    {
        const struct {
            QString given, sorted;
            Qt::SortOrder direction = Qt::AscendingOrder;
        } lists[] {{u"10 9  -1 2.5"_s, u" -1 2.5 9 10"_s},
            {u"10 9 1a"_s, u"10 1a 9"_s}, // one text makes all text
            {u"b A a B"_s, u"A a b B"_s}, // case does not count, equals stay in order
            {u"nan 2 10"_s, u"10 2 nan"_s}, {u"b 李 B 王"_s, u"b B 王 李"_s, Qt::DescendingOrder}};
        for (const auto& [given, sorted, direction] : lists) {
            GridModel grid;
            grid.setFormatString(u"键"_s);
            const QStringList texts = given.split(u' ');
            grid.setRows(int(texts.size()) + 1);
            for (int i = 0; i < texts.size(); ++i)
                grid.setTextMatrix(i + 1, 0, texts[i]);
            grid.sortRows(0, 0, direction);
            QCOMPARE(columnOf(grid, 0), sorted);
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
        QCOMPARE(columnOf(grid, 1), u"z a x"_s);
        QCOMPARE(grid.RowData(1), 10);
        QCOMPARE(grid.RowData(3), 20);
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
            grid.setFormatString(u"一|二"_s);
            grid.setRows(3);
            grid.setTextMatrix(2, 1, u"x"_s);
        }
        QCOMPARE(resets.count(), 1);
        QCOMPARE(changes.count() + inserts.count(), 0);
    }

    void sharesTheWidth()
    {
        const std::tuple<WidthRule, int, std::vector<int>> grids[] {
            {{80, 300, 13,
                 {{0, 0, 1, 150, false}, {1, 9, 1, 0, false}, {10, 11, 1, 150, false},
                     {12, 13, 0, 0, false}}},
                10, {990, 840, 840, 840, 840, 840, 840, 840, 840, 840, 990, 990, 0, 0}},
            {{0, 0, 0, {{0, 0, 0, 3000, false}, {1, 1, 0, -3000, true}}}, 11, {3000, 8000}},
            {{80, 360, 0, {{0, 0, 0, 1200, false}, {1, 1, 0, -8400, true}, {2, 7, 0, 1200, false}}}, 11,
                {1200, 2240, 1200, 1200, 1200, 1200, 1200, 1200}}}; // exactly full
        for (const auto& [rule, rows, widths] : grids) {
            QCOMPARE(gridFix(rule, {11000, 350 + 10 * 300, 300, rows}), widths);
            for (int width : gridFix(rule, {200, 3350, 300, rows}))
                QVERIFY(width >= 0);
        }
        QVERIFY(!needsScrollBar({0, 350 + 10 * 300 + 150, 300, 11})); // half a line counts as a half
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
#include "test_grid_model.moc"
