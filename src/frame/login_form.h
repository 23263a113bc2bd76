#pragma once

#include "frame/login_ops.h"
#include "platform/ui/form/text_box.h"

#include <QDialog>
#include <QPushButton>
#include <QToolButton>

namespace quilla {

/// The operator's login, the first screen. Accepted when the operator may enter; anything else ends the
/// program.
class LtLoginFrm final : public QDialog {
    Q_OBJECT

public:
    explicit LtLoginFrm(Session& session);

    TextBox txtInName;
    TextBox txtInPassword;
    QPushButton cmdLogin;
    QPushButton cmdExit;
    QToolButton Image3; ///< leads to the connection dialog

private:
    void layOut();
    void enter();

    Session& m_session;
    Login m_login;
};

} // namespace quilla
