#pragma once

#include "frame/session.h"
#include "platform/core/sounds.h"
#include "platform/report/form_printer.h"
#include "platform/report/report_viewer.h"
#include "platform/sheet/spreadsheet_program.h"

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace quilla {

/// What a screen may ask of the main window.
class ScreenHost {
public:
    virtual ~ScreenHost() = default;
    /// Opens another screen as the main menu does. The screen, so that its own steps can follow; nullptr for
    /// a modal one, which has been closed by then, and for one that does not exist.
    virtual QWidget* openScreen(const QString& target, const QString& mode = {}) = 0;
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

/// Where the work of a screen goes besides the database.
struct Outputs {
    ReportViewer& reports;
    SpreadsheetProgram& spreadsheets;
    FormPrinter& formPrinter;
    Sounds& sounds = silence();
};

/// All that a screen is given. Its parts outlive every screen; the struct itself need not, so a screen keeps
/// a copy.
struct Workplace : Outputs {
    Session& session;
    ScreenHost& host;
};

/// Takes forms in the states that are worth a look: the gallery draws them, a test goes over their controls.
class Album {
public:
    virtual ~Album() = default;
    /// `name` tells this state of the form from the others.
    virtual void add(const QString& name, QWidget& form) = 0;
};

/// Makes a screen. `mode` is that of its menu entry; a modal screen is a `QDialog` of `owner`.
using ScreenMaker = std::function<QWidget*(const Workplace&, const QString& mode, QWidget* owner)>;

/// One form of the program.
struct Screen {
    QString name; ///< of its class, as the menu knows it
    ScreenMaker make; ///< empty for a form that only another one opens
    /// Makes the form, fills it from the library at hand and hands it to the album, in each state that looks
    /// different.
    std::function<void(Album&, const Workplace&)> pictures;
    bool fillsRoom = false; ///< takes the whole client area until the operator gives it another size
};

/// The mode in which a screen is opened by another one that waits for it, although the menu opens it beside
/// the others.
inline constexpr QStringView Modally = u"modal";

/// What the menu entries do that open no screen, by their names. An entry whose action is not among them
/// stands disabled, unless the main window acts itself.
using ActionRegister = QHash<QString, std::function<void(const Workplace&)>>;

/// The forms of the program, in the order of the gallery. A menu entry whose screen is not among them, or has
/// no maker, stands disabled.
using ScreenRegister = std::vector<Screen>;

} // namespace quilla
