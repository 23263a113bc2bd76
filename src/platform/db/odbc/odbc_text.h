#pragma once

#include "platform/db/connection_text.h"

#include <QStringList>

namespace quilla {

/// What the machine's driver manager knows, as far as a connection text needs it.
struct OdbcInstallation {
    struct DataSource {
        QString name;
        QString driver;
        /// What it tells the driver, where the driver manager can't look it up: it does not find a name
        /// that is not of ASCII.
        std::vector<std::pair<QString, QString>> items {};
    };
    QStringList drivers;
    std::vector<DataSource> dataSources;

    /// Of this machine.
    static OdbcInstallation read();
};

/// The text for the driver manager that opens what the stored text means: the provider is left out, quotes
/// are undoubled, values are put in braces where they need them, the driver is one that is installed, and
/// what the driver needs to be told for the way in which we call it stands at the end, unless the stored
/// text tells it already. Throws `Error` when the data source is unknown or no such driver is installed.
///
/// Holds the password: never to be shown.
QString odbcText(const ConnectionItems& items, const OdbcInstallation& installed);

/// What the driver manager's configuration says about a data source under that key; empty when it says
/// nothing.
QString dataSourceItem(const QString& source, const QString& key);

} // namespace quilla
