#pragma once

#include "exceptions/sorted_list.h"

namespace quilla {

class lostMangerAddfrm;

/// The register of books that readers have reported lost. An entry records the report alone: the loan goes on
/// until it is settled at the fine screen.
class lostMangerfrm final : public SortedList {
    Q_OBJECT

public:
    explicit lostMangerfrm(const Workplace& place);

    /// Those of the selected lines, after a question.
    void DeleteLostEntries();

private:
    void offerActions();
    void edit(const QString& mode);
    void addLine(const QStringList& line);
    void removeLine(int row);
};

} // namespace quilla
