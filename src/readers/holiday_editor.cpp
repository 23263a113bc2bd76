#include "readers/holiday_editor.h"

#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

namespace quilla {

holidayaddFrm::holidayaddFrm(Session& session, QWidget* parent)
    : RecordEditor(u"holidayaddFrm"_s, {u"&A 保存增加"_s, u"&S 保存"_s, u"&X 关闭"_s}, parent)
    , m_session(session)
{
    QUILLA_NAMES(Text1);
    Text1[HolidayBox::Name].setMaxLength(HolidayNameWidth);
    for (const int day : {HolidayBox::First, HolidayBox::Last})
        Text1[day].setPlaceholderText(u"例如：2003-01-01"_s);
    build(*this,
        column(fields(1,
                   {{u"假期名称："_s, Text1[HolidayBox::Name]}, {u"开始日期："_s, Text1[HolidayBox::First]},
                       {u"结束日期："_s, Text1[HolidayBox::Last]}}),
            stretch(), row(stretch(), Command1[0], Command1[1], Command1[2])));
    enterAsTab(allOf(Text1));
    onLeave(Text1[HolidayBox::Name], [this] { checkName(); });
    resize(pixelsOf(6000, *this), sizeHint().height());
    setMode(u"A"_s, {});
}

void holidayaddFrm::edit(const ClosingPeriod& holiday)
{
    setMode(u"E"_s, holiday);
}

void holidayaddFrm::setMode(const QString& letter, const ClosingPeriod& holiday)
{
    m_mode = EditorMode(letter);
    m_name = holiday.name;
    setWindowTitle(m_mode.isEdit() ? u"假期管理-修改"_s : u"假期管理-添加"_s);
    Text1[HolidayBox::Name].setText(holiday.name);
    Text1[HolidayBox::First].setText(holiday.first);
    Text1[HolidayBox::Last].setText(holiday.last);
    Text1[HolidayBox::Name].setFocus();
}

void holidayaddFrm::checkName()
{
    TextBox& box = Text1[HolidayBox::Name];
    box.setText(trimBlanks(box.text()));
    const auto refusal = takenHolidayName(m_session, box.text(), m_mode.isEdit() ? m_name : QString());
    if (!refusal) return;
    tell(m_session.prompt, *refusal, [&](int) { box.clear(); });
    box.setFocus();
}

/// Does not ask for the name again: that was done when its box was left.
bool holidayaddFrm::save()
{
    const ClosingPeriod holiday {
        Text1[HolidayBox::Name].text(), Text1[HolidayBox::First].text(), Text1[HolidayBox::Last].text()};
    if (const auto refusal = CheckHolidayForm(holiday)) {
        tell(m_session.prompt, *refusal, [this](int box) {
            Text1[box].setEnabled(true);
            Text1[box].setFocus();
        });
        return false;
    }
    if (m_mode.isEdit())
        changeHoliday(m_session, holiday, m_name);
    else
        addHoliday(m_session, holiday);
    if (Saved) Saved(holiday, !m_mode.isEdit());
    return true;
}

void holidayaddFrm::startNext()
{
    setMode(u"A"_s, {});
}

} // namespace quilla
