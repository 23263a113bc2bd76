#include "database/library_schema.h"

#include "database/procedures.h"
#include "database/resource_text.h"
#include "platform/core/text.h"

#include <QRegularExpression>

namespace quilla {

namespace {

QString definitions()
{
    return resourceText(u"schema.sql"_s) + u"\ngo\n"_s + resourceText(u"views.sql"_s);
}

QString firstOperator(const QString& name)
{
    return u"insert into LibUse(userid,username,password,borrow) values(1,'%1','',1)"_s.arg(doubled(name));
}

void executeAll(Connection& connection, const QString& tsql)
{
    for (const QString& statement : splitStatements(tsql))
        connection.execute(statement);
}

void makeTables(Connection& connection)
{
    try {
        connection.prepareEmptyBase();
        executeAll(connection, definitions());
    } catch (const Error& error) {
        throw Error(error.number, error.source, u"不能建立数据表。目标数据库必须是空的。\n"_s + error.text);
    }
}

} // namespace

sql::Schema librarySchema()
{
    return sql::readSchema(definitions());
}

void createLibrary(Connection& connection)
{
    makeTables(connection);
    if (!connection.keepsProcedures()) return;
    for (const QString& procedure : procedureDefinitions())
        connection.execute(procedure);
}

void insertInitialRows(Connection& connection, const QString& operatorName)
{
    executeAll(connection, resourceText(u"initial.sql"_s));
    connection.execute(firstOperator(operatorName));
}

QString libraryScript(const QString& operatorName)
{
    QStringList statements = splitStatements(definitions());
    statements += procedureDefinitions();
    statements += splitStatements(resourceText(u"initial.sql"_s));
    statements += firstOperator(operatorName);
    QString script;
    for (const QString& statement : statements)
        script += statement.trimmed() + u"\ngo\n"_s;
    return script;
}

void withoutIndexes(Connection& connection, QStringView table, const std::function<void()>& fill)
{
    const QRegularExpression index(
        u"^create index (\\w+) on %1 "_s.arg(table), QRegularExpression::CaseInsensitiveOption);
    const QStringList creations = splitStatements(resourceText(u"schema.sql"_s)).filter(index);
    for (const QString& creation : creations)
        connection.execute(u"drop index %1.%2"_s.arg(table, index.match(creation).captured(1)));
    fill();
    for (const QString& creation : creations)
        connection.execute(creation);
}

void refuseFilledLibrary(Connection& connection)
{
    for (const QStringView table : {u"zsk", u"sck", u"dzk", u"jycs"})
        if (!connection.open(u"select top 1 * from %1"_s.arg(table)).eof())
            throw Error(58, u"database"_s, u"数据库中已有数据，不能再装入演示数据。"_s);
}

} // namespace quilla
