#include "statistics/workload_ops.h"

#include "platform/db/decimal.h"
#include "platform/grid/grid_model.h"

namespace quilla {

namespace {

enum Column { PeriodColumn, LentColumn, ReturnedColumn };

/// The rates are those of a year. A year's own workload is multiplied too: the rates of both screens have
/// always been read this way, and libraries compare them with those of earlier years.
constexpr int MonthsOfYear = 12;

/// Sends the selects that count, one after the other.
class HeadCount {
public:
    HeadCount(StrictWork& work, const Period& period, const std::function<void()>& beforeEach)
        : m_work(work)
        , m_period(period)
        , m_beforeEach(beforeEach)
    {
    }

    qint64 count(const QString& select) const
    {
        m_beforeEach();
        return m_work.open(select).field(u"counts").integer().value_or(0);
    }

    qint64 openBorrowers() const
    {
        return count(u"select count(*) as counts from   (%1) as TempTable"_s.arg(openBorrowersSelect()));
    }

    qint64 returners() const
    {
        return count(
            u"select count(*) as counts from   (select distinct readercode from jhslsk where %1) as TempTable"_s
                .arg(m_period.holds(u"backdate")));
    }

    /// Readers of finished loans who have none open from this period.
    qint64 others(const QString& date, const QString& blank = {}) const
    {
        return count(
            u"select count(*) as counts from   (%1select distinct readercode from jhslsk where %2 and readercode not in (%3)) as TempTable"_s
                .arg(blank, m_period.holds(date), openBorrowersSelect()));
    }

private:
    QString openBorrowersSelect() const
    {
        return u"select distinct readercode from jhsk where %1"_s.arg(m_period.holds(u"orderdate"));
    }

    StrictWork& m_work;
    const Period& m_period;
    const std::function<void()>& m_beforeEach;
};

/// Withdrawn copies are subtracted twice, by their state and by their row in the ledger. The rate of use has
/// always been read on this number.
qint64 holdingsOf(const HeadCount& heads)
{
    const qint64 copies = heads.count(
        u"select count(sckid) as counts from sck where bookstatus<>'丢失' and  bookstatus<>'注销'"_s);
    return copies - heads.count(u"select count(*) as counts from bookout"_s);
}

qint64 validReadersOf(const HeadCount& heads)
{
    return heads.count(
        u"select count(*) as counts  from (select distinct readercode from dzk  where readstatus='有效') as TempTable"_s);
}

/// A comma after each thousand of a number's whole part.
QString grouped(QString number)
{
    const int sign = number.startsWith(u'-') ? 1 : 0;
    const qsizetype point = number.indexOf(u'.');
    for (qsizetype at = (point < 0 ? number.size() : point) - 3; at > sign; at -= 3)
        number.insert(at, u',');
    return number;
}

} // namespace

QString percentage(qint64 part, qint64 whole)
{
    if (part <= 0 || whole <= 0) return u"0.00%"_s;
    const qint64 hundredths = (2 * part * 10000 + whole) / (2 * whole);
    return grouped(u"%1.%2"_s.arg(hundredths / 100).arg(hundredths % 100, 2, 10, QChar(u'0'))) + u'%';
}

QString groupedMoney(const QString& amount)
{
    const std::optional<Decimal> number = Decimal::read(amount);
    return number ? grouped(number->fixed(2)) : amount;
}

int sumLine(const GridModel& cells)
{
    return cells.findRow(u"合计"_s, PeriodColumn);
}

/// A reader who has a loan open and another one finished counts once; one who only returned in the period
/// counts among all readers, but not among those who borrowed.
WorkloadFigures countWorkload(
    StrictWork& work, const Period& period, const GridModel& cells, const std::function<void()>& beforeEach)
{
    const HeadCount heads(work, period, beforeEach);
    const qint64 allReaders = heads.openBorrowers() + heads.others(u"backdate"_s, u" "_s);
    const qint64 borrowers = heads.openBorrowers() + heads.others(u"orderdate"_s);
    const qint64 returners = heads.returners();
    const int sums = sumLine(cells);
    const qint64 totalLent = cells.TextMatrix(sums, LentColumn).toLongLong();
    const qint64 totalReturned = cells.TextMatrix(sums, ReturnedColumn).toLongLong();
    const qint64 holdings = holdingsOf(heads);
    const qint64 validReaders = validReadersOf(heads);
    return {QString::number(allReaders), percentage(totalLent, borrowers),
        percentage(totalReturned, returners), percentage(totalLent * MonthsOfYear, holdings),
        percentage(allReaders * MonthsOfYear, validReaders)};
}

} // namespace quilla
