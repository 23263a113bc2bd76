#pragma once

#include <QStyledItemDelegate>

namespace quilla {

class FlexGrid;

/// Paints one cell: a line is selected as a whole, so no cell shows a focus of its own; the marker column
/// looks like a caption and points at the current line.
class GridDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit GridDelegate(FlexGrid& grid);

    void paint(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    FlexGrid& m_grid;
};

} // namespace quilla
