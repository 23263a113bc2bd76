#include "frame/record_list.h"

#include "platform/core/caption.h"
#include "platform/ui/form/form.h"

namespace quilla {

RecordList::RecordList(
    Session& session, const QString& name, const QString& title, const WidthRule& rule, RecordRemoval removal)
    : ListScreen(name, title)
    , lCounts(recordCountText(0))
    , m_session(session)
    , m_removal(std::move(removal))
{
    QUILLA_NAMES(lCounts);
    shareWidth(rule);
}

void RecordList::arrange(const std::vector<std::reference_wrapper<QPushButton>>& buttons)
{
    ListScreen::arrange(lCounts, buttons);
}

void RecordList::wireButtons(const std::vector<std::reference_wrapper<QPushButton>>& buttons)
{
    onClick(buttons[Add], [this] { addRecord(); });
    onClick(buttons[Remove], [this] { removeSelected(); });
    onClick(buttons[Close], [this] { closeScreen(*this); });
    onClick(buttons[Edit], [this] { editCurrent(); });
    onOpen(Grid1, [this](int) { editCurrent(); });
    connect(&Grid1, &FlexGrid::insertPressed, this, [this] { addRecord(); });
    connect(&Grid1, &FlexGrid::deletePressed, this, [this] { removeSelected(); });
}

void RecordList::linesChanged()
{
    lCounts.setText(recordCountText(Grid1.cells().isEmptyList() ? 0 : Grid1.Rows() - 1));
    gridFix();
}

void RecordList::editCurrent()
{
    if (!Grid1.current(0).isEmpty()) editRecord();
}

void RecordList::removeSelected()
{
    if (Grid1.current(0).isEmpty()) return;
    const int from = std::min(Grid1.Row(), Grid1.RowSel());
    const int to = std::max(Grid1.Row(), Grid1.RowSel());
    QStringList keys;
    for (int row = from; row <= to; ++row)
        keys.append(Grid1.TextMatrix(row, 0));
    removeRecords(m_session, m_removal, keys, [this, from] {
        Grid1.cells().removeRow(from);
        linesChanged();
    });
    Grid1.setRow(std::min(from, Grid1.Rows() - 1));
}

RecordEditor::RecordEditor(const QString& name, const QStringList& captions, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(name);
    QUILLA_NAMES(Command1);
    setCaptions(Command1, captions);
    onClick(Command1[0], [this] {
        if (save()) startNext();
    });
    onClick(Command1[1], [this] {
        if (save()) accept();
    });
    onClick(Command1[2], [this] { reject(); });
}

} // namespace quilla
