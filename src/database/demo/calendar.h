#pragma once

#include "database/demo/library.h"

namespace quilla::demo {

/// The closing periods of the years from three before to one after `today`, in the order of their days.
std::vector<Holiday> makeHolidays(const QDate& today);

/// Whether the desk is open.
bool isOpen(const std::vector<Holiday>& holidays, const QDate& day);

/// A loan's due date: `days` after `from`, or the day after the closing period that it would fall into.
QDate dueDate(const std::vector<Holiday>& holidays, const QDate& from, int days);

} // namespace quilla::demo
