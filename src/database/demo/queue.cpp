#include "database/demo/queue.h"

#include "platform/core/text.h"

namespace quilla::demo {

Queue::Queue(Library& library, Random& random)
    : m_library(library)
    , m_random(random)
{
    for (const Reader& reader : library.readers)
        m_readers.add(reader.weight);
}

void Queue::offer(const Loan& loan, const QDate& day, bool withDeadline)
{
    const bool onlyCopy = m_library.titleOf(loan).copies.size() == 1;
    if (!onlyCopy || loan.ordered >= day || !m_random.chance(400)) return;
    const int reader = reserver(loan.reader);
    if (reader < 0) return;
    const QDate until = withDeadline ? day.addDays(m_library.rulesOf(reader).holdDays) : QDate();
    m_library.reservations.push_back(
        {reader, m_library.copyOf(loan).title, loan.copy, dayBefore(day, loan.ordered), until});
    m_library.copyOf(loan).held = true;
}

/// One of the last days before `day`, not before `first`.
QDate Queue::dayBefore(const QDate& day, const QDate& first)
{
    constexpr int LongestWait = 60;
    return day.addDays(-1 - m_random.below(std::min(LongestWait, int(first.daysTo(day)))));
}

/// A reader with a valid card and a reservation left; -1 when the tries fail.
int Queue::reserver(int borrower)
{
    for (int tries = 0; tries < 20; ++tries) {
        const int at = int(m_readers.pick(m_random));
        Reader& reader = m_library.readers[std::size_t(at)];
        if (at == borrower || reader.status != u"有效"_s || reader.paperdate > m_library.today.addDays(-100))
            continue;
        if (reader.reservations >= m_library.rulesOf(at).holdCopies) continue;
        ++reader.reservations;
        return at;
    }
    return -1;
}

void Queue::reserveWhatIsOut()
{
    for (const Loan& loan : m_library.loans) {
        const int age = int(loan.ordered.daysTo(m_library.today));
        if (!loan.open || m_library.titleOf(loan).copies.size() != 1 || age < 2 || !m_random.chance(150))
            continue;
        const int first = reserver(loan.reader);
        if (first < 0) continue;
        const QDate placed = dayBefore(m_library.today, loan.ordered);
        m_library.reservations.push_back({first, m_library.copyOf(loan).title, -1, placed, {}});
        if (!m_random.chance(250)) continue;
        const int second = reserver(loan.reader);
        if (second < 0) continue;
        if (second == first)
            --m_library.readers[std::size_t(second)].reservations;
        else
            m_library.reservations.push_back(
                {second, m_library.copyOf(loan).title, -1, placed.addDays(1), {}});
    }
}

} // namespace quilla::demo
