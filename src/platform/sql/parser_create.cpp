#include "platform/sql/parser.h"
#include "platform/sql/statement_refusal.h"

namespace quilla::sql {

Statement Parser::createStatement()
{
    if (acceptWord(u"table")) return createTable();
    if (acceptWord(u"view")) return createView();
    const bool unique = acceptWord(u"unique");
    if (!acceptWord(u"clustered")) acceptWord(u"nonclustered");
    if (acceptWord(u"index")) return createIndex(unique);
    refuseHere(u"只能创建表、视图和索引"_s);
}

CreateTable Parser::createTable()
{
    CreateTable result;
    result.name = objectName();
    expectSign(u"(");
    do {
        const Token& token = peek();
        const bool constraint = token.isWord(u"constraint") || token.isWord(u"primary")
            || token.isWord(u"unique") || token.isWord(u"check");
        if (constraint)
            result.constraints.push_back(tableConstraint());
        else
            result.columns.push_back(columnDefinition());
    } while (acceptSign(u","));
    if (result.columns.empty()) refuseHere(u"表里至少要有一列"_s);
    expectSign(u")");
    return result;
}

ColumnDefinition Parser::columnDefinition()
{
    ColumnDefinition column;
    column.place = peek().place;
    column.name = name();
    column.type = typeName();
    while (columnOption(column)) { }
    return column;
}

bool Parser::columnOption(ColumnDefinition& column)
{
    if (acceptWord(u"constraint")) name();
    if (acceptWord(u"null")) return true;
    if (acceptWord(u"not")) {
        expectWord(u"null");
        return column.notNull = true;
    }
    if (acceptWord(u"primary")) {
        expectWord(u"key");
        if (!acceptWord(u"clustered")) acceptWord(u"nonclustered");
        return column.primaryKey = true;
    }
    if (acceptWord(u"unique")) return column.unique = true;
    if (acceptWord(u"identity")) {
        if (acceptSign(u"(")) {
            if (pinnedInteger() != 1) refuseHere(u"identity 只能从 1 起"_s);
            expectSign(u",");
            if (pinnedInteger() != 1) refuseHere(u"identity 只能每次加 1"_s);
            expectSign(u")");
        }
        return column.identity = true;
    }
    if (acceptWord(u"default")) {
        column.fallback = primary();
        return true;
    }
    if (acceptWord(u"check")) {
        expectSign(u"(");
        column.check = condition();
        expectSign(u")");
        return true;
    }
    return false;
}

TableConstraint Parser::tableConstraint()
{
    TableConstraint result;
    if (acceptWord(u"constraint")) name();
    if (acceptWord(u"check")) {
        expectSign(u"(");
        result.check = condition();
        expectSign(u")");
        return result;
    }
    result.primaryKey = acceptWord(u"primary");
    if (result.primaryKey)
        expectWord(u"key");
    else
        expectWord(u"unique");
    if (!acceptWord(u"clustered")) acceptWord(u"nonclustered");
    result.columns = keyColumns();
    return result;
}

std::vector<QString> Parser::keyColumns()
{
    std::vector<QString> columns;
    expectSign(u"(");
    do {
        columns.push_back(name());
    } while (acceptSign(u","));
    expectSign(u")");
    return columns;
}

CreateIndex Parser::createIndex(bool unique)
{
    CreateIndex result;
    result.unique = unique;
    result.name = name();
    expectWord(u"on");
    result.table = objectName();
    expectSign(u"(");
    do {
        IndexColumn column;
        column.name = name();
        column.descending = acceptWord(u"desc");
        if (!column.descending) acceptWord(u"asc");
        result.columns.push_back(column);
    } while (acceptSign(u","));
    expectSign(u")");
    return result;
}

CreateView Parser::createView()
{
    CreateView result;
    result.name = objectName();
    expectWord(u"as");
    result.query = query();
    if (!result.query.orderBy.empty()) refuse(result.query.orderBy.front().value->place, u"视图没有次序"_s);
    return result;
}

Drop Parser::dropStatement()
{
    Drop result;
    for (const QStringView what : {u"table", u"view", u"index"})
        if (acceptWord(what)) result.what = what.toString();
    if (result.what.isEmpty()) refuseHere(u"只能删除表、视图和索引"_s);
    result.name = result.what == u"index" ? name() : objectName();
    if (result.what != u"index") return result;
    result.table = result.name;
    expectSign(u".");
    result.name = name();
    return result;
}

} // namespace quilla::sql
