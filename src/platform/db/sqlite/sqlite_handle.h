#pragma once

#include "platform/core/error.h"

#include <QString>

#include <sqlite3.h>

namespace quilla {

/// The error of a failed call: a sentence for the operator, then the engine's own words. `code` is the
/// extended result code, which becomes the error's number.
Error sqliteError(int code, const QString& engineWords, const QString& path);

/// An open SQLite file. Nothing about what is in it.
class SqliteHandle {
public:
    enum class Mode { Existing, ReadOnly, Create };

    /// Throws `Error` that names the path; a missing file is made only by `Create`.
    SqliteHandle(const QString& path, Mode mode);
    ~SqliteHandle();
    Q_DISABLE_COPY_MOVE(SqliteHandle)

    sqlite3* get() const { return m_database; }
    const QString& path() const { return m_path; }

    /// Throws the error that the last call on this handle left, unless `code` says that all is well.
    void check(int code) const
    {
        if (code != SQLITE_OK) fail(code);
    }
    [[noreturn]] void fail(int code) const;

    /// Runs one or more statements without rows.
    void run(const char* statements) const;
    /// The first field of the first row; null without a row.
    QString text(const char* statement) const;
    int number(const char* statement) const { return text(statement).toInt(); }

private:
    void open(int flags);

    sqlite3* m_database = nullptr;
    QString m_path;
};

} // namespace quilla
