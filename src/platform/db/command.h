#pragma once

#include "platform/db/connection.h"

#include <QStringList>

namespace quilla {

/// The call of a stored procedure. Its parameters get their values in the order in which they are appended,
/// as command objects give them; the name is for the reader of the code alone.
class Command {
public:
    /// `procedure` with its owner. The connection must outlive the command.
    Command(Connection& connection, const QString& procedure);

    /// An input text; what is longer than `width` characters is cut.
    void append(QStringView name, const QString& value, int width);
    /// An input integer of four bytes.
    void append(QStringView name, int value);

    /// The rows that the procedure brings. Throws `Error` as `Connection::open` does.
    Recordset execute();

private:
    Connection& m_connection;
    QString m_call;
    QStringList m_arguments;
};

} // namespace quilla
