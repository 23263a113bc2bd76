#include "readers/holiday_form.h"

#include "platform/ui/form/form.h"
#include "readers/holiday_editor.h"

namespace quilla {

namespace {

const QString Format = u"假期名称|假期期限"_s;
enum Column { Name, Period };
/// The period takes what is left.
const WidthRule Widths {.spareSmall = 0,
    .spareLarge = 0,
    .parts = 0,
    .columns = {{Name, Name, 0, 3000, false}, {Period, Period, 0, -3000, true}}};

} // namespace

holidayfrm::holidayfrm(Session& session)
    : RecordList(session, u"holidayfrm"_s, u"假期管理"_s, Widths, holidayRemoval())
{
    QUILLA_NAMES(Command1);
    setCaptions(Command1, {u"&A 增加"_s, u"&D 删除"_s, u"&X 关闭"_s, u"&E 修改"_s});
    wire(Command1);
    arrange({Command1[Add], Command1[Edit], Command1[Remove], Command1[Close]});
    loadData();
}

void holidayfrm::loadData()
{
    Grid1.setUp(2, Format);
    {
        const GridModel::Filling filling(Grid1.cells());
        for (const ClosingPeriod& holiday : readHolidays(m_session))
            Grid1.cells().addRow({holiday.name, periodText(holiday)});
    }
    Grid1.setRow(1);
    linesChanged();
}

void holidayfrm::addRecord()
{
    holidayaddFrm editor(m_session, this);
    editor.Saved = [this](const ClosingPeriod& holiday, bool added) { take(holiday, added); };
    editor.exec();
}

void holidayfrm::editRecord()
{
    holidayaddFrm editor(m_session, this);
    editor.edit(holidayOfLine(Grid1.current(Name), Grid1.current(Period)));
    editor.Saved = [this](const ClosingPeriod& holiday, bool added) { take(holiday, added); };
    editor.exec();
}

void holidayfrm::take(const ClosingPeriod& holiday, bool added)
{
    if (added) {
        Grid1.cells().addRow({holiday.name, periodText(holiday)});
    } else {
        const int row = Grid1.Row();
        Grid1.setTextMatrix(row, Name, holiday.name);
        Grid1.setTextMatrix(row, Period, periodText(holiday));
    }
    linesChanged();
}

} // namespace quilla
