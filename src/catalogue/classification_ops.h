#pragma once

#include "platform/core/prompt.h"

#include <QStringList>

#include <optional>

namespace quilla {

/// Where the table of the library classification lies: "fenlei.Qjs" in the program's own folder.
QString classificationFile(const QString& folder);

/// The lines of the main classes, each the class letter and its text, as they stand in the file. nullopt when
/// the file can't be read, which is reported.
std::optional<QStringList> readMainClasses(Prompt& prompt, const QString& file);

/// The lines of the second level that belong to the class: they begin with its letter, or with "[" and its
/// letter. nullopt as with `readMainClasses`.
std::optional<QStringList> readSecondLevel(Prompt& prompt, const QString& file, QChar letter);

} // namespace quilla
