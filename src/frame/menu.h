#pragma once

#include "platform/core/text.h"

#include <vector>

namespace quilla {

/// How a screen comes up from the main window.
enum class Opening {
    Plain, ///< beside the others
    Owned, ///< beside the others, in the main window's care
    Modal, ///< waits for its answer
    Action, ///< no screen: the main window does it itself
};

/// One entry of the main menu. `target` names the screen's class or the action; `mode` is what the
/// screen is opened with, where it has modes.
struct MenuEntry {
    QString menu;
    QString item; ///< empty: the menu itself acts
    QString target;
    Opening opening = Opening::Plain;
    QString mode;
    QString objectName;
};

/// One button of the toolbar: does what the menu entry `item` does.
struct ToolEntry {
    QString key;
    QString item;
};

/// The names of the actions that are no screens.
namespace MenuAction {
inline constexpr QStringView ReturnNotices = u"ReturnNotices";
inline constexpr QStringView ClearReservations = u"ClearReservations";
inline constexpr QStringView PrinterSetup = u"PrinterSetup";
inline constexpr QStringView RegionalSettings = u"RegionalSettings";
inline constexpr QStringView Quit = u"Quit";
} // namespace MenuAction

/// The main menu in display order.
const std::vector<MenuEntry>& mainMenu();
/// The toolbar in display order.
const std::vector<ToolEntry>& toolbar();

/// The entry of that caption; nullptr when there is none.
const MenuEntry* menuEntry(QStringView item);

} // namespace quilla
