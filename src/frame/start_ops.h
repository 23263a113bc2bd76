#pragma once

#include "frame/session.h"
#include "platform/core/settings.h"

namespace quilla {

/// Tells whether another instance of the program runs for this user.
class InstanceGuard {
public:
    virtual ~InstanceGuard() = default;
    /// Takes the place of the one instance, or keeps it; false when another holds it. Throws `Error`, in
    /// words for the operator, when it can't tell.
    virtual bool claim() = 0;
};

/// The one instance of this user, held by a lock file until the process ends.
class LockFileGuard final : public InstanceGuard {
public:
    /// A folder that is missing is made when the place is claimed.
    explicit LockFileGuard(const QString& folder);
    ~LockFileGuard() override;
    bool claim() override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// Mends a damaged settings file. Returns what the user is to be told about it; empty for a sound one. Throws
/// `Error` that says what to do when the file can't be read.
QString mendSettings(FileSettings& settings);

/// The same before the first window, told in a box. False when the process must end.
bool prepareSettings(FileSettings& settings, Prompt& prompt);

/// Takes `ServerName` and `DatabaseName` out of a connection text, item by item: an item with "Server="
/// anywhere gives all but 7 of its characters, one with "Database=" all but 9, a later match overwrites
/// an earlier one. A data source text sets neither.
void readServerAndDatabase(Session& session);

/// What happens before the login: refuses a second instance, reads the stored connection text, and sends
/// the operator to the connection dialog when there is none. False when the process must end.
bool prepareStart(Session& session, InstanceGuard& guard);

} // namespace quilla
