#include "catalogue/find_book_form.h"

#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

namespace quilla {

namespace {

constexpr int ScreenWidth = 14000; // twips
constexpr int ScreenHeight = 7200;

} // namespace

frmFindBook::frmFindBook(Session& session)
    : TitleListScreen(session, u"frmFindBook"_s, u"退出( &Q)"_s)
    , labZhongShu(u"0"_s)
    , labCeShu(u"0"_s)
{
    setWindowTitle(u"图书资料查询"_s);
    QUILLA_NAMES(Grid2, labZhongShu, labCeShu);
    build(*this,
        column(searchTools(), group(u"查找到如下种图书"_s, Piece(Grid1).grow()).grow(3),
            group(u"某种图书的书册信息"_s, Piece(Grid2).grow()).grow(2),
            row(u"满足条件的图书种数："_s, labZhongShu, room(24), u"当前图书的册数："_s, labCeShu,
                stretch())));
    onRow(Grid1, [this](int) { showCopies(); });
    onOpen(Grid1, [this](int) { Grid2.setFocus(); });
    resize(pixelsOf(ScreenWidth, *this), pixelsOf(ScreenHeight, *this));
    Text1.setFocus();
}

void frmFindBook::titlesShown(qsizetype count)
{
    labZhongShu.setText(QString::number(count));
    showCopies();
}

/// Follows every move to another title.
void frmFindBook::showCopies()
{
    const QString zskid = Grid1.current(TitleId);
    qsizetype count = 0;
    if (zskid.isEmpty()) {
        Grid2.clearCopies();
    } else {
        auto copies = usableCopies(m_session, Opened::Asking, zskid);
        if (!copies) return;
        count = Grid2.showCopies(*copies);
    }
    labCeShu.setText(QString::number(count));
}

} // namespace quilla
