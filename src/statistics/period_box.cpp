#include "statistics/period_box.h"

#include "platform/ui/form/form.h"
#include "platform/ui/look/calendar_look.h"
#include "platform/ui/look/theme.h"

#include <QLayout>
#include <QShortcut>
#include <QTableView>

namespace quilla {

namespace {

constexpr QPoint CalendarPlace {240, 620}; // twips

} // namespace

PeriodBox::PeriodBox(PeriodKind kind, const QDate& today)
    : labMonthhh(u"月份："_s)
    , labNian(u"年份："_s)
    , textDate(kind == PeriodKind::Month ? u"####-##"_s : QString(), u' ')
    , cmdDate(u"确定"_s)
    , m_kind(kind)
{
    QUILLA_NAMES(textDate, Calendar, MonthView, cmdDate);
    QWidget& caption = kind == PeriodKind::Month ? static_cast<QWidget&>(labMonthhh) : labNian;
    caption.setObjectName(u"labMonthhh"_s);
    textDate.setAccessibleName(kind == PeriodKind::Month ? u"月份"_s : u"年份"_s);
    textDate.setText(presetPeriod(kind, today));
    build(*this, row(caption, textDate));
    layout()->setContentsMargins({});
    textDate.setFixedWidth(textDate.fontMetrics().averageCharWidth() * 14);
    enterAsTab({textDate});
    setFocusProxy(&textDate);
    setUpCalendar();
}

void PeriodBox::setUpCalendar()
{
    build(Calendar, column(MonthView, row(stretch(), cmdDate)));
    Calendar.setFrameShape(QFrame::StyledPanel);
    Calendar.setAutoFillBackground(true);
    dressCalendar(MonthView);
    MonthView.setAccessibleName(u"日历"_s);
    Calendar.hide();
    labMonthhh.setToolTip(u"打开日历"_s);
    onClick(labMonthhh, [this] { toggleCalendar(); });
    onClick(cmdDate, [this] { takeDate(); });
    connect(&MonthView, &QCalendarWidget::activated, this, &PeriodBox::takeDate);
    auto* escape = new QShortcut(Qt::Key_Escape, &Calendar);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    connect(escape, &QShortcut::activated, this, &PeriodBox::toggleCalendar);
}

void PeriodBox::toggleCalendar()
{
    if (Calendar.isVisible()) {
        Calendar.hide();
        return textDate.setFocus();
    }
    QWidget& form = *parentWidget();
    Calendar.setParent(&form);
    auto* days = MonthView.findChild<QTableView*>(); // the calendar has the focus in it
    setTabOrder(&textDate, days);
    setTabOrder(days, &cmdDate);
    if (const std::optional<Period> typed = period())
        MonthView.setSelectedDate(QDate(typed->year, typed->month, 1));
    Calendar.adjustSize();
    const int below = mapTo(&form, QPoint(0, height())).y();
    Calendar.move(pixelsOf(CalendarPlace.x(), *this), std::max(pixelsOf(CalendarPlace.y(), *this), below));
    Calendar.show();
    Calendar.raise();
    MonthView.setFocus();
}

void PeriodBox::takeDate()
{
    textDate.setText(MonthView.selectedDate().toString(u"yyyy-MM"_s));
    toggleCalendar();
}

} // namespace quilla
