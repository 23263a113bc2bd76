#include "readers/reader_card_ops.h"

#include "frame/sublib.h"
#include "platform/core/date_box.h"
#include "platform/db/decimal.h"

namespace quilla {

namespace {

constexpr int MostYears = 5;

/// A box and its column; a parameter has one of the same name in the rules of its type.
struct BoxColumn {
    int box;
    QString column;
};

const std::vector<BoxColumn>& parameterColumns()
{
    static const std::vector<BoxColumn> columns {{CardBox::LoanCopies, u"bookcount"_s},
        {CardBox::LoanDays, u"daycount"_s}, {CardBox::OverdueFine, u"fine"_s},
        {CardBox::DefileFine, u"defile"_s}, {CardBox::LostFine, u"lost"_s}, {CardBox::Renewals, u"recount"_s},
        {CardBox::RenewalDays, u"reday"_s}, {CardBox::HoldDays, u"orderday"_s},
        {CardBox::HoldCopies, u"ordercount"_s}, {CardBox::ArtsCopies, u"Acount"_s},
        {CardBox::ScienceCopies, u"Bcount"_s}};
    return columns;
}

QString storedText(const Recordset& row, const QString& column)
{
    return row.field(column).text().trimmed();
}

QString storedNumber(const Recordset& row, const QString& column)
{
    const QString stored = row.field(column).text();
    const auto number = Decimal::read(stored);
    return number ? number->text() : stored;
}

void takeParameters(const Recordset& row, ReaderCard& card)
{
    for (const BoxColumn& parameter : parameterColumns())
        card.boxes[parameter.box] = row.eof() ? u"0"_s : storedNumber(row, parameter.column);
    card.checks[CardCheck::MayHoldOverdue] = !row.eof() && row.field(u"ifcanre").isTrue();
    card.checks[CardCheck::NeedsNoCard] = !row.eof() && row.field(u"wuzheng").isTrue();
}

ReaderCard cardOf(const Recordset& row)
{
    ReaderCard card;
    takeParameters(row, card);
    card.boxes[CardBox::ReaderCode] = storedText(row, u"readercode"_s);
    card.boxes[CardBox::Name] = storedText(row, u"name"_s);
    card.boxes[CardBox::Memo] = storedText(row, u"memo"_s);
    card.boxes[CardBox::OnLoan] = storedNumber(row, u"orderbook"_s);
    card.boxes[CardBox::Reserved] = storedNumber(row, u"yordercshu"_s);
    card.boxes[CardBox::ArtsOnLoan] = storedNumber(row, u"yAcount"_s);
    card.boxes[CardBox::ScienceOnLoan] = storedNumber(row, u"yBcount"_s);
    card.boxes[CardBox::Issued] = isoDate(row.field(u"paperdate").moment());
    card.boxes[CardBox::Term] = isoDate(row.field(u"term").moment());
    card.lists = {storedText(row, u"sex"_s), storedText(row, u"readerclass"_s),
        storedText(row, u"readunit"_s), storedText(row, u"readstatus"_s)};
    card.boxes[CardBox::Type] = card.lists[CardList::Type];
    card.photo = storedText(row, u"photo"_s);
    return card;
}

ReaderPapers papersOf(const Recordset& row)
{
    const QString other = u"其它"_s;
    if (row.eof()) return {other, {}};
    return {row.field(u"zhenghaolx").isNull() ? other : storedText(row, u"zhenghaolx"_s),
        {storedText(row, u"zhenghao"_s), storedText(row, u"email"_s), storedText(row, u"dizhi"_s)}};
}

} // namespace

std::optional<QStringList> cardChoices(Session& session, int list)
{
    const QString select = list == CardList::Type ? u"select distinct  readerclass from dzlx"_s
                                                  : u"select distinct readunit from dzdw"_s;
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return {};
    const auto choices = session.error.attempt([&] {
        QStringList texts;
        for (Recordset row = conn.open(select); !row.eof(); row.next())
            texts.append(row.field(0).text().trimmed());
        texts.removeAll(QString());
        return texts;
    });
    session.error.clear();
    return choices;
}

std::optional<LoadedCard> readCard(Session& session, const QString& readercode)
{
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return {};
    const QString code = doubled(readercode);
    const Recordset card = openOrEmpty(session, conn,
        u"select readercode,name,sex,readerclass,readunit,bookcount,daycount,orderbook,ordercount,orderday,yordercshu,Acount,Bcount,yAcount,yBcount,recount,reday,ifcanre,fine,defile,lost,wuzheng,readstatus,term,paperdate,photo,memo from dzk  where readercode='%1'"_s
            .arg(code));
    std::optional<LoadedCard> loaded;
    if (!card.eof()) {
        loaded = LoadedCard {cardOf(card), {}};
        loaded->papers = session.error.attempt([&] {
            return papersOf(conn.open(
                u"select zhenghaolx,zhenghao,dizhi,birthday,email from dzkx where readercode='%1'"_s.arg(
                    code)));
        });
    }
    session.error.clear();
    return loaded;
}

ReaderCard newCard(Session& session)
{
    const QDate today = GetServerDate(session).date;
    ReaderCard card;
    card.boxes[CardBox::LoanCopies] = u"0"_s;
    card.boxes[CardBox::OnLoan] = u"0"_s;
    card.boxes[CardBox::Issued] = isoDate(today);
    // without leading zeros, so that it sorts after the same day written with them
    card.boxes[CardBox::Term] = today.addYears(1).toString(u"yyyy-M-d"_s);
    card.lists[CardList::Status] = u"有效"_s;
    return card;
}

bool takeParameters(Session& session, const QString& readerclass, ReaderCard& card)
{
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return false;
    const bool known = session.error.attempt([&] {
        takeParameters(
            conn.open(
                u"select bookcount,daycount,fine,defile,lost,recount,reday,orderday,ordercount,Acount,Bcount,ifcanre,wuzheng from jycs where readerclass='%1'"_s
                    .arg(doubled(readerclass))),
            card);
        card.boxes[CardBox::Type] = readerclass;
    });
    session.error.clear();
    return known;
}

std::vector<int> parameterBoxes()
{
    std::vector<int> boxes {CardBox::Type};
    for (const BoxColumn& parameter : parameterColumns())
        boxes.push_back(parameter.box);
    return boxes;
}

std::optional<QString> termOfYears(Session& session, const QString& years, const QString& issued)
{
    const auto number = readNumber(years);
    if (!number || *number <= 0 || *number > MostYears) return {};
    const auto day = platformDate(issued);
    const QDate base = day ? *day : GetServerDate(session).date;
    return isoDate(base.addYears(qRound(*number)));
}

} // namespace quilla
