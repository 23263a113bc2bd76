#pragma once

#include "database/target.h"
#include "platform/core/settings.h"

#include <optional>

namespace quilla {

/// Whether a connection text is stored for this user.
bool hasStoredText(const SettingsStore& settings);

/// Stores the text that leads to a library; the client opens it from now on. Throws `Error` when it can't be
/// stored.
void storeConnection(SettingsStore& settings, const Target& target);

/// Stores a connection text that leads to the user's own embedded database.
void storeOwnDatabase(SettingsStore& settings);

/// Where a connection text leads, in words that hold neither user nor password.
QString placeInWords(const QString& connectionText);

/// The file that the client opens; nullopt when it opens the database of a server.
std::optional<QString> storedFile(const SettingsStore& settings);

/// Where the stored text leads; empty when nothing is stored.
QString storedPlace(const SettingsStore& settings);

} // namespace quilla
