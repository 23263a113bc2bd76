#include "desk/loan_query_page.h"

#include "desk/loan_query_ops.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/wait_cursor.h"

namespace quilla {

namespace {

constexpr int EmptyRows = 13;
const QString Format
    = u"读者号    |姓名    |图书条形码|书名              |价格    |<借书日期  |<应还日期  |操作员"_s;

/// The list anew, the chosen text kept.
void fill(QComboBox& list, const QStringList& items)
{
    const QString chosen = list.currentText();
    list.clear();
    list.addItems(items);
    list.setCurrentIndex(-1);
    list.setEditText(chosen);
}

/// What was typed goes too, also where the list was never filled.
void empty(QComboBox& list)
{
    list.clear();
    list.clearEditText();
}

} // namespace

LoanQueryPage::LoanQueryPage(Session& session, ReportViewer& viewer)
    : Frame4(u"输入查询条件"_s)
    , CmdFind(u"查 询"_s)
    , CmdPrint(u"打 印"_s)
    , CmdExit(u"退 出"_s)
    , Frame5(u"借书记录"_s)
    , m_session(session)
    , m_viewer(viewer)
{
    QUILLA_NAMES(Frame4, Check2, Label6, Text2, Combo1, Combo2, CmdFind, CmdPrint, CmdExit, Frame5, Grid3);
    setCaptions(Check2,
        {u"单个读者借阅情况（姓名证号）"_s, u"某单位读者借阅情况"_s, u"某类型读者借阅情况"_s,
            u"单册图书去向（书名、条码）"_s});
    setCaptions(Label6, {u"输入姓名或条码号"_s, u"输入书名或条码号"_s});
    layOut();
    Grid3.setUp(EmptyRows, Format);
    for (int index = 0; index < 4; ++index)
        connect(&Check2[index], &QCheckBox::clicked, this, [this, index] { followTicks(index); });
    for (QWidget* box : std::initializer_list<QWidget*> {&Text2[0], &Text2[1], &Combo1})
        onEnter(*box, [this] { find(); });
    onClick(CmdFind, [this] { find(); });
    onClick(CmdPrint, [this] { print(); });
}

void LoanQueryPage::layOut()
{
    for (TextBox& box : Text2)
        box.setHighlighted(true);
    for (QComboBox* list : {&Combo1, &Combo2}) {
        list->setEditable(true);
        list->setInsertPolicy(QComboBox::NoInsert);
        list->setCompleter(nullptr); // a new text may begin like a known one
        keepPlain(*list->lineEdit());
    }
    Combo1.setAccessibleName(Check2[1].text());
    Combo2.setAccessibleName(Check2[2].text());
    const Piece reader = column(Check2[0], row(Label6[0], Piece(Text2[0]).grow()));
    const Piece book = column(Check2[3], row(Label6[1], Piece(Text2[1]).grow()));
    const Piece unit = column(Check2[1], Combo1);
    const Piece type = column(Check2[2], Combo2);
    build(*this,
        column(group(Frame4,
                   row(column(reader, book).grow(3), room(16), column(unit, type).grow(2), room(16),
                       column(CmdFind, CmdPrint, CmdExit))),
            group(Frame5, Piece(Grid3).grow()).grow()));
}

void LoanQueryPage::followTicks(int clicked)
{
    const auto isOn = [this](int index) { return Check2[index].isChecked(); };
    for (int index = 0; index < 4; ++index) {
        if (!isOn(index)) continue;
        CmdFind.setEnabled(true);
        CmdPrint.setEnabled(true);
    }
    if (!isOn(LoanQuery::Reader)) Text2[0].clear();
    if (!isOn(LoanQuery::Book)) Text2[1].clear();
    isOn(LoanQuery::Unit) ? fill(Combo1, readerUnits(m_session)) : empty(Combo1);
    isOn(LoanQuery::Class) ? fill(Combo2, readerClasses(m_session)) : empty(Combo2);
    QWidget* const boxes[] = {&Text2[0], &Combo1, &Combo2, &Text2[1]};
    boxes[clicked]->setFocus();
}

void LoanQueryPage::find()
{
    const WaitCursor wait;
    Grid3.setUp(EmptyRows, Format);
    const QString statement = loanStatement(
        {{{{Check2[0].isChecked(), Text2[0].text()}, {Check2[1].isChecked(), Combo1.currentText()},
            {Check2[2].isChecked(), Combo2.currentText()}, {Check2[3].isChecked(), Text2[1].text()}}}});
    if (statement.isEmpty()) return;
    const std::vector<LoanLine> lines = findLoans(m_session, statement);
    if (lines.empty()) return;
    m_statement = statement;
    const GridModel::Filling filling(Grid3.cells());
    Grid3.setRows(std::max(EmptyRows, int(lines.size()) + 1));
    for (int line = 0; line < int(lines.size()); ++line)
        for (int col = 0; col < int(lines[std::size_t(line)].size()); ++col)
            Grid3.setTextMatrix(line + 1, col, lines[std::size_t(line)][col]);
}

void LoanQueryPage::print()
{
    printLoans(m_session, m_viewer, m_statement);
}

} // namespace quilla
