#pragma once

#include "platform/core/error.h"

#include <sql.h>
#include <sqlext.h>

#include <array>
#include <vector>

namespace quilla {

/// A handle of the ODBC interface: environment, connection or statement. Freed at the end.
class OdbcHandle {
public:
    /// `parent` is the handle that it belongs to; null for an environment. Throws `Error`.
    OdbcHandle(SQLSMALLINT type, SQLHANDLE parent);
    ~OdbcHandle();
    Q_DISABLE_COPY_MOVE(OdbcHandle)

    SQLHANDLE get() const { return m_handle; }

private:
    SQLSMALLINT m_type;
    SQLHANDLE m_handle = SQL_NULL_HANDLE;
};

/// What a driver said about the last call on a handle.
struct OdbcDiagnosis {
    QString state; ///< five characters; of the first record that is no mere warning
    int number = 0; ///< the engine's own number
    QString words; ///< the engine's own words, without the names of the layers they came through

    bool isState(QStringView begin) const { return state.startsWith(begin); }
};
OdbcDiagnosis diagnose(SQLSMALLINT type, SQLHANDLE handle);

/// The failure of a statement: a sentence for the operator, then the engine's own words.
Error odbcError(const OdbcDiagnosis& diagnosis);

/// Text as the interface takes and gives it.
inline const SQLWCHAR* wide(const QString& text)
{
    return reinterpret_cast<const SQLWCHAR*>(text.utf16());
}
inline QString textOf(const SQLWCHAR* text, qsizetype length)
{
    return QString(reinterpret_cast<const QChar*>(text), length);
}

/// An environment of version 3, which everything else belongs to.
class OdbcEnvironment {
public:
    OdbcEnvironment();
    SQLHANDLE get() const { return m_handle.get(); }

    /// Name and description of every data source, or of every installed driver, in the order in which the
    /// driver manager knows them.
    struct Entry {
        QString name;
        QString description;
    };
    std::vector<Entry> dataSources() const { return entries(SQLDataSources); }
    std::vector<Entry> drivers() const { return entries(SQLDrivers); }

private:
    using List = decltype(SQLDataSources);
    std::vector<Entry> entries(List* list) const;

    OdbcHandle m_handle {SQL_HANDLE_ENV, SQL_NULL_HANDLE};
};

} // namespace quilla
