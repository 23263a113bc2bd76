#pragma once

#include "platform/db/pooled_factory.h"

namespace quilla {

/// The stored procedures of the library as T-SQL, one statement each, for a server that keeps them itself.
QStringList procedureDefinitions();

/// Answers the calls of the library's stored procedures for the databases that keep none of their own:
/// what stands between "as" and "go" is one select, which is sent with the arguments in the places of the
/// parameters. Arguments are taken as the server takes them: a text is cut to the parameter's width, a
/// whole number may stand in quotes.
///
/// PostgreSQL would keep functions, but its clients have no "exec" that could call them, so nobody but this
/// program could; written as functions the figures would stand there twice, once for each language.
///
/// A call throws `Error` for an unknown name, a wrong number of arguments, a text where a whole number must
/// stand, and a period that is no date.
void installProcedures(PooledFactory& factory);

} // namespace quilla
