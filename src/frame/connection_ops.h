#pragma once

#include "frame/refusal.h"
#include "frame/session.h"

namespace quilla {

/// What the connection dialog holds.
struct ConnectionInput {
    QString dataSource; ///< empty for "(None)"
    QString user;
    QString password;
    QString driver;
    QString server;
    QString database;
};

/// The entry that stands for no data source.
inline constexpr QStringView NoDataSource = u"(None)";

/// The drivers offered beside the data sources.
QStringList offeredDrivers();

/// "(None)", the built-in data source, and every data source of the machine whose name is not blank.
QStringList offeredDataSources();

/// What is missing, nullopt when the input is complete. The built-in data source needs no user.
std::optional<Refusal> checkConnectionInput(const ConnectionInput& input);

/// The stored form of the input. Values have their quotes doubled, as every program of the suite does.
QString buildConnectionText(const ConnectionInput& input);

/// What the dialog holds for a stored text; all empty when there is none.
ConnectionInput connectionInputOf(const QString& connectionText);

/// Stores the input and makes it the session's. False when it could not be stored, which is reported.
bool saveConnection(Session& session, const ConnectionInput& input);

/// Opens a connection with the input. Returns the message that reports how it went.
Message connectionTest(Session& session, const ConnectionInput& input);

} // namespace quilla
