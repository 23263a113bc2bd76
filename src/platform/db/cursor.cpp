#include "platform/db/cursor.h"

#include "platform/sql/translator.h"

#include <charconv>
#include <cmath>

namespace quilla {

using sql::Kind;

namespace {

Cell digitsCell(const DecimalDigits& digits, Kind kind)
{
    return {kind == Kind::Text ? Cell::Form::Text : Cell::Form::Decimal, 0, digits.view()};
}

} // namespace

void describeByStatement(Field& field, const sql::Translation& statement, std::size_t column)
{
    if (statement.columns[column] != Kind::Unknown) field.kind = statement.columns[column];
    if (column < statement.names.size()) field.name = statement.names[column];
}

Cell wholeNumberCell(qint64 number, Kind kind, DecimalDigits& room)
{
    if (kind == Kind::Bit) return {Cell::Form::Bit, number != 0, {}};
    if (kind != Kind::Decimal && kind != Kind::Text) return {Cell::Form::Integer, number, {}};
    const auto end = std::to_chars(room.text, room.text + sizeof room.text, number).ptr;
    room.length = std::size_t(end - room.text);
    return digitsCell(room, kind);
}

Cell fractionCell(double number, Kind kind, DecimalDigits& room)
{
    if (kind == Kind::Bit) return {Cell::Form::Bit, number != 0, {}};
    if (kind == Kind::Integer && number == std::trunc(number) && std::abs(number) < 9e18)
        return {Cell::Form::Integer, qint64(number), {}};
    room = DecimalDigits(number);
    return digitsCell(room, kind);
}

} // namespace quilla
