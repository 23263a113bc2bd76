#include "platform/sql/ast.h"

#include <array>

namespace quilla::sql {

namespace {

struct TypeRule {
    QStringView name;
    Kind kind;
    int width; ///< when none is given
    int scale;
    int bytes = 0;
};

constexpr auto Rules = std::to_array<TypeRule>({
    {u"varchar", Kind::Text, 1, 0},
    {u"nvarchar", Kind::Text, 1, 0},
    {u"char", Kind::Text, 1, 0},
    {u"nchar", Kind::Text, 1, 0},
    {u"text", Kind::Text, 0, 0},
    {u"ntext", Kind::Text, 0, 0},
    {u"int", Kind::Integer, 0, 0, 4},
    {u"smallint", Kind::Integer, 0, 0, 2},
    {u"tinyint", Kind::Integer, 0, 0, 1},
    {u"bigint", Kind::Integer, 0, 0, 8},
    {u"bit", Kind::Bit, 0, 0},
    {u"decimal", Kind::Decimal, 18, 0},
    {u"numeric", Kind::Decimal, 18, 0},
    {u"money", Kind::Decimal, 19, 4},
    {u"smallmoney", Kind::Decimal, 10, 4},
    {u"datetime", Kind::Date, 0, 0},
    {u"smalldatetime", Kind::Date, 0, 0},
});

constexpr int CastWidth = 30; ///< of varchar without a width, inside convert and cast

const TypeRule* ruleOf(const TypeName& type)
{
    for (const TypeRule& rule : Rules)
        if (rule.name == type.name) return &rule;
    return nullptr;
}

} // namespace

Kind kindOf(const TypeName& type)
{
    const TypeRule* rule = ruleOf(type);
    return rule ? rule->kind : Kind::Unknown;
}

NumberRange rangeOf(const Type& type)
{
    if (type.kind == Kind::Integer) return {type.kind, type.bytes, 0};
    if (type.kind == Kind::Decimal && type.width > 0) return {type.kind, type.width - type.scale, type.scale};
    return {};
}

Type typeOf(const TypeName& type, bool cast)
{
    const TypeRule* rule = ruleOf(type);
    if (!rule) return {};
    Type result {rule->kind, rule->width, rule->scale, false, rule->bytes};
    if (rule->kind == Kind::Text && rule->width > 0 && cast) result.width = CastWidth;
    if (type.width > 0) {
        result.width = type.width;
        result.scale = type.scale;
    }
    if (type.unlimited) result.width = 0;
    return result;
}

} // namespace quilla::sql
