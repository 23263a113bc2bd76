#include "frame/sublib.h"
#include "output/report_designs.h"
#include "platform/core/date_box.h"
#include "platform/ui/form/activation.h"
#include "platform/ui/form/editor.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/text_box.h"
#include "statistics/ranking_form.h"

namespace quilla {

namespace {

enum Box { Type, Count, From, To };

enum Column { NameColumn = 2, TypeColumn, UnitColumn };

const QString AllTypes = u"全部"_s;
const QString UsualCount = u"10"_s;
const DigitFilter CountFilter {
    .takesEscape = true, .message = u"请输入1-9之间的数字"_s, .title = OperationTitle.toString()};

} // namespace

dzjyphbFrm::dzjyphbFrm(const Workplace& place)
    : RankingForm(place, readerRanking())
    , Label3(u"借阅排名报表，A4纸，纵向打印（窄行）"_s)
    , MSHFlexGrid2(Grid1)
    , MSHFlexGrid1(m_list)
{
    QUILLA_NAMES(Text1, Label3, MSHFlexGrid2, MSHFlexGrid1);
    // The bracket at the end is the one that operators know from the other programs of the suite.
    setCaptions(Command1, {u"查询(&F)"_s, u"打印(&P)"_s, u"退出(&Q]"_s});
    const QString today = localeDateText(GetServerDate(m_session)).left(10);
    Text1[Type].setText(AllTypes);
    Text1[Count].setText(UsualCount);
    Text1[From].setText(today);
    Text1[To].setText(today);
    layOut();
    filterDigits(Text1[Count], CountFilter, m_session.prompt);
    enterAsTab(allOf(Text1));
    MSHFlexGrid1.serve(Text1[Type]);
    connect(&MSHFlexGrid1, &PickList::wanted, this,
        [this](QLineEdit& box) { MSHFlexGrid1.open(box, m_work.types()); });
    connect(&MSHFlexGrid1, &PickList::picked, this,
        [](QLineEdit& box, const QString& line) { box.setText(line); });
}

void dzjyphbFrm::layOut()
{
    for (QLineEdit& box : Text1)
        keepPlain(box);
    onOpen(Grid1, [this](int row) { openReader(row); });
    onActivation(*this, [this] { Text1[Type].setText(AllTypes); });
    arrange(row(u"类型："_s, Piece(Text1[Type]).grow(2), u"前："_s, Piece(Text1[Count]).grow(1), u"名"_s,
                u"时间从："_s, Piece(Text1[From]).grow(1), u"到："_s, Piece(Text1[To]).grow(1)),
        Label3);
    Text1[Type].setFocus();
}

/// The list knows the readers by their names only; where two share one, nothing opens.
void dzjyphbFrm::openReader(int row)
{
    const QString code = m_work.readerOf(Grid1.TextMatrix(row, NameColumn), Grid1.TextMatrix(row, TypeColumn),
        Grid1.TextMatrix(row, UnitColumn));
    if (!code.isEmpty()) m_place.host.openScreen(u"DzaddFrm"_s, code);
}

RankingQuery dzjyphbFrm::query()
{
    if (Text1[Type].text().isEmpty()) Text1[Type].setText(AllTypes);
    if (Text1[Count].text().isEmpty()) Text1[Count].setText(UsualCount);
    return {Text1[Type].text(), Text1[Count].text(), Text1[From].text(), Text1[To].text()};
}

ReportTexts dzjyphbFrm::reportTexts() const
{
    const auto words = [](const QString& date) {
        return platformDate(date).value_or(QDate()).toString(u"yyyy年MM月dd日"_s);
    };
    return {
        {}, {{ReportLabels::From, words(Text1[From].text())}, {ReportLabels::To, words(Text1[To].text())}}};
}

} // namespace quilla
