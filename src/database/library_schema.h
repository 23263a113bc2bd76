#pragma once

#include "platform/db/connection.h"
#include "platform/sql/schema.h"

namespace quilla {

/// The tables and views of the library with the kinds of their columns, for translators and factories.
sql::Schema librarySchema();

/// Creates all tables, indexes, views and stored procedures on an empty database of any engine, in one
/// transaction of the caller or without one. Throws `Error`, also when one of them is there already.
void createLibrary(Connection& connection);

/// Writes what a new base holds before the first start: the classes of the ranking filter, the captions of
/// the field dictionary and one operator of this name, without a password, with the right to use the desk.
void insertInitialRows(Connection& connection, const QString& operatorName);

/// What `createLibrary` and `insertInitialRows` send to a server that speaks T-SQL, as one script with lines
/// "go" for its own tools.
QString libraryScript(const QString& operatorName);

/// Takes the indexes off a table while `fill` writes very many rows into it, and makes them anew.
void withoutIndexes(Connection& connection, QStringView table, const std::function<void()>& fill);

/// Throws `Error` when titles, copies, readers or parameters are there already: invented data must never
/// come among real ones.
void refuseFilledLibrary(Connection& connection);

} // namespace quilla
