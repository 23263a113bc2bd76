#pragma once

#include "platform/core/settings.h"
#include "setup/new_library_ops.h"
#include "setup/server_ops.h"

namespace quilla {

/// The ways to a library that the desk can open, and to the backups of the one that it opens now.
enum class SetupWay { Demo, NewLibrary, OpenFile, JoinServer, Backups };

/// What the operator has decided, page by page. Nothing of it is done before the last page.
struct SetupPlan {
    SetupWay way = SetupWay::Demo;
    NewLibrary library; ///< to be made, also in the empty database of a server
    Target target; ///< to be opened
    FoundLibrary found; ///< in the target
    bool emptyServer = false; ///< the server has room for a new library
    QString backup; ///< to be put in the place of the target; empty for none
    QString backupFolder; ///< of the backups to come; empty to leave it

    /// Whether a library with an operator of its own is made.
    bool makesLibrary() const;
    const Target& opened() const { return makesLibrary() ? library.place : target; }
};

/// What the last page will do, a sentence each.
QStringList plannedSteps(const SetupPlan& plan, const SettingsStore& settings);

/// Progress of work that has several parts.
class StagedProgress : public Progress {
public:
    virtual void beginStage(const QString& what) = 0;
};

/// What came of it.
struct SetupOutcome {
    QStringList lines;
    bool whole = true; ///< false when an import left something out
};

/// Makes, upgrades or restores the library, stores the connection to it, imports. Throws `Error` when no
/// library could be made or stored; an import that fails is reported in the outcome.
SetupOutcome carryOut(const SetupPlan& plan, SettingsStore& settings, StagedProgress& progress);

} // namespace quilla
