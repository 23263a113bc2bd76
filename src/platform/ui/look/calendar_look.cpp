#include "platform/ui/look/calendar_look.h"

#include "platform/core/text.h"
#include "platform/ui/look/theme.h"

#include <QBoxLayout>
#include <QCalendarWidget>
#include <QTextCharFormat>

namespace quilla {

namespace {

/// Its own bar is as dark as a selection.
void quietBar(QWidget& bar)
{
    QPalette palette = bar.palette();
    palette.setColor(QPalette::Highlight, Theme::current().header);
    palette.setColor(QPalette::HighlightedText, Theme::current().text);
    bar.setPalette(palette);
}

/// The box in which the year is edited takes the place of its button, before the month.
void putYearFirst(QWidget& bar)
{
    auto* line = qobject_cast<QBoxLayout*>(bar.layout());
    auto* month = bar.findChild<QWidget*>(u"qt_calendar_monthbutton"_s);
    auto* year = bar.findChild<QWidget*>(u"qt_calendar_yearbutton"_s);
    if (!line || !month || !year) return;
    line->removeWidget(month);
    const int place = line->indexOf(year) + 1;
    line->insertWidget(place, month);
    line->insertSpacing(place, year->fontMetrics().height()); // the box has arrows
}

} // namespace

void dressCalendar(QCalendarWidget& calendar)
{
    calendar.setLocale(QLocale(QLocale::Chinese, QLocale::China));
    calendar.setFirstDayOfWeek(Qt::Monday);
    calendar.setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    QTextCharFormat weekend;
    weekend.setForeground(Theme::current().link);
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        calendar.setWeekdayTextFormat(day, weekend);
    if (auto* bar = calendar.findChild<QWidget*>(u"qt_calendar_navigationbar"_s)) {
        quietBar(*bar);
        putYearFirst(*bar);
    }
}

} // namespace quilla
