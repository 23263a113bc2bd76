#pragma once

#include "platform/db/decimal.h"
#include "platform/db/moment.h"
#include "platform/sql/schema.h"

#include <memory>
#include <string_view>
#include <vector>

namespace quilla {

namespace sql {
struct Translation;
}

/// A column of a result.
struct Field {
    QString name; ///< as the statement spells it; empty for what is worked out and has no alias
    sql::Kind kind = sql::Kind::Unknown;
};

/// Gives a field of a result the kind and the name that the statement means, as far as they are known, in
/// place of what the engine says of it. Each engine names columns in its own way.
void describeByStatement(Field& field, const sql::Translation& statement, std::size_t column);

/// The columns of a result; shared by all results of one prepared statement.
using Fields = std::shared_ptr<const std::vector<Field>>;

/// One value of a row as an engine hands it over.
struct Cell {
    enum class Form : quint8 { Null, Text, Integer, Bit, Decimal, Date };

    Form form = Form::Null;
    qint64 number = 0; ///< of Integer and Bit; of a Date the milliseconds since Julian day 0
    std::string_view text; ///< UTF-8 of Text and Decimal; valid until the cursor moves or reads on
};

constexpr qint64 MillisecondsPerDay = 86'400'000;

inline Cell dateCell(const Moment& moment)
{
    return {Cell::Form::Date,
        moment.date.toJulianDay() * MillisecondsPerDay + moment.time.msecsSinceStartOfDay(), {}};
}

/// A number of an engine in the form that its column's kind wants; `room` keeps the digits of one that
/// becomes a text or a decimal.
Cell wholeNumberCell(qint64 number, sql::Kind kind, DecimalDigits& room);
Cell fractionCell(double number, sql::Kind kind, DecimalDigits& room);

/// The rows of a select as they come from the engine, read once.
class Cursor {
public:
    virtual ~Cursor() = default;
    virtual Fields fields() const = 0;
    /// Moves to the next row, at first to the first one. False at the end.
    virtual bool step() = 0;
    virtual Cell cell(int column) = 0;
};

} // namespace quilla
