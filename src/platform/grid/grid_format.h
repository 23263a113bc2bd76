#pragma once

#include "platform/core/text.h"

#include <vector>

namespace quilla {

/// How a column's caption and cells stand. Default: text left, numbers right.
enum class CellAlign { Default, Left, Center, Right };

/// The description of a grid in one text: a section a column between "|", each with an optional mark
/// "^" (centred), "<" (left) or ">" (right) in front of its caption. Blanks belong to the caption: they
/// are what widens a column.
struct GridFormat {
    struct Column {
        QString caption;
        CellAlign align = CellAlign::Default;
    };

    /// An empty text describes no column at all.
    static GridFormat parse(QStringView text);

    /// Whether the first section is empty or only a mark "^": that column is the row marker, which no
    /// field is bound to.
    bool hasMarker() const;

    std::vector<Column> columns;
};

} // namespace quilla
