#pragma once

#include <QStringList>

namespace quilla {

/// The text of a file that is built into the program, `name` below "database/".
QString resourceText(const QString& name);

/// The statements of a T-SQL text, which are separated by lines "go". Empty ones are left out.
QStringList splitStatements(const QString& tsql);

} // namespace quilla
