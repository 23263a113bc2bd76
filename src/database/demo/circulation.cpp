#include "database/demo/circulation.h"

#include "database/demo/calendar.h"
#include "database/demo/queue.h"
#include "database/demo_library.h"
#include "platform/core/text.h"

#include <array>
#include <map>

namespace quilla::demo {

namespace {

constexpr int Years = 3;
constexpr int ReadersALoan = 12; ///< so many readers for each loan of a day
constexpr int DaysOfHolds = 8; ///< copies that came back in these last days may be set aside
constexpr int DaysOfLostReports = 400; ///< a settled report stays in the register so long
constexpr std::array<QStringView, 4> Operators = {u"admin", DemoOperator, u"王芳", u"刘敏"};

QString amountReason(const QDate& date, Random& random)
{
    return random.chance(500) ? u"特殊情况减免"_s : u"经馆长同意减免 "_s + QString::number(date.year());
}

/// The desk of the demo library, one day after the other.
class Desk {
public:
    Desk(Library& library, Random& random);
    void run();

private:
    void takeBack(const QDate& day);
    void close(std::size_t loan, const QDate& day);
    void settleLost(Loan& loan, const QDate& day);
    void settleLate(Loan& loan, const QDate& day);
    void settleInTime(Loan& loan, const QDate& day);
    void finish(Loan& loan, const QDate& day);

    void lend(const QDate& day);
    void lendOne(const QDate& day);
    bool mayBorrow(const Reader& reader, const QDate& day) const;
    int freeCopy(const QDate& day);
    void charge(int reader, int copy, const QDate& day, int renewals);
    void planReturn(Loan& loan);

    void withdraw(const QDate& day);
    void registerLosses();
    void fine(const Loan& loan, qint64 amount, const QString& cause, const QDate& day);

    QString someOperator() { return m_random.pick(Operators).toString(); }

