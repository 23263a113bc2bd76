#pragma once

#include "quilla-db/commands.h"

namespace quilla {

Outcome listOperatorsOf(const Arguments& arguments, QTextStream& out);
/// This one and the next ask for the password.
Outcome addOperatorOf(const Arguments& arguments, QTextStream& out);
Outcome setPasswordOf(const Arguments& arguments, QTextStream& out);
Outcome removeOperatorOf(const Arguments& arguments, QTextStream& out);

} // namespace quilla
