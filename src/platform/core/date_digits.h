#pragma once

#include <QDate>
#include <QTime>

namespace quilla {

// These functions write a date digit by digit into the caller's buffer and return the place after the last
// digit. Each operation of a desk writes several dates, and Qt's own formatting, which goes through calendar
// and locale, costs more than one of its statements.

template <typename Char> Char* putDigits(Char* at, int value, int count)
{
    for (int i = count - 1; i >= 0; --i, value /= 10)
        at[i] = Char('0' + value % 10);
    return at + count;
}

/// "yyyy-MM-dd", of a year from 0 to 9999.
template <typename Char> Char* putDate(Char* at, const QDate& date)
{
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    at = putDigits(at, year, 4);
    *at++ = Char('-');
    at = putDigits(at, month, 2);
    *at++ = Char('-');
    return putDigits(at, day, 2);
}

/// " H:mm:ss" or " HH:mm:ss".
template <typename Char> Char* putTime(Char* at, const QTime& time, int hourDigits)
{
    *at++ = Char(' ');
    at = putDigits(at, time.hour(), hourDigits);
    *at++ = Char(':');
    at = putDigits(at, time.minute(), 2);
    *at++ = Char(':');
    return putDigits(at, time.second(), 2);
}

} // namespace quilla
