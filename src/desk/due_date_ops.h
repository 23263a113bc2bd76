#pragma once

#include "frame/session.h"

#include <vector>

namespace quilla {

/// A closed period of the library, both days included.
struct Holiday {
    QDate from;
    QDate to;
};

/// Reads a calendar row: "yyyy-mm-dd", one blank, "yyyy-mm-dd". nullopt when it is not of that form.
std::optional<Holiday> readHoliday(const QString& code);

/// Walks the holidays once, in the order given, and moves the due date of a loan of `days` from `start`.
/// A holiday that lies wholly inside the period moves it to one day past `start` plus `days`, whatever
/// the holiday's length: a fixed rule of this library.
QDate moveOverHolidays(QDate start, int days, const std::vector<Holiday>& holidays);

/// A due date, and whether the calendar behind it could be asked for: not, when the database did not open and
/// the operator answered that he would not enter its settings anew. Nothing may be committed then.
struct DueDate {
    Moment date;
    bool certain = true;
};

/// The due date of a loan of `days` made now, over the holiday calendar. With an empty calendar the
/// server's date plus `days`, with its time of day; the zero date when no connection can be had. Forgets
/// the session's error.
Moment ComputeDueDate(Session& session, qint16 days);
/// The same, and how sure it is.
DueDate dueDateFor(Session& session, qint16 days);

} // namespace quilla
