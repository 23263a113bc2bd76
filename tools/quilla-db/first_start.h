#pragma once

#include "platform/core/settings.h"

namespace quilla {

/// Whether a connection text is stored for this user.
bool hasStoredText(const SettingsStore& settings);

/// Stores a connection text that leads to the user's own embedded database.
void storeOwnDatabase(SettingsStore& settings);

} // namespace quilla
