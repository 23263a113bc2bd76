#pragma once

#include "platform/core/dates.h"
#include "platform/core/error.h"
#include "platform/core/prompt.h"
#include "platform/core/settings.h"
#include "platform/db/connection.h"

#include <QHash>

#include <memory>

namespace quilla {

class ScanLog;

/// Lets the operator enter the connection settings; modal, saves them itself.
class ConnectionEditor {
public:
    virtual ~ConnectionEditor() = default;
    virtual void editConnection() = 0;
};

/// What lives for the length of a run. Passed by reference to every operation; there is no other state
/// that all screens share.
struct Session {
    SettingsStore& settings;
    Prompt& prompt;
    const Clock& clock;
    ConnectionFactory& connections;
    ConnectionEditor& connectionEditor;

    QString ConnectionText {}; ///< the stored connection text; holds a password, never show it
    QString ServerName {}; ///< server part of the stored text
    QString DatabaseName {}; ///< database part of the stored text
    QString OperatorName {}; ///< user name as typed at login

    QHash<QString, Moment> NoticesShown {}; ///< when dunning notices were last shown, by what groups them

    /// What was scanned at this desk today; made when the desk first opens, and kept when it closes.
    std::shared_ptr<ScanLog> scans {};

    LastError error {}; ///< the error that resume mode leaves behind
};

} // namespace quilla
