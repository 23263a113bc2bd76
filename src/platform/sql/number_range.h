#pragma once

#include "platform/sql/schema.h"

namespace quilla::sql {

/// The numbers that a column holds, as its type states them. A server checks it by itself; SQLite, whose
/// columns hold any number, relies on the translator and the driver, so that it holds in every file.
struct NumberRange {
    Kind kind = Kind::Unknown; ///< Integer or Decimal; Unknown for no limit
    int size = 0; ///< bytes of a whole number, digits before the point of a decimal; 0 for not known
    int scale = 0; ///< digits after the point

    bool holds(qint64 number) const;
    bool holds(double number) const;
    /// Why `number` is refused, for the operator.
    QString refusal(const QString& number) const;
};

} // namespace quilla::sql
