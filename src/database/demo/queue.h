#pragma once

#include "database/demo/library.h"
#include "database/demo/random.h"

namespace quilla::demo {

/// Who waits for which title. Only titles of a single copy are reserved, so that none could have been lent
/// from the shelf instead.
class Queue {
public:
    Queue(Library& library, Random& random);

    /// The copy of this loan has come back on `day`; perhaps it is set aside. The desk sets a deadline, the
    /// fine screen none.
    void offer(const Loan& loan, const QDate& day, bool withDeadline);
    /// Places reservations of some titles that are out; one in four has a second reader in the queue.
    void reserveWhatIsOut();

private:
    int reserver(int borrower);
    QDate dayBefore(const QDate& day, const QDate& first);

    Library& m_library;
    Random& m_random;
    Weighted m_readers;
};

} // namespace quilla::demo
