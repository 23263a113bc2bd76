#pragma once

#include "frame/session.h"
#include "platform/ui/form/text_box.h"

#include <QPushButton>

namespace quilla {

/// Changes the password of the signed-in operator.
class EditPassFrm final : public QWidget {
    Q_OBJECT

public:
    explicit EditPassFrm(Session& session);

    TextBox Text1[3]; ///< old, new, new again
    QPushButton CmdOk;
    QPushButton CmdCancel;

private:
    void change();

    Session& m_session;
};

} // namespace quilla
