#pragma once

#include "readers/record_list.h"

namespace quilla {

struct ClosingPeriod;
class holidayaddFrm;

/// The holiday calendar: the closing periods that the desk counts into a due date.
class holidayfrm final : public RecordList {
    Q_OBJECT

public:
    explicit holidayfrm(Session& session);

    void loadData();

    QPushButton Command1[4];

private:
    void addRecord() override;
    void editRecord() override;
    /// A new line goes to the end: the order of the days comes back with the next opening.
    void take(const ClosingPeriod& holiday, bool added);
};

} // namespace quilla
