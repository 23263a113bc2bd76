#include "frame/sublib.h"
#include "platform/ui/form/editor.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/text_box.h"
#include "statistics/ranking_form.h"

namespace quilla {

namespace {

enum Combo { Unit, Count = 2, From, To };
constexpr int TitleColumn = 4;
const DigitFilter CountFilter {.takesEscape = false, .message = u"请输入0-9之间的数字"_s, .title = u""_s};

} // namespace

frmtsjh::frmtsjh(const Workplace& place)
    : RankingForm(place, titleRanking())
    , MSHFlexgrid1(Grid1)
    , MSHFlexGrid2(m_list)
    , m_classes(m_work.classes())
{
    QUILLA_NAMES(Combo1, Text1, MSHFlexgrid1, MSHFlexGrid2);
    setCaptions(Command1, {u"查询 (&F)"_s, u"打印 (&P)"_s, u"退出 (&Q)"_s});
    for (QComboBox& combo : Combo1) {
        combo.setEditable(true);
        combo.setInsertPolicy(QComboBox::NoInsert);
        combo.setCompleter(nullptr);
        keepPlain(*combo.lineEdit());
    }
    preset();
    layOut();
    filterDigits(Combo1[Count], CountFilter, m_session.prompt);
    enterAsTab({Combo1[Unit], Text1, Combo1[Count], Combo1[From], Combo1[To]});
    onOpen(Grid1, [this](int row) { openTitle(row); });
    MSHFlexGrid2.serve(Text1);
    connect(&MSHFlexGrid2, &PickList::wanted, this,
        [this](QLineEdit& box) { MSHFlexGrid2.open(box, m_classes); });
    connect(&MSHFlexGrid2, &PickList::picked, this,
        [](QLineEdit& box, const QString& line) { box.setText(trimBlanks(line).section(u' ', 0, 0)); });
}

void frmtsjh::preset()
{
    const QStringList units = m_work.units();
    for (const QString& unit : units)
        if (!unit.isEmpty()) Combo1[Unit].addItem(unit);
    Combo1[Unit].setEditText(units.value(0));
    const QString year = GetServerDate(m_session).date.toString(u"yyyy"_s);
    Text1.setText(u"A"_s);
    Combo1[Count].addItems({u"10"_s, u"20"_s, u"50"_s, u"100"_s});
    Combo1[From].addItem(year + u"-01"_s + u"-01"_s);
    Combo1[To].addItem(year + u"-12"_s + u"-31"_s);
}

void frmtsjh::layOut()
{
    keepPlain(Text1);
    arrange(row(u"单位："_s, Piece(Combo1[Unit]).grow(2), u"分类："_s, Piece(Text1).grow(1), u"数量："_s,
                Combo1[Count], u"日期从："_s, Combo1[From], u"到："_s, Combo1[To]),
        Piece(stretch()));
    Combo1[Unit].setFocus();
}

/// The search for titles, with that title in it.
void frmtsjh::openTitle(int row)
{
    const QString title = Grid1.TextMatrix(row, TitleColumn);
    if (!title.isEmpty()) m_place.host.openScreen(u"frmFindBook"_s, title);
}

RankingQuery frmtsjh::query()
{
    return {Combo1[Unit].currentText(), Combo1[Count].currentText(), Combo1[From].currentText(),
        Combo1[To].currentText(), Text1.text()};
}

} // namespace quilla
