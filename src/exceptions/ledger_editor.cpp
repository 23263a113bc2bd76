#include "exceptions/ledger_editor.h"

#include "platform/db/decimal.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/open_list.h"
#include "platform/ui/look/theme.h"

namespace quilla {

namespace {

/// How much may be typed; 0 for any length.
constexpr int Widths[LedgerBox::Count] {0, 50, 20, 15, 0, 50, 0, 0};

} // namespace

AddBookOutFrm::AddBookOutFrm(Session& session, QWidget* parent)
    : QDialog(parent)
    , CmdSave(u"&O 确定"_s)
    , CmdCancel(u"&C 取消"_s)
    , m_session(session)
{
    setObjectName(u"AddBookOutFrm"_s);
    QUILLA_NAMES(Text1, Combo1, CmdSave, CmdCancel);
    takeAnyText(Combo1);
    Combo1.addItems(withdrawalCauses());
    for (const int box : {LedgerBox::Id, LedgerBox::Operator, LedgerBox::Date})
        Text1[box].setEnabled(false);
    layOut();
    wire();
    SetDataMode({});
}

void AddBookOutFrm::layOut()
{
    using namespace LedgerBox;
    build(*this,
        column(fields(1,
                   {{u"注销编号"_s, Text1[Id]}, {u"条 码 号"_s, Text1[Barcode]},
                       {u"书    名"_s, Text1[Title]}, {u"作    者"_s, Text1[Author]},
                       {u"价    格"_s, Text1[Price]}, {u"注销原因"_s, Combo1}, {u"备    注"_s, Text1[Memo]},
                       {u"登记人员"_s, Text1[Operator]}, {u"注销日期"_s, Text1[Date]}}),
            stretch(), row(stretch(), CmdSave, CmdCancel)));
    resize(pixelsOf(6600, *this), sizeHint().height());
    Text1[Barcode].setFocus();
}

void AddBookOutFrm::wire()
{
    std::vector<std::reference_wrapper<QWidget>> inputs = allOf(Text1);
    inputs.push_back(Combo1);
    enterAsTab(inputs);
    onLeave(Text1[LedgerBox::Barcode], [this] {
        if (m_mode.isAdd() && !checkCopy()) m_told.now();
    });
    onLeave(Text1[LedgerBox::Price], [this] { checkPrice(); });
    onLeave(Text1[LedgerBox::Date], [this] {
        if (!checkDate()) m_told.now();
    });
    onClick(CmdSave, [this] { save(); });
    onClick(CmdCancel, [this] { reject(); });
}

void AddBookOutFrm::SetDataMode(const QString& mode)
{
    m_mode = EditorMode(mode);
    setWindowTitle(m_mode.isAdd() ? u"藏书注销帐-[登记注销]"_s
            : m_mode.isEdit()     ? u"藏书注销帐-[查看注销]"_s
                                  : u"藏书注销帐"_s);
    CmdSave.setEnabled(m_mode.maySave());
    Text1[LedgerBox::Barcode].setReadOnly(m_mode.isEdit());
}

/// What is stored stays whole, also where it is longer than what may be typed.
void AddBookOutFrm::fill(int box, const QString& text)
{
    if (Widths[box]) Text1[box].setMaxLength(std::max(Widths[box], int(text.size())));
    Text1[box].setText(text);
}

void AddBookOutFrm::InfoLoad(qint64 id)
{
    const auto entry = readWithdrawal(m_session, id);
    if (!entry) return CmdSave.setEnabled(false);
    fill(LedgerBox::Id, entry->id);
    fill(LedgerBox::Title, entry->bookname);
    fill(LedgerBox::Author, entry->author);
    fill(LedgerBox::Barcode, entry->barcode);
    fill(LedgerBox::Price, entry->price);
    fill(LedgerBox::Memo, entry->memo);
    fill(LedgerBox::Operator, entry->operater);
    fill(LedgerBox::Date, entry->outdate);
    Combo1.setCurrentText(entry->cause);
}

Withdrawal AddBookOutFrm::shown() const
{
    using namespace LedgerBox;
    return {Text1[Id].text(), Text1[Title].text(), Text1[Author].text(), Text1[Barcode].text(),
        Text1[Price].text(), Combo1.currentText(), Text1[Memo].text(), Text1[Operator].text(),
        Text1[Date].text()};
}

/// Overwrites what was corrected by hand where the catalogue knows the copy. False when it can't be
/// withdrawn.
bool AddBookOutFrm::checkCopy()
{
    const CopyCheck check = CheckCopyForWithdrawal(m_session, Text1[LedgerBox::Barcode].text());
    if (check.data) {
        fill(LedgerBox::Title, check.data->bookname);
        fill(LedgerBox::Author, check.data->author);
        fill(LedgerBox::Price, check.data->price);
    }
    return !check.refused;
}

void AddBookOutFrm::checkPrice()
{
    if (!Decimal::read(Text1[LedgerBox::Price].text())) Text1[LedgerBox::Price].setText(u"0"_s);
}

bool AddBookOutFrm::checkDate()
{
    const auto refusal = withdrawalDateRefusal(Text1[LedgerBox::Date].text());
    if (!refusal) return true;
    tell(m_session.prompt, *refusal, [this](int box) {
        Text1[box].setEnabled(true);
        Text1[box].setFocus();
    });
    return false;
}

void AddBookOutFrm::save()
{
    if (m_told) return;
    if (m_mode.isAdd() && !checkCopy()) return;
    if (!Decimal::read(Text1[LedgerBox::Price].text())) return Text1[LedgerBox::Price].setFocus();
    if (!checkDate()) return;
    if (SaveWithdrawal(m_session, m_mode, shown())) return Text1[LedgerBox::Title].setFocus();
    accept();
}

} // namespace quilla
