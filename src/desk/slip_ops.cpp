#include "desk/slip_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"
#include "platform/core/documents_folder.h"

#include <QDir>

namespace quilla {

namespace {

const QString SlipKey = u"DeskSlip"_s;
const QString PdfMark = u" pdf"_s;
const std::array PaperNames {u"58"_s, u"80"_s, u"A6"_s};

void addLoans(ResumingWork& work, const QString& code, Slip& slip)
{
    Recordset loans = work.select(
        u"select a.barcode,b.bookname,a.yhdate from jhsk a join sck c on a.barcode=c.barcode join zsk b on b.zskid=c.zskid where a.readercode='%1' order by a.yhdate,a.barcode"_s
            .arg(code));
    for (; !loans.eof(); loans.next())
        slip.items.push_back({trimBlanks(loans.field(u"bookname").text()),
            u"%1  应还 %2"_s.arg(loans.field(u"barcode").text(), isoDate(loans.field(u"yhdate").moment()))});
}

} // namespace

SlipChoice slipChoice(const SettingsStore& settings)
{
    const QString kept
        = settings.get(StoredText::Application.toString(), StoredText::Section.toString(), SlipKey, {});
    SlipChoice choice;
    choice.asPdf = kept.endsWith(PdfMark);
    const auto found = std::find(PaperNames.begin(), PaperNames.end(), QString(kept).remove(PdfMark));
    if (found != PaperNames.end()) choice.paper = SlipPaper(found - PaperNames.begin());
    return choice;
}

void keepSlipChoice(SettingsStore& settings, const SlipChoice& choice)
{
    const QString paper = choice.paper ? PaperNames[std::size_t(*choice.paper)] : QString();
    settings.set(StoredText::Application.toString(), StoredText::Section.toString(), SlipKey,
        choice.asPdf ? paper + PdfMark : paper);
}

std::optional<Slip> loanSlip(Session& session, const QString& readercode, SlipPaper paper)
{
    ResumingWork work(session);
    if (!work) return {};
    const QString code = doubled(readercode);
    const Recordset reader
        = work.select(u"select readercode,name from dzk where readercode='%1'"_s.arg(code));
    if (reader.eof()) {
        work.release();
        session.prompt.inform(u"请先输入读者证号，再打印借阅单。"_s, OperationTitle);
        return {};
    }
    Slip slip {.title = u"借阅单"_s, .paper = paper};
    slip.head = {u"读者证号：%1"_s.arg(trimBlanks(reader.field(0).text())),
        u"姓　　名：%1"_s.arg(trimBlanks(reader.field(1).text()))};
    addLoans(work, code, slip);
    slip.foot = {u"共 %1 册，请按期归还。"_s.arg(slip.items.size()),
        u"打印时间：%1"_s.arg(localeDateText(GetServerDate(session)))};
    return slip;
}

QString slipFile(const QString& readercode, const Moment& now)
{
    QString code;
    for (const QChar letter : readercode)
        if (letter.isLetterOrNumber()) code += letter;
    const QString time = now.date.toString(u"yyyy-MM-dd"_s) + now.time.toString(u"-HHmmss"_s);
    return QDir(documentsFolder()).filePath(u"借阅单-%1-%2.pdf"_s.arg(code, time));
}

} // namespace quilla
