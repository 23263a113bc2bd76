#include "platform/ui/grid/flex_grid.h"

#include "platform/grid/grid_widths.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/grid/grid_delegate.h"
#include "platform/ui/look/theme.h"

#include <QHeaderView>
#include <QInputMethodEvent>
#include <QKeyEvent>
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
        m_columns.takeRemembered();
        m_columns.layOut();
    });
}

void FlexGrid::setUpHeader()
{
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
}

/// A reset of the model takes the current line away from Qt's view; the line number outlives it here.
void FlexGrid::keepPlaceOverResets()
{
    connect(&m_model, &GridModel::modelAboutToBeReset, this, [this] { m_rowOverReset = std::max(Row(), 1); });
    connect(&m_model, &GridModel::modelReset, this, [this] {
        showOrder({});
        m_marks.clear();
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

int FlexGrid::contentTwips(int col) const
{
    return twipsOf(sizeHintForColumn(col) + 1, *this);
}

void FlexGrid::measureLines()
{
    verticalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setFixedHeight(std::max(pixelsOf(CaptionHeight, *this), fontMetrics().height() + 6));
}

void FlexGrid::sortRows(int firstCol, int lastCol)
{
    const int row = Row();
    m_model.sortRows(firstCol, lastCol);
    showOrder({});
    setRow(row);
}

void FlexGrid::setSortsByCaption(bool sorts)
{
    horizontalHeader()->setSectionsClickable(sorts);
    if (sorts)
        connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &FlexGrid::sortByCaption,
            Qt::UniqueConnection);
}

void FlexGrid::sortByCaption(int col)
{
    const bool again = m_order.col == col && m_order.direction == Qt::AscendingOrder;
    sortBy({col, again ? Qt::DescendingOrder : Qt::AscendingOrder});
}

void FlexGrid::sortBy(const GridOrder& order)
{
    if (order.col < m_model.FixedCols() || order.col >= Cols() || m_model.isEmptyList()) return;
    const WaitCursor hourglass;
    const QString key = current(m_model.FixedCols());
    const int col = Col();
    m_model.sortRows(order.col, order.col, order.direction);
    showOrder(order);
    selectKey(key);
    setCol(col);
}

/// The arrow points up where the lines ascend; Qt's own one points down then.
void FlexGrid::showOrder(const GridOrder& order)
{
    m_order = order;
    const bool ascends = order.direction == Qt::AscendingOrder;
    horizontalHeader()->setSortIndicatorShown(order.col >= 0);
    horizontalHeader()->setSortIndicator(order.col, ascends ? Qt::DescendingOrder : Qt::AscendingOrder);
}

int FlexGrid::markOf(int row) const
{
    const auto mark = m_marks.find(row);
    return mark == m_marks.end() ? -1 : mark->second;
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
    setRow(m_search.type(text, m_model, columnsOfSearch(), Row()));
}

/// The column that the lines are sorted by, then the two that name a record.
std::vector<int> FlexGrid::columnsOfSearch() const
{
    std::vector<int> columns {m_model.FixedCols(), m_model.FixedCols() + 1};
    if (m_order.col >= 0) columns.insert(columns.begin(), m_order.col);
    return columns;
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
    constexpr int flags = Qt::AlignCenter | Qt::TextWordWrap;
    // the lines of the empty rows don't strike it through
    const QRect text = painter.boundingRect(viewport()->rect(), flags, m_hint);
    painter.fillRect(text.adjusted(-10, -4, 10, 4), Theme::current().surface);
    painter.setPen(Theme::current().mutedText);
    painter.drawText(viewport()->rect(), flags, m_hint);
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
    m_columns.layOut();
}

void FlexGrid::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange) return;
    measureLines();
    m_columns.layOut();
}

} // namespace quilla
