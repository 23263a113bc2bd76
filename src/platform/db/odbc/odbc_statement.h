#pragma once

#include "platform/db/cursor.h"
#include "platform/db/odbc/odbc_connection.h"
#include "platform/db/statement_cache.h"

#include <string>

namespace quilla {

/// One prepared statement.
class OdbcStatement : public CachedStatement {
public:
    OdbcStatement(const OdbcConnection& connection, const QByteArray& text, StatementLife life);

    /// Throws `CannotConvert` for a literal that is not of its parameter's kind or that no server could keep.
    void bind(const sql::Translation& statement, const std::vector<sql::Literal>& literals);
    void run();
    int rowCount() const;
    void reset() noexcept { SQLFreeStmt(m_handle.get(), SQL_CLOSE); }

    /// The columns of the result; their kinds come from the translation, else from the driver. Must be called
    /// once for each execution, before `step`, since it also prepares for reading.
    const Fields& fields(const sql::Translation& statement);
    bool step();
    /// Of the current row; its text holds until the next call.
    Cell cell(int column);

private:
    /// Where the driver puts a field.
    struct Column {
        SQLSMALLINT as = SQL_C_WCHAR;
        bool isDigits = false; ///< a text that is a decimal
        bool bound = true; ///< filled when the row is fetched; else read when it is asked for
        SQLLEN length = 0; ///< in bytes, or SQL_NULL_DATA
        union {
            SQLBIGINT number = 0;
            double fraction;
            SQL_TIMESTAMP_STRUCT moment;
        };
        std::u16string text;
    };

    /// A parameter's value where it must outlive the call that binds it. Bound once, as long as the next
    /// value is of the same kind and fits.
    struct Slot {
        SQLSMALLINT type = SQL_UNKNOWN_TYPE; ///< as it is bound now
        SQLLEN bytes = 0;
        SQLBIGINT number = 0;
        std::u16string text;
    };

    void bindOne(SQLUSMALLINT place, const sql::Literal& literal, const sql::Parameter& parameter);
    void bindNumber(SQLUSMALLINT place, const sql::Literal& literal, const sql::Parameter& parameter);
    void bindWhole(SQLUSMALLINT place, qint64 number, SQLSMALLINT type);
    void bindText(SQLUSMALLINT place, QStringView text);
    void bindDigits(SQLUSMALLINT place, const QString& digits);
    void bindSlot(SQLUSMALLINT place, SQLSMALLINT as, SQLSMALLINT type, SQLULEN size, SQLSMALLINT scale);

    int skipToRows();
    Field describe(int column);
    void makeRoom(int column, SQLULEN size);
    QStringView text(int column);
    QStringView longText(int column);
    Cell textCell(QStringView text, sql::Kind kind);
    Cell digitsCell(QStringView digits, sql::Kind kind);

    const OdbcConnection& m_connection;
    OdbcHandle m_handle;
    std::vector<Slot> m_slots;
    std::vector<Column> m_columns;
    Fields m_fields;
    std::u16string m_long; ///< a text that was read piece by piece
    std::string m_utf8; ///< what the cell read last points to
    DecimalDigits m_digits;
};

using OdbcStatementLoan = StatementLoan<OdbcStatement>;

/// The rows of a select on a server.
class OdbcCursor final : public Cursor {
public:
    OdbcCursor(OdbcStatementLoan statement, Fields fields);

    Fields fields() const override { return m_fields; }
    bool step() override { return m_statement->step(); }
    Cell cell(int column) override { return m_statement->cell(column); }

private:
    OdbcStatementLoan m_statement;
    Fields m_fields;
};

} // namespace quilla
