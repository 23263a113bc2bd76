#pragma once

#include "database/target.h"
#include "frame/refusal.h"
#include "platform/core/progress.h"

#include <QStringList>

namespace quilla {

/// A library that is to be begun.
struct NewLibrary {
    Target place; ///< a file that is not there yet, or the empty database of a server
    QString name {};
    QString operatorName {};
    QString password {};
    bool starter = true; ///< reader types with rules, units, holidays
    bool guards = true; ///< indexes that refuse a second loan of a copy and codes that come twice
    QString booksFile {}; ///< to import; empty for none
    QString readersFile {};
    bool skipRefused = true; ///< imports what is right in a file and keeps the rest in another one
};

/// The boxes that a refusal of `checkNewLibrary` means.
enum NewLibraryBox { NameBox, PlaceBox, OperatorBox, PasswordBox, RepeatedBox };

/// What the operator has to change first; nullopt when the library can be begun.
std::optional<Refusal> checkNewLibrary(const NewLibrary& library, const QString& repeatedPassword);
std::optional<Refusal> checkImportFiles(const NewLibrary& library);

/// Makes the library with its operator, name, rules and guards; all of it or nothing. Throws `Error` that
/// says why it could not be made.
void beginLibrary(const NewLibrary& library);

/// How an import into a new library went, in a sentence that says what to do when something was left out.
struct ImportOutcome {
    QString text;
    bool whole = true; ///< nothing was refused
    bool stopped = false; ///< by the operator
};

/// Imports the file; what it refuses goes to a new file beside it. Whatever happens leaves the library as it
/// was or holds the whole import. Throws nothing.
ImportOutcome importFirstBooks(const NewLibrary& library, Progress& progress);
ImportOutcome importFirstReaders(const NewLibrary& library);

} // namespace quilla
