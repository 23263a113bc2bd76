#include "readers/reader_card_ops.h"

#include "frame/work.h"
#include "platform/core/date_box.h"
#include "platform/db/decimal.h"

namespace quilla {

namespace {

constexpr int MostYears = 5;

QString shownText(const Recordset& row, QStringView column)
{
    return trimBlanks(row.field(column).text());
}

ReaderCard cardOf(const Recordset& row)
{
    ReaderCard card;
    card.code = shownText(row, u"readercode");
    card.name = shownText(row, u"name");
    card.sex = shownText(row, u"sex");
    card.type = shownText(row, u"readerclass");
    card.unit = shownText(row, u"readunit");
    card.status = shownText(row, u"readstatus");
    card.issued = isoDate(row.field(u"paperdate").moment());
    card.term = isoDate(row.field(u"term").moment());
    card.memo = shownText(row, u"memo");
    card.photo = shownText(row, u"photo");
    card.onLoan = numberText(row, u"orderbook");
    card.artsOnLoan = numberText(row, u"yAcount");
    card.scienceOnLoan = numberText(row, u"yBcount");
    card.reserved = numberText(row, u"yordercshu");
    card.rules = readRules(row);
    return card;
}

ReaderPapers papersOf(const Recordset& row)
{
    const QString other = u"其它"_s;
    if (row.eof()) return {.kind = other};
    return {.kind = row.field(u"zhenghaolx").isNull() ? other : shownText(row, u"zhenghaolx"),
        .number = shownText(row, u"zhenghao"),
        .email = shownText(row, u"email"),
        .address = shownText(row, u"dizhi")};
}

} // namespace

std::optional<QStringList> cardChoices(Session& session, CardChoice choice)
{
    ResumingWork work(session);
    if (!work) return {};
    return session.error.attempt([&] {
        QStringList texts;
        Recordset row
            = work.connection().open(choice == CardChoice::Type ? u"select distinct  readerclass from dzlx"
                                                                : u"select distinct readunit from dzdw");
        for (; !row.eof(); row.next())
            if (!isBlank(row.field(0).text())) texts.append(row.field(0).text());
        return texts;
    });
}

std::optional<LoadedCard> readCard(Session& session, const QString& readercode)
{
    ResumingWork work(session);
    if (!work) return {};
    const QString code = doubled(readercode);
    const Recordset card = work.select(
        u"select readercode,name,sex,readerclass,readunit,bookcount,daycount,orderbook,ordercount,orderday,yordercshu,Acount,Bcount,yAcount,yBcount,recount,reday,ifcanre,fine,defile,lost,wuzheng,readstatus,term,paperdate,photo,memo from dzk  where readercode='%1'"_s
            .arg(code));
    if (card.eof()) return {};
    LoadedCard loaded {cardOf(card), card.field(u"readercode").text(), {}};
    loaded.papers = session.error.attempt([&] {
        return papersOf(work.connection().open(
            u"select zhenghaolx,zhenghao,dizhi,birthday,email from dzkx where readercode='%1'"_s.arg(code)));
    });
    return loaded;
}

QString unpaddedDate(const QDate& day)
{
    return day.toString(u"yyyy-M-d"_s);
}

ReaderCard newCard(Session& session)
{
    const QDate today = GetServerDate(session).date;
    ReaderCard card;
    card.rules.loanCopies = u"0"_s;
    card.onLoan = u"0"_s;
    card.issued = isoDate(today);
    card.term = unpaddedDate(today.addYears(1));
    card.status = u"有效"_s;
    return card;
}

std::optional<RuleTexts> rulesOfType(Session& session, const QString& readerclass)
{
    ResumingWork work(session);
    if (!work) return {};
    return session.error.attempt([&] {
        const Recordset row = work.connection().open(
            u"select bookcount,daycount,fine,defile,lost,recount,reday,orderday,ordercount,Acount,Bcount,ifcanre,wuzheng from jycs where readerclass='%1'"_s
                .arg(doubled(readerclass)));
        return row.eof() ? noRules() : readRules(row);
    });
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
