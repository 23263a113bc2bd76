#include "platform/ui/grid/flex_grid.h"

#include "platform/ui/grid/grid_delegate.h"
#include "platform/ui/look/theme.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>

namespace quilla {

FlexGrid::FlexGrid(QWidget* parent)
    : QTableView(parent)
{
    setItemDelegate(new GridDelegate(*this));
    setModel(&m_model);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ContiguousSelection);
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setGridStyle(Qt::SolidLine);
    setAttribute(Qt::WA_InputMethodEnabled);
    setUpHeader();
    measureLines();
    keepPlaceOverResets();
    connect(&m_model, &GridModel::captionsChanged, this, [this] {
        takeRememberedWidths();
        layOutColumns();
    });
}

void FlexGrid::setUpHeader()
{
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setMinimumSectionSize(0);
    horizontalHeader()->viewport()->installEventFilter(this);
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(horizontalHeader(), &QHeaderView::customContextMenuRequested, this, [this](const QPoint& at) {
        QMenu menu(this);
        menu.addAction(u"恢复默认列宽"_s, this, &FlexGrid::forgetWidths)->setEnabled(!m_dragged.empty());
        menu.exec(horizontalHeader()->viewport()->mapToGlobal(at));
    });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] { m_dragging |= !m_layingOut; });
}

/// A reset of the model takes the current line away from Qt's view; the line number outlives it here.
void FlexGrid::keepPlaceOverResets()
{
    connect(&m_model, &GridModel::modelAboutToBeReset, this, [this] { m_rowOverReset = std::max(Row(), 1); });
    connect(&m_model, &GridModel::modelReset, this, [this] {
        showOrder({});
        const QSignalBlocker quiet(this);
        setRow(std::min(m_rowOverReset, Rows() - 1));
    });
}

void FlexGrid::setFormatString(const QString& format)
{
    m_model.setFixedCols(GridFormat::parse(format).hasMarker() ? 1 : 0);
    m_model.setFormatString(format);
}

int FlexGrid::Row() const
{
    return currentIndex().isValid() ? currentIndex().row() + 1 : 0;
}

void FlexGrid::setRow(int row)
{
    if (row < 1 || row >= Rows() || Cols() == 0) return;
    const QModelIndex line = m_model.index(row - 1, std::clamp(Col(), 0, Cols() - 1));
    selectionModel()->setCurrentIndex(line, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(line);
}

int FlexGrid::Col() const
{
    return currentIndex().isValid() ? currentIndex().column() : 0;
}

void FlexGrid::setCol(int col)
{
    if (Row() == 0 || col < 0 || col >= Cols()) return;
    selectionModel()->setCurrentIndex(m_model.index(Row() - 1, col), QItemSelectionModel::NoUpdate);
}

int FlexGrid::RowSel() const
{
    const QItemSelection selection = selectionModel()->selection();
    if (selection.isEmpty()) return Row();
    int top = Row();
    int bottom = Row();
    for (const QItemSelectionRange& range : selection) {
        top = std::min(top, range.top() + 1);
        bottom = std::max(bottom, range.bottom() + 1);
    }
    return top < Row() ? top : bottom;
}

void FlexGrid::selectKey(const QString& key, int fallback)
{
    const int found = m_model.findRow(key, m_model.FixedCols());
    setRow(found ? found : fallback);
    setCol(m_model.FixedCols());
}

void FlexGrid::setUp(int rows, const QString& format, const std::vector<int>& twips)
{
    {
        const GridModel::Filling filling(m_model);
        m_model.Clear();
        m_model.setRows(rows);
        setFormatString(format);
        if (!twips.empty()) setColWidths(twips);
    }
    setRow(1);
    scrollToTop();
}

void FlexGrid::setFollowsPointer(bool follows)
{
    setMouseTracking(follows);
    setProperty("followsPointer", follows);
}

void FlexGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    if (m_model.FixedCols() > 0) viewport()->update(); // the row marker moves
    if (current.isValid() && current.row() != previous.row()) Q_EMIT rowChanged(current.row() + 1);
}

void FlexGrid::mousePressEvent(QMouseEvent* event)
{
    // below the last line there is nothing to choose, and nothing to lose either
    const bool chooses = event->button() != Qt::RightButton || m_rightButtonChooses;
    if (!chooses || !indexAt(event->pos()).isValid()) {
        setFocus(Qt::MouseFocusReason);
        return;
    }
    QTableView::mousePressEvent(event);
}

void FlexGrid::mouseReleaseEvent(QMouseEvent* event)
{
    QTableView::mouseReleaseEvent(event);
    const QModelIndex under = indexAt(event->pos());
    if (!under.isValid()) return;
    if (event->button() == Qt::LeftButton) Q_EMIT rowClicked(under.row() + 1);
    if (event->button() == Qt::RightButton)
        Q_EMIT rightReleased(under.row() + 1, event->globalPosition().toPoint());
}

void FlexGrid::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (m_hint.isEmpty() || !m_model.isEmptyList()) return;
    QPainter painter(viewport());
    painter.setPen(Theme().mutedText);
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, m_hint);
}

void FlexGrid::mouseMoveEvent(QMouseEvent* event)
{
    QTableView::mouseMoveEvent(event);
    if (!property("followsPointer").toBool()) return;
    if (const QModelIndex under = indexAt(event->pos()); under.isValid()) {
        setRow(under.row() + 1);
        setCol(under.column());
    }
}

void FlexGrid::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QModelIndex under = indexAt(event->pos());
    if (under.isValid() && event->button() == Qt::LeftButton) Q_EMIT rowOpened(under.row() + 1);
}

QItemSelectionModel::SelectionFlags FlexGrid::selectionCommand(
    const QModelIndex& index, const QEvent* event) const
{
    // Ctrl never leaves the grid without a selected line
    const auto flags = QTableView::selectionCommand(index, event);
    return flags & (QItemSelectionModel::Deselect | QItemSelectionModel::Toggle)
        ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
        : flags;
}

void FlexGrid::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    layOutColumns();
}

void FlexGrid::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange) return;
    measureLines();
    layOutColumns();
}

} // namespace quilla
