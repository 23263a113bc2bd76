#include "exceptions/fine_amount_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"
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

/// What the rules ask, and the same as the amount to be taken.
void showAmount(FineView& view, FineKind kind, const Decimal& amount)
{
    view.setBox(FineBox::due(kind), amount.fixed(MoneyPlaces));
    view.setBox(FineBox::taken(kind), view.box(FineBox::due(kind)));
}

void showRegisteredLoss(FineView& view, const Recordset& loan, const Recordset& entry)
{
    view.setTicked(FineKind::Lost, true);
    view.setTickable(FineKind::Lost, false);
    showAmount(view, FineKind::Lost, numberOf(entry, u"yfjine"_s));
    view.setWorking(FineKind::Lost, workingOf(numberOf(loan, u"price"_s), numberOf(loan, u"lost"_s).text()));
}

/// Calendar days: weekends and holidays count.
void showOverdue(FineView& view, const Recordset& loan, const QString& days)
{
    const Decimal rate = numberOf(loan, u"fine"_s);
    view.setTicked(FineKind::Overdue, true);
    view.setTickable(FineKind::Overdue, false);
    showAmount(view, FineKind::Overdue, rate * Decimal::read(days).value_or(Decimal()));
    view.setWorking(FineKind::Overdue, workingOf(rate, days));
}

/// A multiple of the book's price; `factor` is the reader's column that holds the multiplier.
void showMultiple(
    Session& session, FineView& view, FineKind kind, const QString& barcode, const QString& factor)
{
    ResumingWork work(session);
    if (!work) return;
    const Recordset loan
        = work.select(u"Select price,%1 from jhskV Where barcode='%2'"_s.arg(factor, doubled(barcode)));
    const Decimal price = numberOf(loan, u"price"_s);
    const Decimal multiplier = numberOf(loan, factor);
    showAmount(view, kind, price * multiplier);
    view.setWorking(kind, workingOf(price, multiplier.text()));
}

} // namespace

bool ComputeOverdueFine(Session& session, FineView& view, const QString& readercode, const QString& barcode)
{
    ResumingWork work(session);
    if (!work) return true;
    const QString code = doubled(barcode);
    const Recordset loan
        = work.select(u"Select barcode,price,lost,fine from jhskV Where barcode='%1'"_s.arg(code));
    const Recordset entry
        = work.select(u"Select yfjine,createdate from diushik Where readercode='%1' And barcode='%2'"_s.arg(
            doubled(readercode), code));
    if (!entry.eof()) showRegisteredLoss(view, loan, entry);
    // A registered copy stops growing dearer on the day it was registered.
    const QString until
        = isoDate(entry.eof() ? std::optional(GetServerDate(session)) : entry.field(u"createdate").moment());
    const Recordset overdue = work.select(
        u"Select datediff(dy,yhdate,'%1') as days From jhsk Where barcode='%2' And yhdate<'%1'"_s.arg(
            until, code));
    if (!overdue.eof()) showOverdue(view, loan, overdue.field(u"days").text());
    return !work.failed();
}

void ComputeDefileFine(Session& session, FineView& view, const QString& barcode)
{
    showMultiple(session, view, FineKind::Defile, barcode, u"defile"_s);
}

void ComputeLostFine(Session& session, FineView& view, const QString& barcode)
{
    showMultiple(session, view, FineKind::Lost, barcode, u"lost"_s);
}

} // namespace quilla
