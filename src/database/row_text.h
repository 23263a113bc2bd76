#pragma once

#include "platform/db/connection.h"

#include <QDate>

namespace quilla {

/// Writes one insert statement after the other into one buffer and sends them: of all rows of a table only
/// the values differ, so that the engine prepares a single statement.
class RowText {
public:
    /// `columns` as they stand between the brackets of the insert.
    RowText(Connection& connection, QStringView table, QStringView columns);

    RowText& text(QStringView value);
    RowText& number(qint64 value);
    /// An amount in hundredths.
    RowText& money(qint64 hundredths);
    RowText& bit(bool value);
    /// Null for no date.
    RowText& date(const QDate& value);
    RowText& null();
    /// Whatever a field holds.
    RowText& value(const Value& field);
    /// Sends the row and begins the next.
    void send();

private:
    void separate();

    Connection& m_connection;
    QString m_statement;
    qsizetype m_head;
};

} // namespace quilla
