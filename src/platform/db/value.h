#pragma once

#include "platform/core/text.h"
#include "platform/db/moment.h"
#include "platform/sql/schema.h"

#include <variant>

namespace quilla {

/// A decimal as the database wrote it, digit for digit: money is never a binary fraction on its way.
struct DecimalText {
    QString digits;
};

/// One field of a row.
class Value {
public:
    Value() = default;
    explicit Value(QString text)
        : m_held(std::move(text))
    {
    }
    explicit Value(qint64 number)
        : m_held(number)
    {
    }
    explicit Value(bool bit)
        : m_held(bit)
    {
    }
    explicit Value(DecimalText number)
        : m_held(std::move(number))
    {
    }
    explicit Value(Moment moment)
        : m_held(moment)
    {
    }

    bool isNull() const { return std::holds_alternative<std::monostate>(m_held); }
    sql::Kind kind() const;

    /// As a grid or a box shows it: null is empty, a bit "True" or "False", a date its locale text.
    QString text() const;
    /// Whole number; a decimal is rounded, a bit is 0 or 1. Nullopt for null and for a text that is none.
    std::optional<qint64> integer() const;
    /// Nullopt for null and for a text that is no number.
    std::optional<double> number() const;
    /// Null is false; a number is true when it is not 0.
    bool isTrue() const;
    /// Nullopt for null and for a text that is no date.
    std::optional<Moment> moment() const;

private:
    std::variant<std::monostate, QString, qint64, bool, DecimalText, Moment> m_held;
};

} // namespace quilla
