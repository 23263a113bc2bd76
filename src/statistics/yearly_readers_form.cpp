#include "statistics/yearly_readers_form.h"

#include "frame/sublib.h"
#include "output/export_ops.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/working_progress.h"
#include "statistics/no_rows.h"
#include "statistics/period.h"

namespace quilla {

namespace {

enum Button { Find, Quit, Print };
enum Box { Unit, Type };

constexpr int BlankRows = 2;
constexpr int ScreenWidth = 13500; // twips
constexpr int ScreenHeight = 7500;
const QString Title = u"年读者借阅统计"_s;
const QString Everybody = u"全部"_s;

/// Under the captions of the spreadsheet.
const QString Format
    = u"<读者单位            |<读者姓名  |<读者类型   |^借书证号  |小计|一月|二月|三月|四月|五月|六月|七月|八月|九月|十月|十一月|十二月"_s;

} // namespace

frmndzjytj::frmndzjytj(const Workplace& place)
    : ListScreen(u"frmndzjytj"_s, Title)
    , cmdToExcel(u"输出到excel &E"_s)
    , Label4(u"A4纸，纵向打印（窄行）"_s)
    , MSHFlexGrid2(Grid1)
    , MSHFlexGrid1(*this)
    , m_place(place)
    , m_session(place.session)
{
    QUILLA_NAMES(Text1, Text2, Command1, cmdToExcel, Label4, MSHFlexGrid2, MSHFlexGrid1);
    setCaptions(Command1, {u"检索 &F"_s, u"退出 &Q"_s, u"打印  &P"_s});
    Text1.setText(presetPeriod(PeriodKind::Year, GetServerDate(m_session).date));
    for (TextBox& box : Text2)
        box.setText(Everybody);
    cmdToExcel.setEnabled(false);
    MSHFlexGrid2.setUp(BlankRows, Format);
    layOut();
    wire();
}

void frmndzjytj::layOut()
{
    setUsualSize(ScreenWidth, ScreenHeight);
    arrange(column(row(u"年份"_s, Piece(Text1).grow(1), u"读者单位"_s, Piece(Text2[Unit]).grow(3),
                       u"读者类型"_s, Piece(Text2[Type]).grow(2), Command1[Find]),
        Piece(MSHFlexGrid2).grow(), row(Label4, stretch(), Command1[Print], cmdToExcel, Command1[Quit])));
    Text1.setFocus();
}

void frmndzjytj::wire()
{
    enterAsTab({Text1, Text2[Unit], Text2[Type]});
    for (TextBox& box : Text2)
        MSHFlexGrid1.serve(box);
    connect(&MSHFlexGrid1, &PickList::wanted, this, [this](QLineEdit& box) {
        MSHFlexGrid1.open(box, &box == &Text2[Unit] ? unitsOfReaders(m_session) : typesOfReaders(m_session));
    });
    connect(&MSHFlexGrid1, &PickList::picked, this,
        [](QLineEdit& box, const QString& line) { box.setText(line); });
    onClick(Command1, [this](int button) { press(button); });
    onClick(cmdToExcel, [this] { toExcel(); });
}

/// The year is looked at first, whichever button it was: with a bad one the button 退出 does not close
/// either.
void frmndzjytj::press(int button)
{
    if (const auto refusal = yearRefusal(Text1.text())) return tell(m_session.prompt, *refusal, [](int) {});
    if (button == Quit) return closeScreen(*this);
    const WaitCursor hourglass;
    if (button == Print) return printYearlyReaders(m_session, m_place.reports, query());
    search();
}

YearlyReadersQuery frmndzjytj::query() const
{
    return {Text1.text(), Text2[Unit].text(), Text2[Type].text()};
}

void frmndzjytj::search()
{
    std::optional<Recordset> rows = yearlyReaders(m_session, query());
    if (!rows) return;
    m_year = trimBlanks(Text1.text()).toInt();
    m_lines = rows->recordCount();
    {
        const GridModel::Filling filling(MSHFlexGrid2.cells());
        MSHFlexGrid2.bind(*rows);
        MSHFlexGrid2.setFormatString(Format);
    }
    cmdToExcel.setEnabled(m_lines > 0);
    setWindowTitle(Title + (m_lines > 0 ? QString() : NoRowsNote));
    MSHFlexGrid2.setRow(1);
    MSHFlexGrid2.scrollToTop();
}

void frmndzjytj::toExcel()
{
    WorkingProgress progress(this);
    exportGrid({m_session, progress, m_place.spreadsheets}, yearlyReadersLayout(m_year), MSHFlexGrid2.cells(),
        m_lines);
}

} // namespace quilla
