#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace quilla {

/// The items of a stored connection text, in order: "KEY=value" pieces between ";".
struct ConnectionItems {
    explicit ConnectionItems(const QString& text);
    /// Key without case; nullopt when it is not there.
    std::optional<QString> value(QStringView key) const;
    /// The value of the first of these keys that has one; empty when none has.
    QString firstOf(std::initializer_list<QStringView> keys) const;

    std::vector<std::pair<QString, QString>> items;
};

/// The name under which the built-in, embedded database stands in the list of data sources.
extern const QString BuiltInDataSource;

/// Where the embedded database lies: the user's data folder, "青简文库/quilla.db" in it.
QString embeddedDatabaseFile();

/// The names of the data sources that the ODBC driver manager of this machine knows, in its order.
std::vector<QString> odbcDataSources();

} // namespace quilla
