#pragma once

#include <QString>

#include <optional>

namespace quilla {

/// The command line of a program with windows. It knows --help, --version, --dark and --gallery FOLDER.
struct WindowCommandLine {
    bool isDark = false;
    QString gallery {}; ///< the folder for pictures; empty when the windows are to come up
    /// Set when the program has nothing more to do: its exit code.
    std::optional<int> ended {};

    /// Reads it, and answers --help with `help`, --version with `version` and what it does not know with a
    /// hint on the standard error. It needs no screen, so that --help serves a terminal too.
    static WindowCommandLine read(int argc, char** argv, const QString& help, const QString& version);
};

} // namespace quilla
