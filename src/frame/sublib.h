#pragma once

#include "frame/session.h"

namespace quilla {

/// Where the stored connection text lies; other programs of the suite read the same place.
namespace StoredText {
inline constexpr QStringView Application = u"青简文库";
inline constexpr QStringView Section = u"Setting";
inline constexpr QStringView Key = u"QuillaPass";
/// What a read gives when nothing is stored; the spelling is part of what the programs share.
inline constexpr QStringView Missing = u"NotExsists";
} // namespace StoredText

/// The title of the questions about the connection.
inline constexpr QStringView ConnectionTitle = u"管理系统操作提示";

/// The result of `OpenDbConnection` that means: go on.
inline constexpr int GoOn = 1000;

/// Reads the settings key into `ConnectionText`. False when nothing is stored.
bool readConnectionText(Session& session);

/// Writes `text` to the settings key and into `ConnectionText`. Throws `Error` when it can't be stored.
void storeConnectionText(Session& session, const QString& text);

/// Asks whether to enter settings when none are stored, and shows the connection dialog after a Yes.
/// True for Yes.
bool offerConnectionSettings(Session& session);

/// Opens the stored connection into `conn`, with the settings read anew. `GoOn` means use `conn`; any
/// other value means do not: -1 after the operator went to the settings, 0 when there are none and the
/// operator declined. After a failed opening and the answer No the result is still `GoOn` with a `conn`
/// that did not open, and its statements fail one by one. Clears the session's error.
int OpenDbConnection(Session& session, Connection& conn);

/// Opens a connection for hierarchical results: the stored text under the shaping provider, the stored text
/// itself unchanged. The error number, 0 when `conn` is open; nothing is shown, and the error is reset.
int OpenShapeConnection(Session& session, Connection& conn);

/// The server's date and time of day, asked anew at each call. After a failure, which is reported, those of
/// the client's own clock. Clears the session's error.
Moment GetServerDate(Session& session);

/// Drops the connection. The error number seen, which is reset; normally 0.
int CloseDbConnection(Session& session, Connection& conn);

/// `text` without blanks around it and with every single quote doubled.
QString SqlText(QStringView text);

/// A select in resume mode: one that fails leaves its error behind and counts as one without rows.
Recordset openOrEmpty(
    Session& session, Connection& conn, const QString& tsql, CursorType cursor = CursorType::Keyset);

} // namespace quilla
