#include "exceptions/fine_ops.h"
#include "frame/sublib.h"
#include "platform/db/decimal.h"

namespace quilla {

namespace {

constexpr int MoneyPlaces = 2;

/// A null counts as 0, and so does a field of a loan that is not there.
Decimal numberOf(const Recordset& row, const QString& field)
{
    return row.eof() ? Decimal() : Decimal::read(row.field(field).text()).value_or(Decimal());
}

/// An amount of money, which is shown with two decimals, and what it is multiplied by.
QString workingOf(const Decimal& money, const QString& factor)
{
    return u"=("_s + money.fixed(MoneyPlaces) + u'*' + factor + u')';
}

} // namespace

void FineHandling::ComputeOverdueFine(const QString& readercode, const QString& barcode)
{
    Connection conn;
    if (OpenDbConnection(m_session, conn) != GoOn) return;
    const QString code = doubled(barcode);
    const Recordset loan = openOrEmpty(
        m_session, conn, u"Select barcode,price,lost,fine from jhskV Where barcode='%1'"_s.arg(code));
    const Recordset entry = openOrEmpty(m_session, conn,
        u"Select yfjine,createdate from diushik Where readercode='%1' And barcode='%2'"_s.arg(
            doubled(readercode), code));
    if (!entry.eof()) showRegisteredLoss(loan, entry);
    // A registered copy stops growing dearer on the day it was registered.
    const QString until
        = isoDate(entry.eof() ? GetServerDate(m_session) : entry.field(u"createdate").moment());
    const Recordset overdue = openOrEmpty(m_session, conn,
        u"Select datediff(dy,yhdate,'%1') as days From jhsk Where barcode='%2' And yhdate<'%1'"_s.arg(
            until, code));
    if (!overdue.eof()) showOverdue(loan, overdue.field(u"days").text());
}

void FineHandling::showRegisteredLoss(const Recordset& loan, const Recordset& entry)
{
    m_view.setTicked(FineKind::Lost, true);
    m_view.setTickable(FineKind::Lost, false);
    const QString amount = numberOf(entry, u"yfjine"_s).fixed(MoneyPlaces);
    m_view.setBox(FineBox::due(FineKind::Lost), amount);
    m_view.setBox(FineBox::taken(FineKind::Lost), amount);
    m_view.setWorking(
        FineKind::Lost, workingOf(numberOf(loan, u"price"_s), numberOf(loan, u"lost"_s).text()));
}

/// Calendar days: weekends and holidays count.
void FineHandling::showOverdue(const Recordset& loan, const QString& days)
{
    const Decimal rate = numberOf(loan, u"fine"_s);
    m_view.setTicked(FineKind::Overdue, true);
    m_view.setTickable(FineKind::Overdue, false);
    const Decimal amount = rate * Decimal::read(days).value_or(Decimal());
    m_view.setBox(FineBox::due(FineKind::Overdue), amount.fixed(MoneyPlaces));
    m_view.setBox(FineBox::taken(FineKind::Overdue), boxText(FineBox::due(FineKind::Overdue)));
    m_view.setWorking(FineKind::Overdue, workingOf(rate, days));
}

void FineHandling::ComputeDefileFine(const QString& barcode)
{
    showMultiple(FineKind::Defile, barcode, u"defile"_s);
}

void FineHandling::ComputeLostFine(const QString& barcode)
{
    showMultiple(FineKind::Lost, barcode, u"lost"_s);
}

/// A multiple of the book's price; `factor` is the reader's column that holds the multiplier.
void FineHandling::showMultiple(FineKind kind, const QString& barcode, const QString& factor)
{
    Connection conn;
    if (OpenDbConnection(m_session, conn) != GoOn) return;
    const Recordset loan = openOrEmpty(
        m_session, conn, u"Select price,%1 from jhskV Where barcode='%2'"_s.arg(factor, doubled(barcode)));
    const Decimal price = numberOf(loan, u"price"_s);
    const Decimal multiplier = numberOf(loan, factor);
    m_view.setBox(FineBox::due(kind), (price * multiplier).fixed(MoneyPlaces));
    m_view.setBox(FineBox::taken(kind), boxText(FineBox::due(kind)));
    m_view.setWorking(kind, workingOf(price, multiplier.text()));
}

} // namespace quilla
