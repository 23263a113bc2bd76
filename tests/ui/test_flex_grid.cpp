#include "platform/core/caption.h"
#include "platform/ui/grid/list_screen.h"
#include "platform/ui/look/theme.h"
#include "support/grid_text.h"
#include "support/memory_settings.h"
#include "ui/reader_rows.h"

#include <QApplication>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

using namespace quilla;

namespace {

const QString Format = u"^条形码|<书     名|^读者证号"_s;

void fill(FlexGrid& grid, const QStringList& keys)
{
    grid.setUp(2, Format);
    for (const QString& key : keys)
        grid.cells().addRow({key, u"书"_s + key});
    grid.setRow(1);
}

/// Drags the right edge of a column as the operator does.
void drag(FlexGrid& grid, int col, int pixels)
{
    QHeaderView& header = *grid.horizontalHeader();
    const QPoint edge(header.sectionViewportPosition(col) + header.sectionSize(col) - 1, header.height() / 2);
    QTest::mousePress(header.viewport(), Qt::LeftButton, {}, edge);
    QTest::mouseMove(header.viewport(), edge + QPoint(pixels, 0));
    QTest::mouseRelease(header.viewport(), Qt::LeftButton, {}, edge + QPoint(pixels, 0));
}

const WidthRule SecondTakesRest {0, 0, 0, {{0, 0, 0, 3000, false}, {1, 1, 0, -3000, true}}};

class TwoColumnList : public ListScreen {
public:
    TwoColumnList()
        : ListScreen(u"TwoColumnList"_s, u"假期"_s)
    {
        shareWidth(SecondTakesRest);
        Grid1.setFormatString(u"假期名称|假期期限"_s);
        arrange(Grid1);
    }
};

} // namespace

