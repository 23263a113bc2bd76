#pragma once

class QCalendarWidget;

namespace quilla {

/// A calendar as Chinese readers know it, in the colours of the theme: the year before the month, weeks from
/// Monday, the weekend set off.
void dressCalendar(QCalendarWidget& calendar);

} // namespace quilla