    Library& m_library;
    Random& m_random;
    Weighted m_readers;
    Weighted m_titles;
    Queue m_queue;
    std::map<QDate, std::vector<std::size_t>> m_returns; ///< loans by the day on which they come back
};

Desk::Desk(Library& library, Random& random)
    : m_library(library)
    , m_random(random)
    , m_queue(library, random)
{
    for (const Reader& reader : library.readers)
        m_readers.add(reader.weight);
    for (const Title& title : library.titles)
        m_titles.add(title.popularity);
}

void Desk::run()
{
    for (QDate day = m_library.today.addYears(-Years); day <= m_library.today; day = day.addDays(1)) {
        if (!isOpen(m_library.holidays, day)) continue;
        takeBack(day);
        if (m_random.chance(60)) withdraw(day);
        lend(day);
    }
    m_queue.reserveWhatIsOut();
    registerLosses();
}

void Desk::takeBack(const QDate& day)
{
    while (!m_returns.empty() && m_returns.begin()->first <= day) {
        const std::vector<std::size_t> loans = std::move(m_returns.begin()->second);
        m_returns.erase(m_returns.begin());
        for (const std::size_t loan : loans)
            close(loan, day);
    }
}

/// On its due date a book counts as overdue without owing anything, so that it is brought the day after.
void Desk::close(std::size_t at, const QDate& day)
{
    Loan loan = m_library.loans[at];
    if (loan.due == day && !loan.reportedLost.isValid()) {
        m_returns[day.addDays(1)].push_back(at);
        return;
    }
    loan.open = false;
    m_library.loans[at] = loan;
    if (loan.reportedLost.isValid())
        settleLost(loan, day);
    else if (loan.due < day)
        settleLate(loan, day);
    else
        settleInTime(loan, day);
}

void Desk::finish(Loan& loan, const QDate& day)
{
    m_library.history.push_back({loan.reader, loan.copy, loan.ordered, loan.due, day, someOperator()});
    m_library.copyOf(loan).state = CopyState::In;
    std::vector<int>& open = m_library.readers[std::size_t(loan.reader)].openLoans;
    std::erase_if(open, [&](int other) { return m_library.loans[std::size_t(other)].copy == loan.copy; });
}

void Desk::settleLost(Loan& loan, const QDate& day)
{
    const RuleNumbers& rules = m_library.rulesOf(loan.reader);
    const qint64 amount = m_library.titleOf(loan).price * rules.lostFine / 100;
    if (loan.due < loan.reportedLost)
        fine(loan, loan.due.daysTo(loan.reportedLost) * rules.overdueFine, u"超期"_s, day);
    fine(loan, amount, u"丢失"_s, day);
    finish(loan, day);
    m_library.copyOf(loan).state = CopyState::Lost;
    m_library.withdrawals.push_back({loan.copy, u"丢失"_s, {}, day, someOperator()});
    if (day > m_library.today.addDays(-DaysOfLostReports))
        m_library.lostReports.push_back({loan.reader, loan.copy, amount, loan.reportedLost});
}

void Desk::settleLate(Loan& loan, const QDate& day)
{
    fine(loan, loan.due.daysTo(day) * m_library.rulesOf(loan.reader).overdueFine, u"超期"_s, day);
    finish(loan, day);
    if (day >= m_library.today.addDays(-DaysOfHolds * 3)) m_queue.offer(loan, day, false);
}

void Desk::settleInTime(Loan& loan, const QDate& day)
{
    const RuleNumbers& rules = m_library.rulesOf(loan.reader);
    if (m_random.chance(6))
        fine(loan, m_library.titleOf(loan).price * rules.defileFine / 100, u"污损"_s, day);
    finish(loan, day);
    const Reader& reader = m_library.readers[std::size_t(loan.reader)];
    const bool renews = loan.renewals < rules.renewals && rules.renewalDays > 0 && m_random.chance(70);
    if (renews && mayBorrow(reader, day))
        charge(loan.reader, loan.copy, day, loan.renewals + 1);
    else if (day >= m_library.today.addDays(-DaysOfHolds))
        m_queue.offer(loan, day, true);
}

/// Weekends and vacations are quiet.
void Desk::lend(const QDate& day)
{
    const bool weekend = day.dayOfWeek() >= 6;
    const bool vacation = day.month() == 2 || day.month() == 7 || day.month() == 8;
    int loans = int(m_library.readers.size()) / ReadersALoan;
    if (weekend) loans = loans * 6 / 10;
    if (vacation) loans = loans * 4 / 10;
    loans = m_random.between(loans * 7 / 10, loans * 13 / 10);
    for (int loan = 0; loan < loans; ++loan)
        lendOne(day);
}

void Desk::lendOne(const QDate& day)
{
    const int reader = int(m_readers.pick(m_random));
    if (!mayBorrow(m_library.readers[std::size_t(reader)], day)) return;
    const int copy = freeCopy(day);
    if (copy >= 0) charge(reader, copy, day, 0);
}

bool Desk::mayBorrow(const Reader& reader, const QDate& day) const
{
    const RuleNumbers& rules = m_library.rulesOf(reader);
    if (day < reader.paperdate || day > reader.lastLoan) return false;
    if (qint64(reader.openLoans.size()) >= rules.loanCopies) return false;
    return rules.mayHoldOverdue
        || std::none_of(reader.openLoans.begin(), reader.openLoans.end(),
            [&](int loan) { return m_library.loans[std::size_t(loan)].due <= day; });
}

int Desk::freeCopy(const QDate& day)
{
    for (int tries = 0; tries < 5; ++tries) {
        const Title& title = m_library.titles[m_titles.pick(m_random)];
        if (title.catalogued >= day) continue;
        for (const int copy : title.copies) {
            const Copy& candidate = m_library.copies[std::size_t(copy)];
            if (candidate.state == CopyState::In && !candidate.held) return copy;
        }
    }
    return -1;
}

void Desk::charge(int reader, int copy, const QDate& day, int renewals)
{
    constexpr int RenewalDays = 30;
    const int days = renewals ? RenewalDays : int(m_library.rulesOf(reader).loanDays);
    Loan loan {reader, copy, day, dueDate(m_library.holidays, day, days), {}, {}, renewals, someOperator()};
    planReturn(loan);
    m_library.copies[std::size_t(copy)].state = CopyState::Out;
    m_library.readers[std::size_t(reader)].openLoans.push_back(int(m_library.loans.size()));
    m_returns[loan.comesBack].push_back(m_library.loans.size());
    m_library.loans.push_back(std::move(loan));
}

/// Most come back in time, some late, few very late, a handful never.
void Desk::planReturn(Loan& loan)
{
    const int days = int(loan.ordered.daysTo(loan.due));
    const int lot = m_random.below(1000);
    if (lot < 4) {
        loan.reportedLost = loan.ordered.addDays(m_random.between(3, days + 20));
        loan.comesBack = loan.reportedLost.addDays(m_random.between(2, 25));
    } else if (lot < 20) {
        loan.comesBack = loan.due.addDays(m_random.between(25, 150));
    } else if (lot < 80) {
        loan.comesBack = loan.due.addDays(m_random.between(1, 20));
    } else {
        loan.comesBack = loan.ordered.addDays(m_random.between(2, days - 1));
    }
}

void Desk::withdraw(const QDate& day)
{
    const int copy = freeCopy(day);
    if (copy < 0) return;
    m_library.copies[std::size_t(copy)].state = CopyState::Withdrawn;
    const bool missing = m_random.chance(250);
    m_library.withdrawals.push_back({copy, missing ? u"下落不明"_s : u"注销"_s,
        missing ? u"清点时未见"_s : u"破损严重，无法修补"_s, day, someOperator()});
}

/// Reported, but not settled yet.
void Desk::registerLosses()
{
    for (const Loan& loan : m_library.loans)
        if (loan.open && loan.reportedLost.isValid() && loan.reportedLost <= m_library.today)
            m_library.lostReports.push_back({loan.reader, loan.copy,
                m_library.titleOf(loan).price * m_library.rulesOf(loan.reader).lostFine / 100,
                loan.reportedLost});
}

void Desk::fine(const Loan& loan, qint64 amount, const QString& cause, const QDate& day)
{
    const bool lowered = amount > 100 && m_random.chance(60);
    m_library.fines.push_back({loan.reader, loan.copy, amount, lowered ? amount / 200 * 100 : amount, cause,
        day, someOperator(), lowered ? amountReason(day, m_random) : QString()});
}

} // namespace

void circulate(Library& library, Random& random)
{
    Desk(library, random).run();
}

} // namespace quilla::demo
