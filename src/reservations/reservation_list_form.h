#pragma once

#include "platform/ui/grid/list_screen.h"
#include "reservations/reader_pair.h"

namespace quilla {

/// The reservations of a reader, for looking only: none can be changed or cancelled here.
class frmTuShuYuyueList final : public ListScreen {
    Q_OBJECT

public:
    explicit frmTuShuYuyueList(Session& session);

    ReaderPair Reader;
    QPushButton cmdYuYue[2];

private:
    void showReservations();

    Session& m_session;
};

} // namespace quilla
