#include "catalogue/title_search_screen.h"

#include "platform/ui/form/form.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/grid/list_screen.h"

namespace quilla {

namespace {

const QString CopyFormat = u"控制ID|<条形码|^藏址|^图书状态"_s;
const std::vector<int> CopyWidths {0, 2000, 2000, 1500};

} // namespace

TitleSearchScreen::TitleSearchScreen(Session& session, const QString& name, const QString& title)
    : cmdQuery(u"查询( &F )"_s)
    , m_session(session)
{
    setObjectName(name);
    setWindowTitle(title);
    QUILLA_NAMES(Text1, cmdQuery, Grid1);
    onEnter(Text1, [this] { search(); });
    onClick(cmdQuery, [this] { search(); });
    Grid1.setSortsByCaption(true);
    Grid1.rememberWidths(session.settings, name + u".Grid1"_s);
}

Piece TitleSearchScreen::searchLine(const std::vector<Piece>& rest)
{
    std::vector<Piece> pieces {u"输入正题名或索书号："_s, Piece(Text1).grow(), cmdQuery};
    pieces.insert(pieces.end(), rest.begin(), rest.end());
    return rowOf(pieces);
}

void TitleSearchScreen::leave()
{
    parentWidget() ? parentWidget()->close() : close();
}

/// The text stays and is selected, so that the next one takes its place.
void TitleSearchScreen::search()
{
    if (Text1.text().isEmpty()) {
        m_session.prompt.inform(u"请输入检索条件！"_s, OperationTitle);
        return Text1.setFocus();
    }
    const WaitCursor hourglass;
    Text1.selectAll();
    searchFor(Text1.text());
}

CopyGrid::CopyGrid()
{
    clearCopies();
}

void CopyGrid::clearCopies()
{
    setUp(2, CopyFormat, CopyWidths);
}

qsizetype CopyGrid::showCopies(Recordset& copies)
{
    if (!copies.eof()) return fillGrid(*this, copies, {.format = CopyFormat, .widths = CopyWidths});
    clearCopies();
    return 0;
}

} // namespace quilla
