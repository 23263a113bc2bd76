#include "platform/ui/grid/list_screen.h"

#include "platform/ui/form/close_screen.h"
#include "platform/ui/look/theme.h"

#include <QBoxLayout>
#include <QScrollBar>

namespace quilla {

ListScreen::ListScreen(const QString& name, const QString& title)
{
    setObjectName(name);
    setWindowTitle(title);
    QUILLA_NAMES(Grid1);
    Grid1.setAccessibleName(title);
}

void ListScreen::arrange(const Piece& content)
{
    build(*this, content);
    layout()->setContentsMargins(8, 8, 8, 8);
    resize(sizeHint());
    move(0, 0);
    Grid1.setFocus();
}

void ListScreen::arrange(const Piece& count, const std::vector<std::reference_wrapper<QPushButton>>& buttons)
{
    std::vector<Piece> foot {count, stretch()};
    for (QPushButton& button : buttons)
        foot.push_back(button);
    arrange(column(Piece(Grid1).grow(), rowOf(foot)));
}

/// The row of buttons may need more than the usual size.
QSize ListScreen::sizeHint() const
{
    const QSize usual(pixelsOf(m_usualSize.width(), *this), pixelsOf(m_usualSize.height(), *this));
    return layout() ? usual.expandedTo(layout()->totalMinimumSize()) : usual;
}

void ListScreen::leave()
{
    closeScreen(*this);
}

void ListScreen::gridFix()
{
    if (!m_rule) return;
    GridExtent extent {twipsOf(Grid1.width(), *this), twipsOf(Grid1.height(), *this),
        twipsOf(Grid1.rowHeight(0), *this), Grid1.Rows()};
    // What a rule keeps free may be less than the frame and the scroll bar take.
    const bool full = needsScrollBar(extent);
    const int taken = 2 * Grid1.frameWidth() + (full ? Grid1.verticalScrollBar()->sizeHint().width() : 0);
    const int spare = full ? m_rule->spareLarge : m_rule->spareSmall;
    extent.width = std::min(extent.width, twipsOf(Grid1.width() - taken, *this) + spare);
    Grid1.setColWidths(quilla::gridFix(*m_rule, extent));
}

void ListScreen::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    gridFix();
}

} // namespace quilla
