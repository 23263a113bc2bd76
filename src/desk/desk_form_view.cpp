// What the operations do to the desk.

#include "desk/desk_form.h"

#include "desk/desk_pages.h"
#include "platform/ui/look/theme.h"

namespace quilla {

namespace {

constexpr int DueColumn = 5; ///< of the loans

struct GridDesign {
    int rows; ///< when empty, captions included
    QString format;
    std::vector<int> widths; ///< twips
};

const GridDesign LoanGrid {8,
    u"^借书控制号|^图书条形码     |<书名                  |<著者    |<借书日期  |<应还日期  |^操作员"_s,
    {850, 1100, 2000, 1100, 1000, 1000, 900}};

const GridDesign ReturnGrid {15,
    u"^还书控制号|<图书条形码  |<书名                   |<借书日期  |<应还日期  |<还书日期  |<操作员"_s,
    {850, 1100, 2000, 1100, 1000, 1000, 900}};

void setUp(FlexGrid& grid, const GridDesign& design)
{
    grid.setUp(design.rows, design.format, design.widths);
}

void bind(FlexGrid& grid, const GridDesign& design, Recordset& rows)
{
    grid.bind(rows);
    grid.setFormatString(design.format);
    grid.setColWidths(design.widths);
}

} // namespace

/// A box on another page would take the next scan unseen: the focus then stays where it is.
void TsjhFrm::enterBox(QWidget& box)
{
    if (box.isVisibleTo(this)) box.setFocus();
}

void TsjhFrm::focusReaderCode()
{
    enterBox(TxtReaderCode);
}

void TsjhFrm::emptyReaderCode()
{
    TxtReaderCode.clear();
}

void TsjhFrm::setReaderCode(const QString& readercode)
{
    TxtReaderCode.setText(readercode);
    if (m_scan) m_scan->readercode = readercode;
}

void TsjhFrm::untickRenewal()
{
    Check1.setChecked(false);
}

void TsjhFrm::selectBarCode()
{
    enterBox(TxtBarCode);
    TxtBarCode.selectAll();
}

void TsjhFrm::emptyAndFocusBarCode()
{
    TxtBarCode.clear();
    enterBox(TxtBarCode);
}

void TsjhFrm::showPage(int page)
{
    SSTab1.setCurrentIndex(page);
}

void TsjhFrm::clearReaderPanel()
{
    for (QLabel& label : Label5)
        label.clear();
}

void TsjhFrm::fillReaderPanel(const ReaderPanel& values)
{
    for (std::size_t index = 0; index < values.size(); ++index)
        Label5[index].setText(values[index]);
    showReaderStatus(values[PanelLabel::Status]);
}

void TsjhFrm::showReaderStatus(const QString& status)
{
    QLabel& label = Label5[PanelLabel::Status];
    label.setText(status);
    setTone(label, sameText(status, u"有效") ? Tone::Ok : Tone::Error);
}

void TsjhFrm::setUpLoans()
{
    setUp(Grid1, LoanGrid);
}

void TsjhFrm::bindLoans(Recordset& loans)
{
    bind(Grid1, LoanGrid, loans);
    markOverdue();
}

/// By the clock of this machine: only a mark, the check of a charge asks the server. As for that check, a
/// loan that is due today is overdue.
void TsjhFrm::markOverdue()
{
    const QDate today = m_session.clock.now().date;
    for (int row = 1; row < Grid1.Rows(); ++row) {
        const QDate due = QDate::fromString(Grid1.TextMatrix(row, DueColumn), Qt::ISODate);
        if (due.isValid() && due <= today) Grid1.markLine(row, DueColumn);
    }
}

void TsjhFrm::setUpReturns()
{
    setUp(Grid2, ReturnGrid);
}

void TsjhFrm::bindReturns(Recordset& returns)
{
    bind(Grid2, ReturnGrid, returns);
}

} // namespace quilla
