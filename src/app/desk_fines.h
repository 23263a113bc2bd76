#pragma once

#include "desk/fine_dialog.h"
#include "frame/session.h"

namespace quilla {

/// Brings the desk's overdue copies to the fine screen.
class DeskFines final : public FineDialog {
public:
    explicit DeskFines(Session& session)
        : m_session(session)
    {
    }
    bool settle(const QString& barcode) override;

private:
    Session& m_session;
};

} // namespace quilla
