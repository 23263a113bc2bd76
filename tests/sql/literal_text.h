#pragma once

#include "platform/sql/translator.h"

#include <QDateTime>

namespace quilla::test {

/// What a driver binds for the literal, as text; as strict as a driver. Throws `Error` when the literal is
/// not of the kind that its place asks for.
QString boundText(const sql::Parameter& parameter, const sql::Literal& literal);

/// "yyyy-mm-dd" at midnight, else with the time to the millisecond.
QString canonicalText(const QDateTime& moment);

} // namespace quilla::test
