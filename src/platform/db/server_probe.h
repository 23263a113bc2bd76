#pragma once

#include "platform/db/connection_text.h"
#include "platform/sql/schema.h"

#include <QStringList>

#include <functional>
#include <span>

namespace quilla {

/// A kind of database server as it is offered to who joins one.
struct ServerKind {
    QString name;
    QString driver; ///< as a stored text names it
    int port; ///< the usual one
    /// The item of a connection text that has the way to the server encrypted; empty where the driver's own
    /// files say so.
    QString encrypted;
    QString portItem; ///< how a text names another port than the usual one, right behind the server
    /// Databases that every such server has. Who gets into one of them but not into his own has a valid
    /// login.
    QStringList commonDatabases;
};
std::span<const ServerKind> serverKinds();

/// What stands between a connection text and work on a library, in the order in which it is tried.
enum class ServerStep { Driver, Name, Port, Login, Database, Rights, Schema };

/// How a server was found.
struct ServerProbe {
    enum class State {
        Failed, ///< at `step`
        Empty, ///< no library is there, and the login may make one
        Earlier, ///< a library that an earlier program made
        Ready,
    };

    State state = State::Failed;
    ServerStep step = ServerStep::Driver; ///< the last one that was tried
    QString place {}; ///< what the failure is about: a host, "host:port", a user, a database
    bool needsEncryption = false; ///< the server refuses a way that is not encrypted
    bool lacksEncryption = false; ///< the server cannot encrypt the way, as the text asks for
    QString words {}; ///< what is wrong, at times in the server's own words; never the password
};

/// Tries one step after the other and changes nothing; calls `begun` before each. Ends at the first step that
/// fails, after half a minute at the latest. May run on a thread of its own.
ServerProbe probeServer(
    const ConnectionItems& items, const sql::Schema& schema, const std::function<void(ServerStep)>& begun);

} // namespace quilla
