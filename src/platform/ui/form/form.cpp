#include "platform/ui/form/form.h"

#include "platform/core/caption.h"
#include "platform/ui/form/escape_key.h"
#include "platform/ui/form/small_screen.h"
#include "platform/ui/grid/flex_grid.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTextEdit>

namespace quilla {

namespace {

constexpr int TitleBar = 32; ///< at most, over a dialog

bool isInput(const QWidget* control)
{
    return qobject_cast<const QLineEdit*>(control) || qobject_cast<const QComboBox*>(control)
        || qobject_cast<const QAbstractScrollArea*>(control);
}

QWidget* firstInput(const Piece& piece)
{
    if (piece.control) return isInput(piece.control) ? piece.control : nullptr;
    for (int i = 0; piece.layout && i < piece.layout->count(); ++i) {
        QLayoutItem* item = piece.layout->itemAt(i);
        if (item->widget() && isInput(item->widget())) return item->widget();
    }
    return nullptr;
}

constexpr char MemberMark[] = "quilla.member";

/// A member of the form that stands in a frame is a child of that frame too, which would delete it when
/// the frame, another member, goes first. The frame lets go of it then.
void keepMembersAlive(QWidget& form)
{
    for (QWidget* control : form.findChildren<QWidget*>())
        if (control->property(MemberMark).toBool() && control->parentWidget() != &form)
            QObject::connect(control->parentWidget(), &QObject::destroyed, control,
                [control] { control->setParent(nullptr); });
}

/// The control reads as `caption` to a screen reader, and the caption's access key leads to it.
void nameBy(QLabel& label, QWidget* control)
{
    if (!control) return;
    label.setBuddy(control);
    if (control->accessibleName().isEmpty()) control->setAccessibleName(captionName(label.text()));
}

void add(QBoxLayout& box, const Piece& piece)
{
    if (piece.control) return box.addWidget(piece.control, piece.weight);
    if (piece.layout) return box.addLayout(piece.layout, piece.weight);
    if (piece.room > 0) return box.addSpacing(piece.room);
    box.addStretch(std::max(piece.weight, 1));
}

Piece boxOf(QBoxLayout* box, const std::vector<Piece>& pieces)
{
    box->setContentsMargins(0, 0, 0, 0);
    QLabel* label = nullptr;
    for (const Piece& piece : pieces) {
        add(*box, piece);
        if (label && isInput(piece.control)) nameBy(*label, piece.control);
        label = qobject_cast<QLabel*>(piece.control);
    }
    return box;
}

void setContent(QWidget& frame, const Piece& content)
{
    QLayout* layout = content.layout ? content.layout : columnOf({content}).layout;
    const int margin = frame.style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
    layout->setContentsMargins(margin, margin, margin, margin);
    frame.setLayout(layout);
}

void nameRest(QWidget& frame, const QString& title)
{
    for (QWidget* inside : frame.findChildren<QWidget*>())
        if (qobject_cast<QAbstractItemView*>(inside) && inside->accessibleName().isEmpty()
            && !qobject_cast<QComboBox*>(inside->parentWidget()))
            inside->setAccessibleName(captionName(title));
}

void add(QGridLayout& grid, const Piece& piece, int line, int col)
{
    if (piece.control) return grid.addWidget(piece.control, line, col);
    if (piece.layout) grid.addLayout(piece.layout, line, col);
}

} // namespace

Piece::Piece(QWidget& widget)
    : control(&widget)
{
    widget.setProperty(MemberMark, true);
}

Piece::Piece(QLayout* nested)
    : layout(nested)
{
}

Piece::Piece(const QString& caption)
    : control(new QLabel(caption))
{
}

Piece Piece::grow(int parts) const
{
    Piece grown = *this;
    grown.weight = parts;
    return grown;
}

Piece rowOf(const std::vector<Piece>& pieces)
{
    return boxOf(new QHBoxLayout, pieces);
}

Piece columnOf(const std::vector<Piece>& pieces)
{
    return boxOf(new QVBoxLayout, pieces);
}

Piece group(QGroupBox& frame, const Piece& content)
{
    setContent(frame, content);
    if (auto* area = qobject_cast<QAbstractScrollArea*>(content.control)) {
        // the group's frame is the grid's own
        area->setFrameShape(QFrame::NoFrame);
        frame.layout()->setContentsMargins(1, 1, 1, 1);
    }
    nameRest(frame, frame.title());
    return frame;
}

Piece group(const QString& title, const Piece& content)
{
    auto* frame = new QGroupBox(title);
    Piece piece = group(*frame, content);
    frame->setProperty(MemberMark, false);
    return piece;
}

Piece stretch()
{
    Piece piece(static_cast<QLayout*>(nullptr));
    piece.weight = 1;
    return piece;
}

Piece room(int pixels)
{
    Piece piece(static_cast<QLayout*>(nullptr));
    piece.room = pixels;
    return piece;
}

FormField::FormField(const QString& caption, const Piece& field)
    : label(caption)
    , piece(field)
{
    nameBy(*static_cast<QLabel*>(label.control), firstInput(field));
}

FormField::FormField(QLabel& caption, const Piece& field)
    : label(caption)
    , piece(field)
{
    nameBy(caption, firstInput(field));
}

Piece fields(int perLine, const std::vector<FormField>& list)
{
    auto* grid = new QGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    for (std::size_t i = 0; i < list.size(); ++i) {
        const int line = int(i) / perLine;
        const int col = int(i) % perLine * 2;
        grid->addWidget(list[i].label.control, line, col, Qt::AlignRight | Qt::AlignVCenter);
        add(*grid, list[i].piece, line, col + 1);
        grid->setColumnStretch(col + 1, 1);
    }
    return grid;
}

Piece tabs(QTabWidget& book, const std::vector<Page>& pages)
{
    for (const Page& page : pages) {
        auto* sheet = new QWidget;
        setContent(*sheet, page.content);
        nameRest(*sheet, page.caption);
        book.addTab(sheet, page.caption);
    }
    return book;
}

void build(QWidget& form, const Piece& content, AtEscape atEscape)
{
    setContent(form, content);
    keepMembersAlive(form);
    for (QPushButton* button : form.findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
        button->setDefault(false);
        ControlKeys& keys = ControlKeys::of(*button);
        if (!keys.enter && !keys.enterIsTab) keys.enter = [button] { button->click(); };
    }
    for (auto* lines : form.findChildren<QPlainTextEdit*>())
        lines->setTabChangesFocus(true);
    for (auto* lines : form.findChildren<QTextEdit*>())
        lines->setTabChangesFocus(true);
    nameRest(form, form.windowTitle());
    auto* dialog = qobject_cast<QDialog*>(&form);
    if (!dialog) return;
    if (atEscape == AtEscape::Stay) keepOpenAtEscape(*dialog);
    scrollWhereHigher(form, form.screen()->availableGeometry().height() - TitleBar);
}

void closeScreen(QWidget& screen)
{
    (screen.isWindow() ? &screen : screen.parentWidget())->close();
}

void onClick(QAbstractButton& button, std::function<void()> step)
{
    QObject::connect(&button, &QAbstractButton::clicked, &button, [&button, step = std::move(step)] {
        // an access key presses the button without moving the focus; a box that was typed in is left even so
        if (button.focusPolicy() & Qt::ClickFocus) button.setFocus(Qt::ShortcutFocusReason);
        ControlKeys::runWaitingLeaves(button);
        step();
    });
}

void onEnter(QWidget& control, std::function<void()> step)
{
    ControlKeys::of(control).enter = std::move(step);
}

void onFocus(QWidget& control, std::function<void()> step)
{
    ControlKeys::of(control).entered = std::move(step);
}

void onLeave(QWidget& control, std::function<void()> step)
{
    ControlKeys::of(control).left = std::move(step);
}

void onRow(FlexGrid& grid, std::function<void(int)> step)
{
    QObject::connect(&grid, &FlexGrid::rowChanged, &grid, std::move(step));
}

void onOpen(FlexGrid& grid, std::function<void(int)> step)
{
    QObject::connect(&grid, &FlexGrid::rowOpened, &grid, std::move(step));
}

void enterAsTab(const std::vector<std::reference_wrapper<QWidget>>& controls)
{
    for (QWidget& control : controls)
        ControlKeys::of(control).enterIsTab = true;
}

} // namespace quilla
