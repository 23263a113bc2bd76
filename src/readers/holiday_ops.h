#pragma once

#include "frame/record_ops.h"
#include "frame/refusal.h"

namespace quilla {

/// A closing period of the library, its days as they were typed or stored.
struct ClosingPeriod {
    QString name;
    QString first;
    QString last;
};

/// The boxes of the holiday editor.
namespace HolidayBox {
enum { Name, First, Last, Count };
}

/// How long a holiday's name may be.
inline constexpr int HolidayNameWidth = 400;

/// The period as the list shows it.
QString periodText(const ClosingPeriod& holiday);
/// The holiday of a line of the list.
ClosingPeriod holidayOfLine(const QString& name, const QString& period);

/// All periods, by their first day. Throws `Error`.
std::vector<ClosingPeriod> readHolidays(Session& session);

/// What keeps the holiday from being saved. The days are compared as texts: 2003-9-1 sorts after 2003-10-1.
std::optional<Refusal> CheckHolidayForm(const ClosingPeriod& holiday);

/// The refusal when another holiday has that name. `unchanged` is the name of the holiday that is being
/// edited, empty while adding. Saving does not ask for it again, so a name that was taken by another desk
/// meanwhile stands twice. Throws `Error`.
std::optional<Refusal> takenHolidayName(Session& session, const QString& name, const QString& unchanged);

/// Both save a holiday that passed `CheckHolidayForm`, and go on when that fails.
void addHoliday(Session& session, const ClosingPeriod& holiday);
void changeHoliday(Session& session, const ClosingPeriod& holiday, const QString& oldName);

RecordRemoval holidayRemoval();

} // namespace quilla
