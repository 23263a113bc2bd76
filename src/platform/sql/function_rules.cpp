#include "platform/sql/function_rules.h"

#include <array>

namespace quilla::sql {

namespace {

constexpr auto Rules = std::to_array<FunctionRule>({
    {u"getdate", 0, 0, u"", u'd'},
    {u"year", 1, 1, u"d", u'i'},
    {u"month", 1, 1, u"d", u'i'},
    {u"day", 1, 1, u"d", u'i'},
    {u"datepart", 1, 1, u"d", u'i'},
    {u"datediff", 2, 2, u"d", u'i'},
    {u"dateadd", 2, 2, u"nd", u'd'},
    {u"rtrim", 1, 1, u"t", u't'},
    {u"ltrim", 1, 1, u"t", u't'},
    {u"upper", 1, 1, u"t", u't'},
    {u"lower", 1, 1, u"t", u't'},
    {u"left", 2, 2, u"tn", u't'},
    {u"right", 2, 2, u"tn", u't'},
    {u"substring", 3, 3, u"tn", u't'},
    {u"len", 1, 1, u"t", u'i'},
    {u"charindex", 2, 2, u"t", u'i'},
    {u"replace", 3, 3, u"t", u't'},
    {u"str", 1, 3, u"n", u't'},
    {u"isnull", 2, 2, u"a", u'1'},
    {u"coalesce", 1, -1, u"a", u'a'},
    {u"nullif", 2, 2, u"a", u'1'},
    {u"abs", 1, 1, u"n", u'1'},
    {u"round", 2, 2, u"n", u'm'},
    {u"rank", 0, 0, u"", u'i'},
    {u"row_number", 0, 0, u"", u'i'},
});

} // namespace

const FunctionRule* functionRule(QStringView lower)
{
    for (const FunctionRule& rule : Rules)
        if (rule.name == lower) return &rule;
    return nullptr;
}

} // namespace quilla::sql
