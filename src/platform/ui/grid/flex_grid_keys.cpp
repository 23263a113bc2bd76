// The keyboard of the grid: its command keys, and the search by typing.

#include "platform/ui/grid/flex_grid.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>

namespace quilla {

bool FlexGrid::handlesKey(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (Row()) Q_EMIT rowOpened(Row());
        return true;
    case Qt::Key_Delete:
        Q_EMIT deletePressed();
        return true;
    case Qt::Key_Insert:
        Q_EMIT insertPressed();
        return true;
    case Qt::Key_Space:
        Q_EMIT blankPressed();
        return true;
    case Qt::Key_F:
        if (event.modifiers() != Qt::ControlModifier) return false;
        Q_EMIT findPressed();
        return true;
    default:
        return false;
    }
}

/// Qt's table moves nowhere from a cell that is hidden, such as the record's number in the first column.
QModelIndex FlexGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (Row() > 0 && isColumnHidden(Col())) {
        int visible = 0;
        while (visible < Cols() && isColumnHidden(visible))
            ++visible;
        setCol(visible);
    }
    return QTableView::moveCursor(action, modifiers);
}

void FlexGrid::keyPressEvent(QKeyEvent* event)
{
    if (handlesKey(*event)) return event->accept();
    if (event->key() == Qt::Key_Escape) Q_EMIT escapePressed();
    QTableView::keyPressEvent(event);
}

void FlexGrid::inputMethodEvent(QInputMethodEvent* event)
{
    if (!event->commitString().isEmpty()) keyboardSearch(event->commitString());
    event->accept();
}

void FlexGrid::keyboardSearch(const QString& text)
{
    if (isBlank(text) && m_typed.isEmpty()) return;
    const bool goesOn
        = m_sinceTyped.isValid() && m_sinceTyped.elapsed() < QApplication::keyboardInputInterval();
    m_typed = goesOn ? m_typed + text : text;
    m_sinceTyped.start();
    // The same key again walks through the lines that begin with it.
    const bool repeats = m_typed.size() > 1 && m_typed.count(m_typed.front()) == m_typed.size();
    const QString whole = m_typed;
    const int from = goesOn ? Row() : Row() + 1;
    if (!jumpTo(whole, from) && repeats) jumpTo(whole.left(1), Row() + 1);
}

/// The column that the lines are sorted by, then the two that name a record.
std::vector<int> FlexGrid::columnsOfSearch() const
{
    std::vector<int> columns {m_model.FixedCols(), m_model.FixedCols() + 1};
    if (m_order.col >= 0) columns.insert(columns.begin(), m_order.col);
    return columns;
}

/// Looks from row `from` to the end and on from the first line.
bool FlexGrid::jumpTo(const QString& prefix, int from)
{
    const std::vector<int> columns = columnsOfSearch();
    return std::any_of(columns.begin(), columns.end(), [&](int col) { return jumpIn(col, prefix, from); });
}

bool FlexGrid::jumpIn(int col, const QString& prefix, int from)
{
    const int lines = Rows() - 1;
    for (int i = 0; i < lines; ++i) {
        const int row = (std::max(from, 1) - 1 + i) % lines + 1;
        if (!TextMatrix(row, col).startsWith(prefix, Qt::CaseInsensitive)) continue;
        setRow(row);
        return true;
    }
    return false;
}

} // namespace quilla
