#pragma once

#include "platform/db/connection_text.h"

#include <QStringList>

namespace quilla {

/// What the machine's driver manager knows, as far as a connection text needs it.
struct OdbcInstallation {
    struct DataSource {
        QString name;
        QString driver;
        /// Its settings for the driver, where the driver manager can't look them up: it does not find a name
        /// that has other characters than ASCII.
        std::vector<std::pair<QString, QString>> items {};
    };
    QStringList drivers;
    std::vector<DataSource> dataSources;

    /// Of this machine.
    static OdbcInstallation read();
};

/// The text for the driver manager that opens what the stored text means: the provider is left out, quotes
/// are undoubled, values are put in braces where they need them, the driver is one that is installed, and the
/// settings on which our calls of the driver rely stand at the end, unless the stored text has them already.
/// Throws `Error` when the data source is unknown or no such driver is installed.
///
/// Holds the password: never to be shown.
QString odbcText(const ConnectionItems& items, const OdbcInstallation& installed);

/// What the driver manager's configuration says about a data source under that key; empty when it says
/// nothing.
QString dataSourceItem(const QString& source, const QString& key);

/// A setting for the driver: the value of the first of these keys in the text, its quotes undoubled, else in
/// the text's data source. Empty when neither has one.
QString settingOf(const ConnectionItems& items, std::initializer_list<QStringView> keys);

} // namespace quilla
