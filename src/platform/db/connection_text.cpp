#include "platform/db/connection_text.h"

#include "platform/core/text.h"

#include <QStandardPaths>

#include <sql.h>
#include <sqlext.h>

namespace quilla {

const QString BuiltInDataSource = u"青简内置数据库"_s;

ConnectionItems::ConnectionItems(const QString& text)
{
    const auto pieces = QStringView(text).split(u';');
    for (const QStringView piece : pieces) {
        const qsizetype sign = piece.indexOf(u'=');
        if (sign < 0) continue;
        items.emplace_back(
            piece.first(sign).trimmed().toString(), piece.sliced(sign + 1).trimmed().toString());
    }
}

std::optional<QString> ConnectionItems::value(QStringView key) const
{
    for (const auto& [name, value] : items)
        if (key.compare(name, Qt::CaseInsensitive) == 0) return value;
    return {};
}

QString embeddedDatabaseFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/青简文库/quilla.db"_s;
}

namespace {

/// The driver manager's own environment, for asking it about data sources.
class Environment {
public:
    Environment()
    {
        if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_handle))) {
            m_handle = SQL_NULL_HENV;
            return;
        }
        SQLSetEnvAttr(m_handle, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    }
    ~Environment()
    {
        if (m_handle != SQL_NULL_HENV) SQLFreeHandle(SQL_HANDLE_ENV, m_handle);
    }
    Q_DISABLE_COPY_MOVE(Environment)

    std::optional<QString> nextDataSource(bool first)
    {
        SQLCHAR name[1024] = {};
        SQLCHAR description[1024] = {};
        SQLSMALLINT nameLength = 0;
        SQLSMALLINT descriptionLength = 0;
        const SQLRETURN result = m_handle == SQL_NULL_HENV
            ? SQLRETURN(SQL_NO_DATA)
            : SQLDataSources(m_handle, first ? SQL_FETCH_FIRST : SQL_FETCH_NEXT, name, sizeof name,
                &nameLength, description, sizeof description, &descriptionLength);
        if (!SQL_SUCCEEDED(result)) return {};
        return QString::fromUtf8(reinterpret_cast<const char*>(name));
    }

private:
    SQLHENV m_handle = SQL_NULL_HENV;
};

} // namespace

std::vector<QString> odbcDataSources()
{
    std::vector<QString> names;
    Environment environment;
    for (auto name = environment.nextDataSource(true); name; name = environment.nextDataSource(false))
        names.push_back(std::move(*name));
    return names;
}

} // namespace quilla
