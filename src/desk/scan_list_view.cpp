#include "desk/scan_list_view.h"

#include "desk/scan_log.h"
#include "platform/core/text.h"
#include "platform/ui/look/theme.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <set>

namespace quilla {

namespace {

QColor colourOf(ScanOutcome outcome)
{
    const Theme& theme = Theme::current();
    switch (outcome) {
    case ScanOutcome::Done:
        return theme.ok;
    case ScanOutcome::Refused:
    case ScanOutcome::Unserved:
        return theme.warning;
    case ScanOutcome::Failed:
        return theme.error;
    }
    return theme.text;
}

/// The result in its colour; whatever was not done stands out in bold.
class OutcomeDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;
        if (index.column() != ScanLog::What && index.column() != ScanLog::Result) return;
        const auto outcome = ScanOutcome(index.data(ScanLog::OutcomeRole).toInt());
        option->palette.setColor(QPalette::Text, colourOf(outcome));
        option->palette.setColor(QPalette::Inactive, QPalette::HighlightedText, colourOf(outcome));
        option->font.setBold(outcome != ScanOutcome::Done);
    }
};

} // namespace

ScanListView::ScanListView(QWidget* parent)
    : QTableView(parent)
{
    setItemDelegate(new OutcomeDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setFixedHeight(std::max(pixelsOf(350, *this), fontMetrics().height() + 6));
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(this, &QTableView::doubleClicked, this,
        [this](const QModelIndex& index) { Q_EMIT opened(index.row()); });
}

QString ScanListView::chosenText() const
{
    std::set<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        rows.insert(index.row());
    for (int row = 0; selectionModel()->selection().isEmpty() && row < model()->rowCount(); ++row)
        rows.insert(row);
    QStringList lines;
    for (const int row : rows) {
        QStringList cells;
        for (int col = 0; col < model()->columnCount(); ++col)
            cells.append(model()->index(row, col).data().toString());
        lines.append(cells.join(u'\t'));
    }
    return lines.join(u'\n');
}

void ScanListView::setEmptyNote(const QString& text)
{
    m_emptyNote = text;
    viewport()->update();
}

/// What is typed goes where lines are looked for.
void ScanListView::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool command = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    if (event->matches(QKeySequence::Copy))
        QApplication::clipboard()->setText(chosenText());
    else if (enter && currentIndex().isValid())
        Q_EMIT opened(currentIndex().row());
    else if (!command && !event->text().isEmpty() && event->text()[0].isPrint())
        Q_EMIT typed(event->text());
    else
        QTableView::keyPressEvent(event);
}

void ScanListView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (model()->rowCount() > 0) return;
    QPainter painter(viewport());
    painter.setPen(Theme::current().mutedText);
    painter.drawText(
        viewport()->rect().adjusted(12, 0, -12, 0), Qt::AlignCenter | Qt::TextWordWrap, m_emptyNote);
}

void ScanListView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    shareWidth();
}

/// Time, word and barcode get what they need; title, reader and result share the rest.
void ScanListView::shareWidth()
{
    constexpr int padding = 14;
    const auto widthOf = [&](const QString& text) { return fontMetrics().horizontalAdvance(text) + padding; };
    const int fixed[] {widthOf(u"00:00:00"_s), widthOf(u"事项"_s), widthOf(u"0000000000"_s)};
    int rest = viewport()->width();
    for (int col = ScanLog::Time; col <= ScanLog::Barcode; ++col) {
        setColumnWidth(col, fixed[col]);
        rest -= fixed[col];
    }
    setColumnWidth(ScanLog::Result, std::max(widthOf(u"成功 应还 2026-00-00"_s), rest * 44 / 100));
    setColumnWidth(ScanLog::Reader, std::max(widthOf(u"读者姓名"_s), rest * 25 / 100));
    horizontalHeader()->setSectionResizeMode(ScanLog::Title, QHeaderView::Stretch);
}

} // namespace quilla
