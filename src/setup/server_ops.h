#pragma once

#include "frame/refusal.h"
#include "platform/db/server_probe.h"
#include "setup/library_file_ops.h"

#include <QStringList>

namespace quilla {

/// What is typed to join a server.
struct ServerInput {
    int kind = 0; ///< of `offeredServerKinds`
    QString dataSource {}; ///< of the kind that is an ODBC data source; the boxes about the host count
                           ///< nothing then
    QString host {};
    QString port {};
    QString database {};
    QString user {};
    QString password {};
    bool encrypted = false;

    bool isDataSource() const;
};

/// The boxes that a refusal of `checkServerInput` means.
enum ServerBox { SourceBox, HostBox, PortBox, DatabaseBox, UserBox, ServerPasswordBox };

/// The kinds of servers, and an ODBC data source as the last one.
QStringList offeredServerKinds();
/// The data sources of this machine.
QStringList serverDataSources();
/// The usual port of a kind; empty for a data source.
QString usualPort(int kind);
bool canEncrypt(int kind);

std::optional<Refusal> checkServerInput(const ServerInput& input);

/// The text to be stored for the input. Holds the password: never to be shown.
QString serverText(const ServerInput& input);

/// How the test of a server ended, with the message for the operator.
struct ServerTest {
    ServerProbe probe;
    FoundLibrary library {}; ///< when one is there
    QString text {}; ///< what was found, or what is wrong and what to do about it
};

/// Tries the way to the library step by step; calls `begun` before each step. May run on a thread of its own;
/// takes half a minute at the longest.
ServerTest testServer(const QString& text, const std::function<void(ServerStep)>& begun);

/// The steps as a list shows them, in their order.
QStringList serverStepNames();

/// Brings the library of an earlier program on a server to this one. Throws `Error`, and leaves it as it was.
void upgradeServerLibrary(const QString& text);

} // namespace quilla
