#include "platform/sql/function_rules.h"

#include <algorithm>
#include <array>

namespace quilla::sql {

namespace {

constexpr auto Rules = std::to_array<FunctionRule>({
    {u"getdate", 0, 0, u"", u'd', u"getdate()", u"getdate()"},
    {u"year", 1, 1, u"d", u'i', u"CAST(substr($1, 1, 4) AS INTEGER)", u"date_part('year', $1)::integer"},
    {u"month", 1, 1, u"d", u'i', u"CAST(substr($1, 6, 2) AS INTEGER)", u"date_part('month', $1)::integer"},
    {u"day", 1, 1, u"d", u'i', u"CAST(substr($1, 9, 2) AS INTEGER)", u"date_part('day', $1)::integer"},
    {u"datepart", 1, 1, u"d", u'i', u"qj_part($p, $1)", u"qj_part($p, $1)"},
    {u"datediff", 2, 2, u"d", u'i', u"qj_datediff($p, $1, $2)", u"qj_datediff($p, $1, $2)"},
    {u"dateadd", 2, 2, u"nd", u'd', u"qj_dateadd($p, $1, $2)", u"qj_dateadd($p, $1, $2)"},
    {u"rtrim", 1, 1, u"t", u't', u"rtrim($1)", u"rtrim($1)"},
    {u"ltrim", 1, 1, u"t", u't', u"ltrim($1)", u"ltrim($1)"},
    {u"upper", 1, 1, u"t", u't', u"upper($1)", u"upper($1 COLLATE \"und-x-icu\")"},
    {u"lower", 1, 1, u"t", u't', u"lower($1)", u"lower($1 COLLATE \"und-x-icu\")"},
    {u"left", 2, 2, u"tn", u't', u"substr($1, 1, max($2, 0))", u"left($1, greatest($2, 0)::integer)"},
    {u"right", 2, 2, u"tn", u't', u"substr($1, -max($2, 0), max($2, 0))",
        u"right($1, greatest($2, 0)::integer)"},
    {u"substring", 3, 3, u"tn", u't', u"qj_substring($1, $2, $3)",
        u"substr($1, $2::integer, greatest($3, 0)::integer)"},
    {u"len", 1, 1, u"t", u'i', u"length(rtrim($1))", u"length(rtrim($1))"},
    {u"charindex", 2, 2, u"t", u'i', u"instr(lower($2), lower($1))",
        u"strpos(lower($2 COLLATE \"und-x-icu\"), lower($1 COLLATE \"und-x-icu\"))"},
    {u"replace", 3, 3, u"t", u't', u"replace($1, $2, $3)", u"replace($1, $2, $3)"},
    {u"str", 1, 1, u"n", u't', u"qj_str($1, 10, 0)", u"qj_str($1, 10, 0)"},
    {u"str", 2, 2, u"n", u't', u"qj_str($1, $2, 0)", u"qj_str($1, $2, 0)"},
    {u"str", 3, 3, u"n", u't', u"qj_str($1, $2, $3)", u"qj_str($1, $2, $3)"},
    {u"isnull", 2, 2, u"a", u'1', u"coalesce($1, $2)", u"coalesce($1, $2)"},
    {u"coalesce", 1, 1, u"a", u'a', u"$1", u"coalesce($*)"},
    {u"coalesce", 2, -1, u"a", u'a', u"coalesce($*)", u"coalesce($*)"},
    {u"nullif", 2, 2, u"a", u'1', u"CASE WHEN $1 = ($2) COLLATE QUILLA THEN NULL ELSE $1 END",
        u"nullif($~1, $~2)"},
    {u"abs", 1, 1, u"n", u'1', u"abs($1)", u"abs($1)"},
    {u"round", 2, 2, u"n", u'm', u"qj_round($1, $2)", u"round($1::numeric, $2::integer)"},
    // These count in an order, which the printers write.
    {u"rank", 0, 0, u"", u'i', u"", u""},
    {u"row_number", 0, 0, u"", u'i', u"", u""},
});

} // namespace

bool isFunction(QStringView lower)
{
    return std::ranges::find(Rules, lower, &FunctionRule::name) != Rules.end();
}

const FunctionRule* functionRule(QStringView lower, int arguments)
{
    const auto found = std::ranges::find_if(Rules, [&](const FunctionRule& rule) {
        return rule.name == lower && arguments >= rule.least && (rule.most < 0 || arguments <= rule.most);
    });
    return found == Rules.end() ? nullptr : &*found;
}

} // namespace quilla::sql
