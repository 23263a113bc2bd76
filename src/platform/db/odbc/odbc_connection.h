#pragma once

#include "platform/db/connection_text.h"
#include "platform/db/odbc/odbc_handle.h"
#include "platform/db/odbc/server_dialect.h"

#include <QElapsedTimer>

#include <optional>

namespace quilla {

/// A connection to a server. Turns a failed call into an `Error`, and notices when the server has gone.
class OdbcConnection {
public:
    /// How long a server that does not answer is waited for.
    static constexpr int LoginSeconds = 8;

    /// Connects. Throws `Error` with the server's words; never with the password.
    explicit OdbcConnection(const ConnectionItems& items);
    ~OdbcConnection();
    Q_DISABLE_COPY_MOVE(OdbcConnection)

    SQLHANDLE get() const { return m_connection.get(); }
    const ServerDialect& dialect() const { return *m_dialect; }
    /// Whether the driver reads one result at a time; a second statement must wait for its end.
    bool holdsOneResult() const { return m_holdsOneResult; }
    /// Whether a bound column can be read a second time when it did not fit.
    bool readsBoundColumns() const { return m_readsBoundColumns; }

    /// Sends a text as it stands. The number of rows that it changed. Throws `Error`.
    int run(QStringView text) const;
    /// The same; the first field of its first row.
    qint64 number(QStringView select) const;

    /// Throws what the driver says about a statement that failed, and notes when the server has gone.
    [[noreturn]] void fail(SQLHANDLE statement) const;
    void check(SQLRETURN result, SQLHANDLE statement) const
    {
        if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) fail(statement);
    }
    /// The server has just answered.
    void noteAnswer() const { m_heard.restart(); }

    /// Seen to be gone by a call that failed.
    bool isLost() const { return m_lost; }
    /// Milliseconds since the server answered last.
    qint64 silence() const { return m_heard.elapsed(); }

private:
    void connect(const QString& text);
    void meet();
    bool isDead() const;
    bool answers() const;

    OdbcEnvironment m_environment;
    OdbcHandle m_connection {SQL_HANDLE_DBC, m_environment.get()};
    std::optional<OdbcHandle> m_direct; ///< for texts that are not prepared, one at a time
    const ServerDialect* m_dialect = nullptr;
    bool m_holdsOneResult = false;
    bool m_readsBoundColumns = false;
    bool m_connected = false;
    mutable bool m_lost = false;
    mutable QElapsedTimer m_heard;
};

} // namespace quilla
