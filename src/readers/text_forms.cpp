#include "readers/text_forms.h"

#include "platform/core/date_box.h"
#include "platform/core/dates.h"
#include "platform/core/text.h"

#include <QRegularExpression>

namespace quilla {

bool hasUnseenCharacters(const QString& text)
{
    return !text.isValidUtf16() || std::any_of(text.begin(), text.end(), [](QChar c) {
        return c != u'\n' && c != u'\t' && c.category() == QChar::Other_Control;
    });
}

bool isRoundedCode(const QString& text)
{
    static const QRegularExpression rounded(u"^\\d([.,]\\d+)?[eE]\\+\\d+$"_s);
    return rounded.match(text).hasMatch();
}

bool hasWideForms(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c >= u'\uff01' && c <= u'\uff5e'; });
}

QString storedDay(const QString& text)
{
    if (const auto day = readDay(text)) return isoDate(*day);
    const auto day = startsWithFullYear(text) ? platformDate(text) : std::nullopt;
    return day ? isoDate(*day) : QString();
}

} // namespace quilla
