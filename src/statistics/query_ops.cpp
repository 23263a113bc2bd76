#include "statistics/query_ops.h"

#include <QRegularExpression>

namespace quilla {

namespace {

struct OperatorWord {
    QStringView word;
    QStringView sql;
};

constexpr OperatorWord Operators[] {{u"等于", u"="}, {u"不等于", u"<>"}, {u"包含", u"Like"}, {u"大于", u">"},
    {u"不小于", u">="}, {u"小于", u"<"}, {u"不大于", u"<="}};

QString operatorOf(QStringView word)
{
    for (const OperatorWord& entry : Operators)
        if (entry.word == word) return entry.sql.toString();
    return {};
}

FieldType typeOf(const QString& word)
{
    if (word == u"数字") return FieldType::Number;
    return word == u"日期" ? FieldType::Date : FieldType::Text;
}

/// A number that may stand bare in a statement.
bool isNumber(const QString& value)
{
    static const QRegularExpression number(uR"(^ *[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)? *\z)"_s);
    return number.match(value).hasMatch();
}

QString joined(const QString& before, const QString& link, const QString& next)
{
    return before.isEmpty() ? next : before + link + next;
}

QString textCondition(const QString& name, const QString& op, const QString& value)
{
    return op == u"Like" ? name + u" Like '%"_s + value + u"%'"_s : name + op + u'\'' + value + u'\'';
}

/// What stands for a digit that was not typed, so that a comparison takes the whole year or month as one:
/// its end for ">" and "<=", its beginning for ">=" and "<". With "=" the "_" is the wildcard of Like; with
/// "<>" it stays a plain character, so that every row with a date differs.
QChar fillerOf(QStringView op)
{
    if (op == u">" || op == u"<=") return u'9';
    return op == u">=" || op == u"<" ? u'0' : u'_';
}

/// Dates compare as texts of the form yyyy/mm/dd.
QString dateCondition(const QString& name, const QString& op, QString value)
{
    value.replace(u'-', u'/').replace(u'_', fillerOf(op));
    const QString column = u"Convert(varchar(10),"_s + name + u",111) "_s;
    return column + (op == u"=" ? u"Like "_s : op) + u'\'' + value + u'\'';
}

} // namespace

std::vector<QueryField> queryFields(const QString& fields, const QString& captions, const QString& types)
{
    std::vector<QueryField> list;
    if (fields.isEmpty()) return list;
    const QStringList names = fields.split(u',');
    const QStringList captionList = captions.split(u',');
    const QStringList typeList = types.split(u',');
    for (qsizetype i = 0; i < names.size(); ++i)
        list.push_back({names[i], captionList.value(i), typeOf(typeList.value(i))});
    return list;
}

QStringList queryOperators(FieldType type)
{
    if (type == FieldType::Text) return {u"等于"_s, u"不等于"_s, u"包含"_s};
    return {u"等于"_s, u"不等于"_s, u"大于"_s, u"不小于"_s, u"小于"_s, u"不大于"_s};
}

std::optional<QString> queryCondition(const QueryField& field, QStringView word, const QString& value)
{
    const QString op = operatorOf(word);
    const QString safe = doubled(value);
    if (field.type == FieldType::Text) return textCondition(field.name, op, safe);
    if (field.type == FieldType::Date) return dateCondition(field.name, op, safe);
    if (!isNumber(value)) return {};
    return field.name + op + safe;
}

bool QueryBuilder::add(const QueryField& field, QStringView word, const QString& value)
{
    if (value.isEmpty() || value == BlankDate) return false;
    const std::optional<QString> condition = queryCondition(field, word, value);
    if (!condition) return false;
    m_currentCondition = joined(m_currentCondition, u" And "_s, *condition);
    // The operator reads the value as the statement has it, its quotes doubled.
    m_signSql = joined(m_signSql, u";"_s, field.caption + u'\'' + word.toString() + u'\'' + doubled(value));
    return true;
}

QString QueryBuilder::merge()
{
    if (m_currentCondition.isEmpty()) return {};
    m_mergedCondition = joined(m_mergedCondition, u" OR "_s, u'(' + m_currentCondition + u')');
    m_currentCondition.clear();
    return std::exchange(m_signSql, QString());
}

void QueryBuilder::sortBy(const QueryField& field, SortDirection direction, QStringView label)
{
    const QString word = direction == SortDirection::Ascending ? u" Asc"_s : u" Desc"_s;
    m_orderText = joined(m_orderText, u","_s, field.name + word);
    m_readableOrder
        = joined(m_readableOrder, u";"_s, u'\'' + field.caption + u'\'' + label.left(1).toString());
}

QString QueryBuilder::condition() const
{
    if (m_currentCondition.isEmpty()) return m_mergedCondition;
    if (m_mergedCondition.isEmpty()) return m_currentCondition;
    return m_mergedCondition + u" OR ("_s + m_currentCondition + u')';
}

} // namespace quilla
