#pragma once

#include "frame/refusal.h"
#include "platform/core/progress.h"
#include "platform/db/connection.h"

namespace quilla {

/// A library that is there, as who opens it wants to recognise it.
struct FoundLibrary {
    QString name; ///< empty for one without a name
    qint64 titles = 0;
    qint64 copies = 0;
    qint64 readers = 0;
    bool earlier = false; ///< made by an earlier program; has to be upgraded before it can be opened

    /// One line that says all of it.
    QString text() const;
};

FoundLibrary lookAtLibrary(Connection& connection);

/// The same of a file, which is also checked for damage. Takes a second for each 100 MB. Throws `Error` that
/// says what is wrong and what to do.
FoundLibrary lookAtLibraryFile(const QString& file);

/// Brings the file of an earlier program to this one, and says where the checked copy of the old one lies; it
/// does nothing to any other. Throws `Error`, and leaves it as it was.
QString upgradeLibraryFile(const QString& file, Progress& progress);

/// The name itself when no file has it, else with a number.
QString freeFile(const QString& name);

/// What speaks against a path in a connection text, nullopt for nothing.
std::optional<Refusal> checkLibraryPath(const QString& path);

} // namespace quilla
