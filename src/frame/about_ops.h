#pragma once

#include "frame/session.h"

#include <QStringList>

namespace quilla {

/// What a support question needs to name, a line each ("版本：4.1"): program, database, where the data lies,
/// libraries, system. Holds no password and no user name.
QStringList aboutLines(const Session& session);

} // namespace quilla
