#pragma once

#include "platform/core/settings.h"

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace quilla {

/// Whether the main window itself does that action, without a screen or a list behind it.
bool isOwnAction(const QString& action);

/// Starts the regional settings of this machine's desktop; false when none is found.
bool startRegionalSettings();

/// The printer that was chosen there; empty for the system's own default.
QString chosenPrinter(const SettingsStore& settings);

/// Whether its paper was left upright there.
bool isChosenUpright(const SettingsStore& settings);

/// Whether the desk plays its sounds; on until somebody turns them off.
bool soundsAreOn(const SettingsStore& settings);
/// Throws `Error` when it could not be stored.
void turnSounds(SettingsStore& settings, bool on);

/// The system's printer dialog; the printer chosen there and its paper are kept for the reports.
void showPrinterSetup(SettingsStore& settings, QWidget* owner);

} // namespace quilla
