#pragma once

#include <QString>

#include <optional>

namespace quilla {

/// The database that a command or the set-up works on.
struct Target {
    QString connectionText; ///< holds a password at times: never print it
    std::optional<QString> file; ///< of an embedded database
    QString group; ///< whose members may use the file when it is new; empty for the owner alone

    /// For messages: the path of the file, or a word for a server; never the connection text.
    QString name() const;
    bool exists() const;
};

/// The user's own embedded database.
Target ownTarget();
Target fileTarget(const QString& path);
Target connectionTarget(const QString& text);

} // namespace quilla
