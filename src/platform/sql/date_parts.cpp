#include "platform/sql/date_parts.h"

#include <array>
#include <utility>

namespace quilla::sql {

namespace {

constexpr auto Parts = std::to_array<std::pair<QStringView, QStringView>>(
    {{u"year", u"year"}, {u"yy", u"year"}, {u"yyyy", u"year"}, {u"quarter", u"quarter"}, {u"qq", u"quarter"},
        {u"q", u"quarter"}, {u"month", u"month"}, {u"mm", u"month"}, {u"m", u"month"},
        {u"dayofyear", u"dayofyear"}, {u"dy", u"dayofyear"}, {u"y", u"dayofyear"}, {u"day", u"day"},
        {u"dd", u"day"}, {u"d", u"day"}, {u"week", u"week"}, {u"wk", u"week"}, {u"ww", u"week"},
        {u"weekday", u"weekday"}, {u"dw", u"weekday"}, {u"hour", u"hour"}, {u"hh", u"hour"},
        {u"minute", u"minute"}, {u"mi", u"minute"}, {u"n", u"minute"}, {u"second", u"second"},
        {u"ss", u"second"}, {u"s", u"second"}, {u"millisecond", u"millisecond"}, {u"ms", u"millisecond"}});

} // namespace

QStringView datePartOf(QStringView word)
{
    for (const auto& [spelling, part] : Parts)
        if (word.compare(spelling, Qt::CaseInsensitive) == 0) return part;
    return {};
}

} // namespace quilla::sql
