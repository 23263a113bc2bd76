#pragma once

#include "frame/session.h"

#include <QHash>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace quilla {

/// What a screen may ask of the main window, besides the session.
class ScreenHost {
public:
    virtual ~ScreenHost() = default;
    /// Opens another screen as the main menu does.
    virtual void openScreen(const QString& target, const QString& mode = {}) = 0;
    /// Whether that screen exists in this program.
    virtual bool hasScreen(const QString& target) const = 0;
    /// Where the hidden edit menu sends its next command; the child is a `MenuClient`.
    virtual void registerChild(QWidget* child) = 0;
};

/// The operation `MenuClick` of a child screen that takes commands of the hidden edit menu.
class MenuClient {
public:
    virtual ~MenuClient() = default;
    virtual void MenuClick(const QString& command) = 0;
};

/// Builds a screen: its session, its host, the mode of its menu entry, its owner.
using ScreenMaker = std::function<QWidget*(Session&, ScreenHost&, const QString& mode, QWidget* owner)>;

/// The screens that exist, by class name. What is not in it stands disabled in the menu.
using ScreenCatalog = QHash<QString, ScreenMaker>;

} // namespace quilla
