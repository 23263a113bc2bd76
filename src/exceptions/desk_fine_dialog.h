#pragma once

#include "desk/fine_dialog.h"
#include "frame/session.h"

#include <QObject>

namespace quilla {

/// The fine screen as the desk's discharge uses it: opened for one copy, closed with an answer.
class DeskFineDialog final : public QObject, public FineDialog {
    Q_OBJECT

public:
    explicit DeskFineDialog(Session& session)
        : m_session(session)
    {
    }

    bool settle(const QString& barcode) override;

private:
    Session& m_session;
};

} // namespace quilla
