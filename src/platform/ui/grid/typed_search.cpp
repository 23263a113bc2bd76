#include "platform/ui/grid/typed_search.h"

#include "platform/core/text.h"
#include "platform/grid/grid_model.h"

#include <QApplication>

namespace quilla {

namespace {

/// Looks from row `from` to the end and on from the first line.
int lineIn(const GridModel& cells, int col, const QString& prefix, int from)
{
    const int lines = cells.Rows() - 1;
    for (int i = 0; i < lines; ++i) {
        const int row = (std::max(from, 1) - 1 + i) % lines + 1;
        if (cells.TextMatrix(row, col).startsWith(prefix, Qt::CaseInsensitive)) return row;
    }
    return 0;
}

int lineWith(const GridModel& cells, const std::vector<int>& columns, const QString& prefix, int from)
{
    int row = 0;
    for (std::size_t i = 0; i < columns.size() && row == 0; ++i)
        row = lineIn(cells, columns[i], prefix, from);
    return row;
}

} // namespace

int TypedSearch::type(
    const QString& text, const GridModel& cells, const std::vector<int>& columns, int current)
{
    if (isBlank(text) && m_typed.isEmpty()) return 0;
    const bool goesOn
        = m_sinceTyped.isValid() && m_sinceTyped.elapsed() < QApplication::keyboardInputInterval();
    m_typed = goesOn ? m_typed + text : text;
    m_sinceTyped.start();
    const int found = lineWith(cells, columns, m_typed, goesOn ? current : current + 1);
    const bool repeats = m_typed.size() > 1 && m_typed.count(m_typed.front()) == m_typed.size();
    if (found > 0 || !repeats) return found;
    return lineWith(cells, columns, m_typed.left(1), current + 1);
}

} // namespace quilla
