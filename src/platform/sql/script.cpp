#include "platform/sql/analyser.h"
#include "platform/sql/parser.h"
#include "platform/sql/printer.h"
#include "platform/sql/statement_refusal.h"

namespace quilla::sql {

namespace {

bool isEmpty(const QString& part)
{
    try {
        return lex(part).size() == 1;
    } catch (const Refusal&) {
        return false; // the error is reported when the statement itself is read
    }
}

/// How many lines precede the first word, so that an error can name the line of the script.
ScriptPart withoutLeadingBlanks(const QString& text, int line)
{
    qsizetype from = 0;
    while (from < text.size() && text[from].isSpace())
        ++from;
    return {text.sliced(from), line + int(QStringView(text).first(from).count(u'\n'))};
}

Table tableOf(CreateTable definition, const Schema& schema)
{
    Table table;
    table.name = definition.name;
    std::vector<QString> fallbacks;
    for (const ColumnDefinition& column : definition.columns)
        fallbacks.push_back(column.fallback ? Printer().printExpression(*column.fallback) : QString());
    Statement statement = std::move(definition);
    table.columns = Analyser(schema).run(statement);
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        table.columns[i].fallback = fallbacks[i];
    return table;
}

/// What a view puts together by "union all" of whole tables; empty for any other view.
std::vector<UnionArm> unionOf(const Query& query)
{
    std::vector<UnionArm> arms;
    for (const Select& arm : query.arms) {
        const bool whole = arm.from.size() == 1 && arm.from[0]->form == Source::Form::Table && !arm.where
            && arm.groupBy.empty() && !arm.distinct && !arm.top && (arms.empty() || arm.all);
        if (!whole) return {};
        UnionArm& each = arms.emplace_back();
        each.table = arm.from[0]->name;
        for (const SelectItem& item : arm.items) {
            if (item.value->op != Op::Column) return {};
            each.columns.push_back(item.value->name);
        }
    }
    return arms.size() > 1 ? arms : std::vector<UnionArm>();
}

Table viewOf(CreateView definition, const QString& text, const Schema& schema)
{
    Table table;
    table.definition = text;
    table.unionOf = unionOf(definition.query);
    table.name = definition.name;
    table.view = true;
    const qsizetype place = definition.query.arms.front().items.front().value->place;
    Statement statement = std::move(definition);
    table.columns = Analyser(schema).run(statement);
    for (const Column& column : table.columns) {
        if (column.name.isEmpty()) refuse(place, u"视图的每一列都要有名称"_s);
        if (column.kind == Kind::Unknown) refuse(place, u"视图的列 "_s + column.name + u" 类型不明"_s);
    }
    return table;
}

void readPart(const ScriptPart& part, Schema& schema)
{
    Statement statement = parse(part.text).statement;
    if (auto* table = std::get_if<CreateTable>(&statement))
        schema.add(tableOf(std::move(*table), schema));
    else if (auto* view = std::get_if<CreateView>(&statement))
        schema.add(viewOf(std::move(*view), part.text, schema));
    else if (auto* index = std::get_if<CreateIndex>(&statement))
        schema.addIndex(index->table, index->columns.front().name);
    else
        refuse(0, u"此处只能创建表、视图和索引"_s);
}

} // namespace

std::vector<ScriptPart> splitScript(const QString& script)
{
    std::vector<ScriptPart> parts;
    QStringList lines;
    int first = 1;
    int line = 0;
    const auto finish = [&] {
        const QString text = lines.join(u'\n');
        if (!isEmpty(text)) parts.push_back(withoutLeadingBlanks(text, first));
        lines.clear();
        first = line + 1;
    };
    for (const QString& each : script.split(u'\n')) {
        ++line;
        if (each.trimmed().compare(u"go", Qt::CaseInsensitive) == 0)
            finish();
        else
            lines.append(each);
    }
    finish();
    return parts;
}

Schema readSchema(const QString& tsql)
{
    return readSchema(tsql, {});
}

Schema readSchema(const QString& tsql, Schema known)
{
    for (const ScriptPart& part : splitScript(tsql)) {
        try {
            readPart(part, known);
        } catch (const Refusal& refusal) {
            throw errorOf(refusal, part.text, part.line);
        }
    }
    return known;
}

} // namespace quilla::sql
