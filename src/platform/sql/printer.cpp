#include "platform/sql/printer.h"

#include "platform/core/text.h"
#include "platform/sql/scan.h"

namespace quilla::sql {

QString Printer::print(const Statement& statement)
{
    m_out.clear();
    if (const auto* query_ = std::get_if<Query>(&statement)) query(*query_, false);
    if (const auto* insert_ = std::get_if<Insert>(&statement)) insert(*insert_);
    if (const auto* update_ = std::get_if<Update>(&statement)) update(*update_);
    if (const auto* delete_ = std::get_if<Delete>(&statement)) remove(*delete_);
    if (const auto* call = std::get_if<Execute>(&statement)) execute(*call);
    if (const auto* table = std::get_if<CreateTable>(&statement)) createTable(*table);
    if (const auto* index = std::get_if<CreateIndex>(&statement)) createIndex(*index);
    if (const auto* view = std::get_if<CreateView>(&statement)) createView(*view);
    if (const auto* drop_ = std::get_if<Drop>(&statement)) drop(*drop_);
    return m_out;
}

QString Printer::printExpression(const Expr& expr)
{
    m_out.clear();
    expression(expr);
    return m_out;
}

void Printer::insert(const Insert& insert)
{
    write(u"INSERT INTO "_s + name(insert.table));
    if (!insert.columns.empty()) write(u" ("_s + names(insert.columns) + u")"_s);
    if (insert.query) {
        write(u" ");
        query(*insert.query, false);
        return;
    }
    write(u" VALUES ");
    list(insert.rows, [this](const std::vector<ExprPtr>& row) {
        write(u"(");
        expressions(row);
        write(u")");
    });
}

void Printer::update(const Update& update)
{
    write(u"UPDATE "_s + name(update.table) + u" SET "_s);
    list(update.assignments, [this](const Assignment& assignment) {
        write(name(assignment.column) + u" = "_s);
        expression(*assignment.value);
    });
    if (!update.where) return;
    write(u" WHERE ");
    expression(*update.where);
}

void Printer::remove(const Delete& remove)
{
    write(u"DELETE FROM "_s + name(remove.table));
    if (!remove.where) return;
    write(u" WHERE ");
    expression(*remove.where);
}

void Printer::execute(const Execute& call)
{
    write(u"EXEC "_s + name(call.procedure));
    if (!call.arguments.empty()) write(u" ");
    expressions(call.arguments);
}

void Printer::createTable(const CreateTable& table)
{
    write(u"CREATE TABLE "_s + name(table.name) + u" ("_s);
    list(table.columns, [this](const ColumnDefinition& column) { columnDefinition(column); });
    for (const TableConstraint& each : table.constraints) {
        write(u", ");
        constraint(each);
    }
    write(u")");
}

void Printer::columnDefinition(const ColumnDefinition& column)
{
    write(name(column.name) + u" "_s + typeName(column.type));
    if (column.identity) write(u" IDENTITY(1,1)");
    columnOptions(column);
}

void Printer::columnOptions(const ColumnDefinition& column)
{
    if (column.notNull) write(u" NOT NULL");
    if (column.primaryKey) write(u" PRIMARY KEY");
    if (column.unique) write(u" UNIQUE");
    if (column.fallback) {
        write(u" DEFAULT (");
        expression(*column.fallback);
        write(u")");
    }
    if (column.check) {
        write(u" CHECK (");
        expression(*column.check);
        write(u")");
    }
}

void Printer::constraint(const TableConstraint& constraint)
{
    if (!constraint.check) {
        write(constraint.primaryKey ? u"PRIMARY KEY (" : u"UNIQUE (");
        write(names(constraint.columns) + u")"_s);
        return;
    }
    write(u"CHECK (");
    expression(*constraint.check);
    write(u")");
}

void Printer::createIndex(const CreateIndex& index)
{
    write(index.unique ? u"CREATE UNIQUE INDEX " : u"CREATE INDEX ");
    write(name(index.name) + u" ON "_s + name(index.table) + u" ("_s);
    list(index.columns, [this](const IndexColumn& column) { indexColumn(column); });
    write(u")");
}

void Printer::indexColumn(const IndexColumn& column)
{
    write(name(column.name));
    if (column.descending) write(u" DESC");
}

void Printer::createView(const CreateView& view)
{
    write(u"CREATE VIEW "_s + name(view.name) + u" AS "_s);
    query(view.query, true);
}

void Printer::drop(const Drop& drop)
{
    write(u"DROP "_s + drop.what.toUpper() + u" "_s);
    if (!drop.table.isEmpty()) write(name(drop.table) + u"."_s);
    write(name(drop.name));
}

void Printer::expressions(const std::vector<ExprPtr>& exprs)
{
    list(exprs, [this](const ExprPtr& expr) { expression(*expr); });
}

QString Printer::names(const std::vector<QString>& list) const
{
    QStringList written;
    for (const QString& each : list)
        written.append(name(each));
    return written.join(u", "_s);
}

QString Printer::name(const QString& name) const
{
    QString inner = name;
    return u"["_s + inner.replace(u"]"_s, u"]]"_s) + u"]"_s;
}

QString Printer::typeName(const TypeName& type) const
{
    if (type.unlimited) return type.name + u"(max)"_s;
    if (type.width == 0) return type.name;
    const QString scale = type.scale ? u","_s + QString::number(type.scale) : QString();
    return type.name + u"("_s + QString::number(type.width) + scale + u")"_s;
}

} // namespace quilla::sql
