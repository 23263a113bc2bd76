#pragma once

#include "platform/core/text.h"
#include "platform/ui/form/control_keys.h"

#include <QAbstractButton>
#include <QLabel>
#include <QPointer>

#include <functional>
#include <vector>

class QComboBox;
class QGroupBox;
class QLayout;
class QLineEdit;
class QPushButton;
class QTabWidget;

/// The vocabulary in which forms are written: a form is one nested expression of rows, columns, groups
/// and fields, and one line for each thing that happens. docs/screens.md shows a whole form.
namespace quilla {

class FlexGrid;

/// A piece of a form: a control, a caption, a layout, or room.
struct Piece {
    /// A control that is a member of the form; it may be declared before or after its frame.
    Piece(QWidget& control); // NOLINT: conversions are the point
    Piece(QLayout* layout); // NOLINT
    Piece(const QString& caption); // NOLINT: a label of its own

    /// Takes `weight` parts of the room that is left in its row or column.
    Piece grow(int weight = 1) const;

    QWidget* control = nullptr;
    QLayout* layout = nullptr;
    int weight = 0;
    int room = 0; ///< empty pixels, when it is neither control nor layout
};

Piece rowOf(const std::vector<Piece>& pieces);
Piece columnOf(const std::vector<Piece>& pieces);
/// Side by side; a label names the control that follows it.
template <typename... Pieces> Piece row(Pieces&&... pieces)
{
    return rowOf({Piece(std::forward<Pieces>(pieces))...});
}
/// One below the other.
template <typename... Pieces> Piece column(Pieces&&... pieces)
{
    return columnOf({Piece(std::forward<Pieces>(pieces))...});
}
/// A frame with a title around a piece; the title names a grid or list inside that has no other name.
Piece group(QGroupBox& frame, const Piece& content);
Piece group(const QString& title, const Piece& content);
/// Pushes its neighbours apart.
Piece stretch();
Piece room(int pixels);

/// A label with its field, in the aligned columns of `fields`.
struct FormField {
    FormField(const QString& caption, const Piece& field);
    FormField(QLabel& label, const Piece& field);

    Piece label;
    Piece piece;
};
/// Labels and fields in aligned columns, `perLine` pairs side by side, filled line by line. Each label
/// is the accessible name of its field and its access key leads there.
Piece fields(int perLine, const std::vector<FormField>& list);

struct Page {
    QString caption;
    Piece content;
};
Piece tabs(QTabWidget& book, const std::vector<Page>& pages);

/// What a dialog does at Esc: stay, since what was typed would be lost, or close, as a message box does.
enum class AtEscape { Stay, Close };

/// Puts the pieces on the form. From here on no button of the form is a default button: Enter belongs to
/// the boxes, and presses a button only when that button has the focus. Esc closes no form in which
/// something is typed.
void build(QWidget& form, const Piece& content, AtEscape atEscape = AtEscape::Stay);

/// Closes a screen, with the window that it stands in where it is not one itself.
void closeScreen(QWidget& screen);

/// Sets the object names under which tests and settings know the controls: `QUILLA_NAMES(Text1, cmdQuit)`
/// names the members Text1 and cmdQuit; the members of an array are called "Text1(0)", "Text1(1)" …
#define QUILLA_NAMES(...) ::quilla::nameControls(QStringLiteral(#__VA_ARGS__), __VA_ARGS__)

inline void nameControl(const QString& name, QObject& control)
{
    control.setObjectName(name);
}
template <typename Control, std::size_t Count>
void nameControl(const QString& name, Control (&controls)[Count])
{
    for (std::size_t i = 0; i < Count; ++i)
        controls[i].setObjectName(u"%1(%2)"_s.arg(name).arg(i));
}
template <typename... Controls> void nameControls(const QString& names, Controls&... controls)
{
    const QStringList list = names.split(u',');
    qsizetype next = 0;
    (nameControl(trimBlanks(list[next++]), controls), ...);
}

/// Captions for the controls of an array, in its order.
template <typename Control, std::size_t Count>
void setCaptions(Control (&controls)[Count], const QStringList& captions)
{
    for (qsizetype i = 0; i < qsizetype(Count) && i < captions.size(); ++i)
        controls[i].setText(captions[i]);
}

/// The step that a button does. Steps of boxes just left come first.
void onClick(QAbstractButton& button, std::function<void()> step);
template <std::size_t Count, typename Button>
void onClick(Button (&buttons)[Count], std::function<void(int)> step)
{
    for (std::size_t i = 0; i < Count; ++i)
        onClick(buttons[i], [step, i] { step(int(i)); });
}
/// Enter in the control.
void onEnter(QWidget& control, std::function<void()> step);
/// The control gets the focus by key, mouse or program.
void onFocus(QWidget& control, std::function<void()> step);
/// The control has lost the focus to another control of the program; runs when the click or key that did
/// it is over, and before the step of a button.
void onLeave(QWidget& control, std::function<void()> step);
/// Another line of the grid became current.
void onRow(FlexGrid& grid, std::function<void(int row)> step);
/// Enter or a double click in the grid.
void onOpen(FlexGrid& grid, std::function<void(int row)> step);

/// Enter in these controls moves to the next one, as Tab does, after a step given by `onEnter`.
void enterAsTab(const std::vector<std::reference_wrapper<QWidget>>& controls);

template <std::size_t Count, typename Control>
std::vector<std::reference_wrapper<QWidget>> allOf(Control (&controls)[Count])
{
    return {std::begin(controls), std::end(controls)};
}

} // namespace quilla
