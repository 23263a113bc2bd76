#pragma once

#include <QHash>
#include <QString>

#include <vector>

namespace quilla::test {

/// One case of a file: the statement, then lines "key: value"; an empty line ends it. "#" begins a remark.
///
/// Keys: `sqlite`, `postgres` the expected texts; `params`, `columns` kinds by their first letter; `rows`
/// what comes back from the library of rows.sql, or from the select `then` that is sent after the statement;
/// `refused` a part of the refusal; `fails` a part of the failure when it is run.
struct Case {
    QString file;
    int line = 0;
    QString statement;
    QHash<QString, QString> expected;

    QString place() const;
};

std::vector<Case> readCases(const QString& file);
QString readText(const QString& file);

} // namespace quilla::test
