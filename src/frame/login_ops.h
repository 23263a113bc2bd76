#pragma once

#include "frame/session.h"

namespace quilla {

enum class LoginOutcome {
    Stay, ///< the form stays open
    StayAtName, ///< the same, with the focus in the name box
    EndProcess,
    Entered, ///< `OperatorName` is set; the main window follows
};

/// The login of one form: counts its failed attempts, and the third ends the process.
class Login {
public:
    explicit Login(Session& session);

    /// Name and password as typed.
    LoginOutcome enter(const QString& name, const QString& password);

private:
    bool haveSettings();
    LoginOutcome refuse();
    LoginOutcome judge(const Recordset& user, const QString& name);

    Session& m_session;
    int m_failures = 0; ///< selects that came back empty
};

} // namespace quilla
