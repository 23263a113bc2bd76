#include "catalogue/good_book_form.h"

#include "catalogue/recommended_ops.h"
#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

namespace quilla {

namespace {

enum Adding { AddAll, AddSelected };
enum Command { Print, RemoveOne, RemoveAll };

const QString ListFormat = u"^控制ID|^索书号|<正题名|ISBN"_s;
const std::vector<int> ListWidths {750, 1250, 2100, 2000}; // twips

constexpr int ScreenWidth = 14000;
constexpr int ScreenHeight = 7200;

} // namespace

frmGoodBook::frmGoodBook(const Workplace& place)
    : TitleListScreen(place.session, u"frmGoodBook"_s, u"退出(&Q)"_s)
    , labZhongShu(u"0"_s)
    , labHaoShu(u"0"_s)
    , m_reports(place.reports)
{
    setWindowTitle(u"好书推荐打印"_s);
    QUILLA_NAMES(Grid2, cmdAdd, cmdClick, labZhongShu, labHaoShu);
    setCaptions(cmdAdd, {u">> (&L)"_s, u"> (&S)"_s});
    cmdAdd[AddAll].setToolTip(u"全部加入到好书列表"_s);
    cmdAdd[AddSelected].setToolTip(u"将选择的加入到好书列表"_s);
    setCaptions(cmdClick, {u"打印报表（&P）"_s, u"清除单条（&X）"_s, u"清除所有（&C）"_s});
    layOut();
    wire();
    clearList();
    Text1.setFocus();
}

void frmGoodBook::layOut()
{
    const Piece found = group(u"查找到的图书"_s, Piece(Grid1).grow());
    const Piece adding = column(stretch(), cmdAdd[AddAll], cmdAdd[AddSelected], stretch());
    const Piece listed = column(group(u"作为好书推荐的图书"_s, Piece(Grid2).grow()).grow(),
        row(stretch(), cmdClick[Print], cmdClick[RemoveOne], cmdClick[RemoveAll]));
    build(*this,
        column(searchTools(),
            row(column(u"可以将多次查询的结果添加到"_s, u"好书列表，然后一次打印"_s), stretch(),
                u"好书推荐报表，【A4,横向(宽行)打印】"_s),
            row(found.grow(), adding, listed.grow()).grow(),
            row(u"满足条件的图书种数："_s, labZhongShu, room(24), u"推荐的图书种数："_s, labHaoShu,
                stretch())));
    resize(pixelsOf(ScreenWidth, *this), pixelsOf(ScreenHeight, *this));
}

void frmGoodBook::wire()
{
    onClick(cmdAdd, [this](int which) { add(which); });
    onClick(cmdClick[Print], [this] { printRecommended(m_session, m_reports, Grid2.cells()); });
    onClick(cmdClick[RemoveOne], [this] { removeCurrent(); });
    onClick(cmdClick[RemoveAll], [this] { removeAll(); });
    connect(&Grid2, &FlexGrid::deletePressed, this, &frmGoodBook::removeCurrent);
    Grid2.rememberWidths(m_session.settings, u"frmGoodBook.Grid2"_s);
}

/// What is on the list already stays there, also after a search that finds nothing.
void frmGoodBook::titlesShown(qsizetype count)
{
    labZhongShu.setText(QString::number(count));
}

void frmGoodBook::add(int which)
{
    if (Grid1.current(TitleId).isEmpty()) return;
    const auto [first, last] = std::minmax({Grid1.Row(), Grid1.RowSel()});
    const LineRange lines = which == AddAll ? LineRange {1, Grid1.Rows() - 1} : LineRange {first, last};
    if (addRecommended(m_session.prompt, Grid1.cells(), lines, Grid2.cells()) > 0) showCount();
}

void frmGoodBook::removeCurrent()
{
    const int row = Grid2.Row();
    if (!removeRecommended(m_session.prompt, Grid2.cells(), row)) return;
    Grid2.setRow(std::min(row, Grid2.Rows() - 1));
    showCount();
}

void frmGoodBook::removeAll()
{
    if (confirmEmptying(m_session.prompt)) clearList();
}

void frmGoodBook::clearList()
{
    Grid2.setUp(2, ListFormat, ListWidths);
    showCount();
}

void frmGoodBook::showCount()
{
    labHaoShu.setText(QString::number(Grid2.cells().isEmptyList() ? 0 : Grid2.Rows() - 1));
}

} // namespace quilla
