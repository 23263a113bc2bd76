#pragma once

#include "exceptions/sorted_list.h"

namespace quilla {

/// Every open loan of the library that is past its due date: sorted, narrowed, printed as a list or as
/// dunning notices, put on a spreadsheet. It changes nothing.
class ChaoQifrm final : public SortedList {
    Q_OBJECT

public:
    explicit ChaoQifrm(const Workplace& place);

    /// On an empty list too: the report has no lines then.
    void PrintOverdueList();
    /// `groupField` is "readercode" or "readunit".
    void PrintDunningNotices(const QString& groupField);

private:
    void offerPrinting();
};

} // namespace quilla
