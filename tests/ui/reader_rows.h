#pragma once

#include "platform/db/sources.h"

namespace quilla {

/// Readers as a select would bring them: code, loan limit, right to lend without a card, end of term.
class Readers final : public Recordset::Source {
public:
    explicit Readers(int count)
        : Source(std::make_shared<const std::vector<Field>>(
            std::vector<Field> {{u"readercode"_s, sql::Kind::Text}, {u"bookcount"_s, sql::Kind::Integer},
                {u"wuzheng"_s, sql::Kind::Bit}, {u"term"_s, sql::Kind::Date}}))
        , m_count(count)
    {
    }

    qsizetype recordCount() const override { return m_count; }
    bool eof() const override { return m_row >= m_count; }

private:
    void moveNext() override { ++m_row; }
    void moveFirst() override { m_row = 0; }
    Cell cell(int column) override
    {
        m_code = "R" + std::to_string(m_row + 1);
        const qint64 day = QDate(2004, 3, 9).toJulianDay() + m_row;
        constexpr qint64 afternoon = 14 * 3'600'000;
        const Cell cells[] {{Cell::Form::Text, 0, m_code}, {Cell::Form::Integer, m_row, {}},
            {m_row == 2 ? Cell::Form::Null : Cell::Form::Bit, m_row % 2, {}},
            {m_row == 2 ? Cell::Form::Null : Cell::Form::Date, day * MillisecondsPerDay + afternoon, {}}};
        return cells[column];
    }

    int m_count;
    int m_row = 0;
    std::string m_code;
};

inline Recordset readers(int count)
{
    return Recordset(std::make_unique<Readers>(count));
}

} // namespace quilla
