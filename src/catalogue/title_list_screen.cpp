#include "catalogue/title_list_screen.h"

#include "platform/ui/form/form.h"
#include "platform/ui/grid/list_screen.h"
#include "statistics/query_form.h"

namespace quilla {

namespace {

const QString FilledFormat
    = u"^控制ID|^索书号|<正题名|ISBN|作者|版本|出版地|出版社|页数|丛书名|文献类型|语种"_s;
const QString EmptyFormat
    = u"控制ID|^索书号|<正题名|ISBN|作者|版本|出版地|出版社|页数|丛书名|文献类型|语种"_s;
const std::vector<int> Widths {800, 1500, 3200, 1900, 1500, 800, 900, 1900, 800, 1300, 900, 800}; // twips

} // namespace

TitleListScreen::TitleListScreen(Session& session, const QString& name, const QString& closing)
    : TitleSearchScreen(session, name, {})
    , cmdQueryAdvance(u"综合查询( &A )"_s)
    , Command1(closing)
{
    QUILLA_NAMES(cmdQueryAdvance, Command1);
    onClick(cmdQueryAdvance, [this] { queryAdvanced(); });
    onClick(Command1, [this] { leave(); });
    clearTitles();
}

Piece TitleListScreen::searchTools()
{
    return searchLine({cmdQueryAdvance, Command1});
}

void TitleListScreen::clearTitles()
{
    Grid1.setUp(2, EmptyFormat, Widths);
}

void TitleListScreen::searchFor(const QString& text)
{
    show(titlesLike(text));
}

void TitleListScreen::loadData(const QString& condition, const QString& order)
{
    show(titlesBy(condition, order));
}

/// A search that fails leaves what the last one found.
void TitleListScreen::show(const ListSearch& search)
{
    auto titles = findTitles(m_session, search);
    if (!titles) return;
    titlesShown(fill(*titles));
}

qsizetype TitleListScreen::fill(Recordset& titles)
{
    const QSignalBlocker quiet(Grid1); // `titlesShown` announces the first line once all are there
    if (!titles.eof()) return fillGrid(Grid1, titles, {.format = FilledFormat, .widths = Widths});
    clearTitles();
    return 0;
}

void TitleListScreen::queryAdvanced()
{
    QueryFrm query(m_session.prompt, *this, this);
    query.setWindowTitle(u"图书资料查询"_s);
    query.LoadCombo(
        u"ISBN,classcode,zch,bookname,author,lagclass,edition,publisher,pubplace,pubdate,cataman,catatime"_s,
        u"ISBN,分类号,种次号,书名,著者,语种,版本,出版社,出版地,出版日期,编目人,编目日期"_s,
        u"字符,字符,数字,字符,字符,字符,字符,字符,字符,字符,字符,日期"_s);
    query.exec();
}

} // namespace quilla
