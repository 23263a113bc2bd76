#include "platform/core/date_box.h"

#include "platform/core/dates.h"

#include <QRegularExpression>

namespace quilla {

namespace {

constexpr int EarliestYear = 100;

/// The parts of a date in the order in which they stand; '-' is a separator.
struct DateForm {
    QRegularExpression pattern;
    QStringView order;
};

QRegularExpression whole(const QString& pattern)
{
    static const QString time = uR"((?:\s+\d{1,2}:\d{1,2}(?::\d{1,2})?)?)"_s;
    return QRegularExpression(u"^"_s + pattern + time + u"$"_s);
}

const std::vector<DateForm>& dateForms()
{
    static const std::vector<DateForm> forms {
        {whole(uR"((\d{4})\s*([-/.])\s*(\d{1,2})\s*\2\s*(\d{1,2}))"_s), u"y-md"},
        {whole(uR"((\d{4}|\d{2})\s*年\s*(\d{1,2})\s*月\s*(\d{1,2})\s*日)"_s), u"ymd"},
        {whole(uR"((\d{4})\s*年\s*(\d{1,2})\s*月)"_s), u"ym"},
        {whole(uR"((\d{4})\s*[-/]\s*(\d{1,2}))"_s), u"ym"},
        {whole(uR"((\d{1,2})\s*([-/.])\s*(\d{1,2})\s*\2\s*(\d{4}))"_s), u"m-dy"},
        {whole(uR"((\d{1,2})\s*([-/.])\s*(\d{1,2})\s*\2\s*(\d{4}))"_s), u"d-my"},
        {whole(uR"((\d{1,2})\s*([-/])\s*(\d{1,2})\s*\2\s*(\d{1,2}))"_s), u"y-md"},
        {whole(uR"((\d{1,2})\s*([-/])\s*(\d{1,2})\s*\2\s*(\d{1,2}))"_s), u"m-dy"},
        {whole(uR"((\d{1,2})\s*([-/])\s*(\d{1,2})\s*\2\s*(\d{1,2}))"_s), u"d-my"},
        {whole(uR"((\d{1,2})\s*[-/]\s*(\d{1,2}))"_s), u"md"},
    };
    return forms;
}

int fullYear(QStringView digits)
{
    const int year = digits.toInt();
    if (digits.size() > 2) return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

std::optional<QDate> readAs(const DateForm& form, const QString& text, const QDate& today)
{
    const QRegularExpressionMatch match = form.pattern.match(text);
    if (!match.hasMatch()) return {};
    int year = today.year();
    int month = 1;
    int day = 1;
    for (qsizetype i = 0; i < form.order.size(); ++i) {
        const QStringView digits = match.capturedView(int(i) + 1);
        if (form.order[i] == u'y') year = fullYear(digits);
        if (form.order[i] == u'm') month = digits.toInt();
        if (form.order[i] == u'd') day = digits.toInt();
    }
    const QDate date(year, month, day);
    return date.isValid() && year >= EarliestYear ? std::optional(date) : std::nullopt;
}

bool hasBadTime(const QString& text)
{
    static const QRegularExpression time(uR"((\d{1,2}):(\d{1,2})(?::(\d{1,2}))?$)"_s);
    const QRegularExpressionMatch match = time.match(text);
    if (!match.hasMatch()) return false;
    return !QTime::isValid(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt());
}

bool isTimeAlone(const QString& text)
{
    static const QRegularExpression time(uR"(^\d{1,2}:\d{1,2}(:\d{1,2})?$)"_s);
    return time.match(text).hasMatch();
}

} // namespace

std::optional<QDate> platformDate(QStringView text, const QDate& today)
{
    const QString trimmed = trimBlanks(text).toString();
    if (hasBadTime(trimmed)) return {};
    if (isTimeAlone(trimmed)) return zeroDate();
    for (const DateForm& form : dateForms())
        if (const auto date = readAs(form, trimmed, today)) return date;
    return {};
}

QString databaseDate(const QString& text)
{
    const auto day = readDate(text) ? std::nullopt : platformDate(text);
    return day ? isoDate(*day) : text;
}

bool startsWithFullYear(QStringView text)
{
    const QStringView year = text.left(4);
    return year.size() == 4
        && std::all_of(year.begin(), year.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

DateVerdict CheckDateBox(const QString& text, Prompt& prompt)
{
    if (text.isEmpty()) return {};
    if (!platformDate(text)) {
        prompt.inform(u"请输入正确的日期格式(例如:2003-01-01)"_s, OperationTitle.toString());
        return {{}, true};
    }
    if (!startsWithFullYear(text)) {
        prompt.inform(u"请输入完整的日期格式!(例如:2003-01-01)"_s, OperationTitle.toString());
        return {{}, true};
    }
    return {u"pass"_s, false};
}

} // namespace quilla
