#pragma once

#include <QElapsedTimer>
#include <QString>

#include <vector>

namespace quilla {

class GridModel;

/// The search by typing in a list: letters typed without a pause find the lines that begin with them, and the
/// same key pressed again walks through the lines that begin with that letter.
class TypedSearch {
public:
    /// The line to go to after `text` was typed, sought from `current` on in these columns, one after the
    /// other; 0 when no line fits.
    int type(const QString& text, const GridModel& cells, const std::vector<int>& columns, int current);

private:
    QString m_typed;
    QElapsedTimer m_sinceTyped;
};

} // namespace quilla
