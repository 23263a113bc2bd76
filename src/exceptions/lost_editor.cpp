#include "exceptions/lost_editor.h"

#include "frame/sublib.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/list_chooser.h"
#include "platform/ui/look/theme.h"

namespace quilla {

lostMangerAddfrm::lostMangerAddfrm(Session& session, const QString& entryMode, QWidget* parent)
    : RecordEditor(u"lostMangerAddfrm"_s, {u"&A  保存增加"_s, u"&S  保存"_s, u"&X  关闭"_s}, parent)
    , Command2(u"书册信息列表"_s)
    , m_session(session)
    , m_entry(session, *this)
{
    QUILLA_NAMES(Text1, Command2);
    layOut();
    wire();
    setMode(entryMode);
    if (entryMode == u"A") Text1[LostBox::Date].setText(isoDate(GetServerDate(session)));
}

void lostMangerAddfrm::layOut()
{
    const Piece copy = row(Piece(Text1[LostBox::Barcode]).grow(), Command2);
    build(*this,
        column(fields(1,
                   {{u"读者证号"_s, Text1[LostBox::ReaderCode]}, {u"读者姓名"_s, Text1[LostBox::ReaderName]},
                       {u"条 形 码"_s, copy}, {u"书    名"_s, Text1[LostBox::Title]},
                       {u"应罚金额"_s, Text1[LostBox::Amount]}, {u"登记日期"_s, Text1[LostBox::Date]}}),
            stretch(), row(stretch(), Command1[0], Command1[1], Command1[2])));
    resize(pixelsOf(6900, *this), sizeHint().height());
}

void lostMangerAddfrm::wire()
{
    enterAsTab(allOf(Text1));
    for (int index = 0; index < LostBox::Count; ++index) {
        onLeave(Text1[index], [this, index] {
            if (!m_entry.Text1_LostFocus(index)) m_told.now();
        });
        if (index != LostBox::Date)
            connect(&Text1[index], &QLineEdit::textChanged, this, [this] { m_entry.boxChanged(); });
    }
    onClick(Command2, [this] { offerCopies(); });
}

void lostMangerAddfrm::setMode(const QString& mode)
{
    m_entry.EntryMode = mode;
    const bool adds = mode == u"A";
    setWindowTitle(adds ? u"丢失登记-->增加"_s : u"丢失登记-->修改"_s);
    for (int index = 0; index < LostBox::Amount; ++index)
        Text1[index].setEnabled(adds);
    Text1[LostBox::Amount].setEnabled(false);
    Command2.setEnabled(adds);
    Text1[adds ? LostBox::ReaderCode : LostBox::Date].setFocus();
}

void lostMangerAddfrm::LoadLostEntryFromGrid(const FlexGrid& list)
{
    const int columns[] {LostColumn::ReaderCode, LostColumn::ReaderName, LostColumn::Barcode,
        LostColumn::Title, LostColumn::Amount, LostColumn::Date};
    for (int index = 0; index < LostBox::Count; ++index)
        Text1[index].setText(list.current(columns[index]));
}

bool lostMangerAddfrm::save()
{
    if (m_told || !m_entry.ValidateLostEntry()) return false;
    if (m_entry.EntryMode == u"A") {
        const auto line = m_entry.SaveNewLostEntry();
        if (line && Added) Added(*line);
        return line.has_value();
    }
    if (!m_entry.SaveLostEntryDate()) return false;
    if (Dated) Dated(shownDate(Text1[LostBox::Date].text()));
    return true;
}

/// The date stays for the next entry, which is a new one also after a change.
void lostMangerAddfrm::startNext()
{
    for (int index = 0; index < LostBox::Date; ++index)
        Text1[index].clear();
    setMode(u"A"_s);
}

void lostMangerAddfrm::offerCopies()
{
    const QString readercode = Text1[LostBox::ReaderCode].text();
    if (readercode.isEmpty()) return;
    auto copies = copiesOutWith(m_session, readercode);
    if (!copies) return;
    auto* chooser = new gListfrm(Text1[LostBox::Barcode]);
    chooser->setAttribute(Qt::WA_DeleteOnClose);
    chooser->loadData(*copies);
    chooser->popUp();
}

} // namespace quilla
