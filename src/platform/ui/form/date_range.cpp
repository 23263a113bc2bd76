#include "platform/ui/form/date_range.h"

#include "platform/core/date_box.h"
#include "platform/core/dates.h"
#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

namespace quilla {

DateRange::DateRange(const QString& caption, Filling filling, std::function<Moment()> serverDate)
    : Check1(caption)
    , m_filling(filling)
    , m_serverDate(std::move(serverDate))
{
    QUILLA_NAMES(Check1, Text1);
    Text1[0].setAccessibleName(u"开始日期"_s);
    Text1[1].setAccessibleName(u"结束日期"_s);
    build(*this, row(Check1, room(8), u"从"_s, Text1[0], u"到"_s, Text1[1], stretch()));
    layout()->setContentsMargins(0, 0, 0, 0);
    enterAsTab({Check1, Text1[0], Text1[1]});
    setOpen(false);
    connect(&Check1, &QCheckBox::toggled, this, &DateRange::follow);
}

void DateRange::setOpen(bool open)
{
    for (TextBox& box : Text1) {
        box.setEnabled(open);
        QPalette colours = box.palette();
        colours.setColor(QPalette::Base, open ? Theme::current().surface : Theme::current().window);
        box.setPalette(colours);
    }
}

void DateRange::follow(bool ticked)
{
    setOpen(ticked);
    const bool empty = Text1[0].text().isEmpty() && Text1[1].text().isEmpty();
    const bool fresh = m_filling == Filling::Fresh;
    if (ticked && (fresh || empty)) {
        const QString today = isoDate(m_serverDate());
        for (TextBox& box : Text1)
            box.setText(today);
    }
    if (ticked) Text1[0].setFocus();
    if (!ticked && fresh)
        for (TextBox& box : Text1)
            box.clear();
}

QString DateRange::CheckDateBox(int index, Prompt& prompt)
{
    TextBox& box = Text1[index];
    const DateVerdict verdict = quilla::CheckDateBox(box.text(), prompt);
    if (verdict.refused) {
        box.setEnabled(true);
        box.setFocus();
    }
    return verdict.result;
}

bool DateRange::passes(Prompt& prompt)
{
    return !CheckDateBox(0, prompt).isEmpty() && !CheckDateBox(1, prompt).isEmpty();
}

} // namespace quilla
