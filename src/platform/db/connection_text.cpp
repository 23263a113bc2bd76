#include "platform/db/connection_text.h"

#include "platform/core/text.h"
#include "platform/db/odbc/odbc_handle.h"

#include <QStandardPaths>

namespace quilla {

const QString BuiltInDataSource = u"青简内置数据库"_s;

ConnectionItems::ConnectionItems(const QString& text)
{
    const auto pieces = QStringView(text).split(u';');
    for (const QStringView piece : pieces) {
        const qsizetype sign = piece.indexOf(u'=');
        if (sign < 0) continue;
        items.emplace_back(
            trimBlanks(piece.first(sign)).toString(), trimBlanks(piece.sliced(sign + 1)).toString());
    }
}

std::optional<QString> ConnectionItems::value(QStringView key) const
{
    for (const auto& [name, value] : items)
        if (key.compare(name, Qt::CaseInsensitive) == 0) return value;
    return {};
}

QString ConnectionItems::firstOf(std::initializer_list<QStringView> keys) const
{
    for (const QStringView key : keys)
        if (const QString found = value(key).value_or(QString()); !found.isEmpty()) return found;
    return {};
}

QString embeddedDatabaseFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/青简文库/quilla.db"_s;
}

std::vector<QString> odbcDataSources()
{
    std::vector<QString> names;
    for (const auto& source : OdbcEnvironment().dataSources())
        names.push_back(source.name);
    return names;
}

} // namespace quilla
