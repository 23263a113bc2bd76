#include "desk/reader_picker_ops.h"

#include "frame/work.h"

namespace quilla {

namespace {

struct DetailField {
    int box;
    QString field;
};

std::vector<DetailField> cardFields()
{
    using namespace ReaderDetail;
    return {{Name, u"name"_s}, {Sex, u"sex"_s}, {Code, u"readercode"_s}, {Class, u"readerclass"_s},
        {Status, u"readstatus"_s}, {Issued, u"paperdate"_s}, {Term, u"term"_s}, {Quota, u"bookcount"_s},
        {OnLoan, u"orderbook"_s}, {Reserved, u"yordercshu"_s}, {Unit, u"readunit"_s}, {Memo, u"memo"_s}};
}

std::vector<DetailField> personFields()
{
    using namespace ReaderDetail;
    return {{PaperKind, u"zhenghaolx"_s}, {PaperNumber, u"zhenghao"_s}, {Address, u"dizhi"_s},
        {Email, u"email"_s}, {Birthday, u"birthday"_s}};
}

QString shown(const Value& value)
{
    return value.kind() == sql::Kind::Date ? isoDate(value.moment()) : value.text();
}

void take(ReaderDetails& details, const Recordset& row, const std::vector<DetailField>& fields)
{
    for (const auto& [box, field] : fields)
        details.texts[std::size_t(box)] = shown(row.field(field));
}

} // namespace

ReaderPicker noCardPicker()
{
    return {u"frmWuZhengJieShu"_s, u"借还图书-->无证借书"_s,
        u"select name ,readercode  from dzk where wuzheng=1"_s, u" and name like '%%1%'"_s,
        u"，没有无证借书权限"_s};
}

ReaderPicker everyReaderPicker()
{
    return {u"frmReaderSelect"_s, u"选择读者"_s, u"select name ,readercode  from dzk "_s,
        u" where name like '%%1%'"_s, u"，没有登记读者证！"_s};
}

std::optional<Recordset> findReaders(Session& session, const ReaderPicker& picker, const QString& part)
{
    QString statement = picker.statement;
    if (!part.isEmpty()) statement += picker.namePart.arg(doubled(part));
    ResumingWork work(session);
    if (!work) return {};
    return work.select(statement);
}

namespace {

/// nullopt for a reader who is gone.
std::optional<ReaderDetails> detailsOf(StrictWork& work, const QString& readercode)
{
    const QString code = doubled(readercode);
    const Recordset card = work.open(
        u"select  name,sex,readercode,readerclass,readstatus,paperdate,term,bookcount,orderbook,yordercshu,readunit,memo,photo from dzk where readercode='%1'"_s
            .arg(code));
    if (card.eof()) return {};
    ReaderDetails details;
    take(details, card, cardFields());
    details.photo = trimBlanks(card.field(u"photo").text());
    const Recordset person = work.open(
        u"select zhenghaolx,zhenghao,dizhi,birthday,email from dzkx where readercode='%1'"_s.arg(code));
    if (!person.eof()) take(details, person, personFields());
    return details;
}

} // namespace

std::optional<ReaderDetails> readReaderDetails(Session& session, const QString& readercode)
{
    const auto inform = [&](const QString& text) { session.prompt.inform(text, OperationTitle); };
    const auto details = handled(
        session, Opened::Directly, [&](StrictWork& work) { return detailsOf(work, readercode); },
        [&](const Error& error) { inform(error.text); });
    if (details && !*details) inform(u"该读者不存在！(可能已经被删除)"_s);
    return details.value_or(std::nullopt);
}

} // namespace quilla
