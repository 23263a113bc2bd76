#pragma once

#include "platform/db/connection.h"

namespace quilla {

/// Somebody who may sign in to one of the programs of the suite.
struct LibraryOperator {
    QString name;
    bool mayBorrow = false; ///< may use the desk
    bool hasPassword = false;
};

/// All of them, in the order of their numbers.
std::vector<LibraryOperator> listOperators(Connection& connection);

/// Enters an operator who may use the desk. Throws `Error` for a name or a password that the login does not
/// take, and for a name that is there already.
void addOperator(Connection& connection, const QString& name, const QString& password);

/// Throws `Error` for a password that the login does not take, and when there is no operator of that name.
void setPassword(Connection& connection, const QString& name, const QString& password);

/// Never the last one who may use the desk: nobody could sign in any more. Throws `Error` then, and when
/// there is no operator of that name.
void removeOperator(Connection& connection, const QString& name);

/// These throw `Error` that says why the login would not take such a name or password.
void checkOperatorName(const QString& name);
void checkPassword(const QString& password);

} // namespace quilla
