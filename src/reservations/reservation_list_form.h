#pragma once

#include "platform/ui/grid/flex_grid.h"
#include "reservations/reader_pair.h"

namespace quilla {

/// The reservations of a reader, for looking only: none can be changed or cancelled here.
class frmTuShuYuyueList final : public QWidget {
    Q_OBJECT

public:
    explicit frmTuShuYuyueList(Session& session);

    QSize sizeHint() const override;

    ReaderPair Reader;
    QPushButton cmdYuYue[2];
    FlexGrid Grid1;

private:
    void showReservations();

    Session& m_session;
};

} // namespace quilla