class TestFlexGrid : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { applyTheme(*qApp); }

    void fillsFromAResult()
    {
        FlexGrid grid;
        QLabel count;
        Recordset three = readers(3);
        const GridFill fill {
            .format = u"^读者证号|可借|无证"_s, .yesNo = {2}, .count = &count, .key = u"r2 "_s};
        QCOMPARE(fillGrid(grid, three, fill), 3);
        QCOMPARE(lineOf(grid, 0), u"读者证号|可借|无证|term"_s); // surplus keeps its name
        QCOMPARE(lineOf(grid, 2), u"R2|1|是|2004-03-10"_s);
        QCOMPARE(lineOf(grid, 3), u"R3|2||"_s);
        QCOMPARE(count.text(), u"记录数：3");
        QCOMPARE(grid.current(0), u"R2");
    }

    void leavesOneLineForAnEmptyResult()
    {
        FlexGrid grid;
        QLabel count;
        const GridFill fill {
            .format = u"^读者证号"_s, .count = &count, .countHasCaption = true, .key = u"R1"_s};
        for (const int rows : {3, 0}) {
            Recordset some = readers(rows);
            QCOMPARE(fillGrid(grid, some, fill), rows);
        }
        QCOMPARE(grid.Rows(), 2);
        QCOMPARE(grid.current(0), QString());
        QCOMPARE(count.text(), u"0");
    }

    void keepsTheMarkerColumnFree()
    {
        FlexGrid grid;
        Recordset two = readers(2);
        fillGrid(grid, two, {.format = u"^|^证号|^数"_s, .key = u"R2"_s});
        QCOMPARE(lineOf(grid, 2).first(6), u"|R2|1|"_s);
        QCOMPARE(grid.Row(), 2);
        grid.setUp(3, u"甲|乙"_s); // the same grid without a marker again
        QCOMPARE(grid.cells().FixedCols(), 0);
    }

    void selectsWholeLines()
    {
        FlexGrid grid;
        fill(grid, {u"a"_s, u"b"_s, u"c"_s});
        grid.setRow(2);
        QCOMPARE(grid.selectionModel()->selectedIndexes().size(), 3);
        grid.setRow(9);
        QCOMPARE(grid.Row(), 2);
        grid.selectKey(u"C "_s);
        QCOMPARE(grid.Row(), 3);
        grid.selectKey(u"gone"_s, 1);
        QCOMPARE(grid.Row(), 1);
        grid.selectKey(u""_s, 7); // no such line: the selection stays
        QCOMPARE(grid.Row(), 1);
        QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(std::minmax(grid.Row(), grid.RowSel()), std::minmax(2, 1));
    }

    void keepsTheLineOverChanges()
    {
        FlexGrid grid;
        fill(grid, {u"c"_s, u"a"_s, u"b"_s});
        grid.setRow(2);
        grid.setFormatString(u"一|二|三"_s);
        QCOMPARE(grid.Row(), 2);
        grid.sortRows(0, 2);
        QCOMPARE(grid.Row(), 2);
        QCOMPARE(grid.current(0), u"b");
        grid.setUp(8, Format);
        QCOMPARE(grid.Row(), 1);
        QCOMPARE(grid.selectionModel()->selectedRows().size(), 1);
    }

    void answersKeys()
    {
        const struct {
            Qt::Key key;
            const char* signal;
            Qt::KeyboardModifiers modifiers = {};
        } keys[] {{Qt::Key_Return, SIGNAL(rowOpened(int))}, {Qt::Key_Delete, SIGNAL(deletePressed())},
            {Qt::Key_Insert, SIGNAL(insertPressed())}, {Qt::Key_Space, SIGNAL(blankPressed())},
            {Qt::Key_Escape, SIGNAL(escapePressed())},
            {Qt::Key_F, SIGNAL(findPressed()), Qt::ControlModifier}, {Qt::Key_Down, SIGNAL(rowChanged(int))}};
        FlexGrid grid;
        fill(grid, {u"a"_s, u"b"_s});
        for (const auto& [key, signal, modifiers] : keys) {
            QSignalSpy spy(&grid, signal);
            QTest::keyClick(&grid, key, modifiers);
            QVERIFY2(spy.count() == 1, signal);
        }
    }

    void answersTheMouse()
    {
        FlexGrid grid;
        fill(grid, {u"a"_s, u"b"_s});
        grid.resize(400, 300);
        grid.show();
        QSignalSpy clicked(&grid, &FlexGrid::rowClicked);
        QSignalSpy opened(&grid, &FlexGrid::rowOpened);
        QSignalSpy released(&grid, &FlexGrid::rightReleased);
        const QPoint second = grid.visualRect(grid.model()->index(1, 1)).center();
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, second);
        QCOMPARE(clicked.takeFirst().at(0).toInt(), 2);
        QCOMPARE(grid.Col(), 1);
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, second);
        QCOMPARE(opened.takeFirst().at(0).toInt(), 2);
        QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, second);
        QCOMPARE(released.takeFirst().at(0).toInt(), 2);
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, {10, 280}); // below the last line
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ControlModifier, second);
        QCOMPARE(grid.selectionModel()->selectedRows().size(), 1);
        grid.setFollowsPointer(true);
        QTest::mouseMove(grid.viewport(), grid.visualRect(grid.model()->index(0, 0)).center());
        QCOMPARE(grid.Row(), 1);
    }

    void jumpsToWhatIsTyped()
    {
        const std::pair<QString, int> jumps[] {{u"b2"_s, 4}, {u"a"_s, 1}, // once around
            {u"书c"_s, 5}, // in the second column
            {u"bb"_s, 4}, // the same key walks on
            {u"zz"_s, 2}};
        for (const auto& [typed, row] : jumps) {
            FlexGrid grid;
            fill(grid, {u"a1"_s, u"x"_s, u"B1"_s, u"b2"_s, u"c"_s});
            grid.setRow(2);
            for (QChar key : typed)
                grid.keyboardSearch(key);
            QCOMPARE(grid.Row(), row);
        }
    }

    void widensByTheBlanksOfACaption()
    {
        FlexGrid grid;
        grid.setFormatString(u"书名|书名        |价格"_s);
        QCOMPARE(grid.ColWidth(1) - grid.ColWidth(0), 8 * 90);
        grid.setColWidths({-1, 2000, 0});
        QCOMPARE(grid.ColWidth(1), 2000);
        QVERIFY(grid.isColumnHidden(2));
    }

    void keepsCaptionsWholeAndFillsTheGrid()
    {
        FlexGrid grid;
        grid.resize(900, 300);
        grid.show();
        grid.setUp(8, u"^借书控制号|^图书条形码     |<书名"_s, {10, 1100, 2000});
        QCOMPARE(grid.horizontalHeader()->length(), grid.viewport()->width());
        QVERIFY(grid.columnWidth(0) > grid.fontMetrics().horizontalAdvance(u"借书控制号"_s));
    }

    /// By the grid and by its captions.
    void remembersDraggedWidths()
    {
        MemorySettings settings;
        int dragged = 0;
        {
            FlexGrid grid;
            grid.resize(600, 300);
            grid.show();
            grid.rememberWidths(settings, u"DzglFrm.Grid1"_s);
            grid.setUp(4, Format);
            const int before = grid.columnWidth(1);
            drag(grid, 1, 37);
            dragged = grid.columnWidth(1);
            QCOMPARE(dragged, before + 37);
            grid.setUp(4, Format); // a new fill leaves the operator's widths alone
            QVERIFY(qAbs(grid.columnWidth(1) - dragged) <= 1);
        }
        const std::tuple<QString, QString, bool> others[] {{u"DzglFrm.Grid1"_s, Format, true},
            {u"DzglFrm.Grid1"_s, u"别的|标题|三"_s, false}, {u"BookOutFrm.Grid1"_s, Format, false}};
        for (const auto& [name, captions, remembered] : others) {
            FlexGrid grid;
            grid.resize(800, 300);
            grid.setUp(4, captions);
            grid.rememberWidths(settings, name);
            QCOMPARE(qAbs(grid.columnWidth(1) - dragged) <= 1, remembered);
        }
    }

    void sharesTheWidthOfAListScreen()
    {
        TwoColumnList screen;
        screen.show();
        QCOMPARE(screen.Grid1.ColWidth(0), 3000);
        const int narrow = screen.Grid1.ColWidth(1);
        screen.resize(screen.width() + 200, screen.height());
        QVERIFY(qAbs(screen.Grid1.ColWidth(1) - narrow - twipsOf(200, screen)) <= 15);
    }
};

QTEST_MAIN(TestFlexGrid)
#include "test_flex_grid.moc"
