#pragma once

#include "platform/db/connection.h"

#include <functional>
#include <vector>

namespace quilla {

/// Answers `exec` where the engine keeps no procedures of its own, as the embedded database does. `name` as
/// the statement writes it, without owner; the arguments in their order. Throws `Error` for an unknown name.
/// What it sends runs on the same database, on the embedded one inside the caller's transaction if there is
/// one.
using ProcedureRunner
    = std::function<Recordset(Connection&, const QString& name, const std::vector<Value>& arguments)>;

} // namespace quilla
