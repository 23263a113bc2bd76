#pragma once

#include <QFileDevice>
#include <QString>

namespace quilla {

/// The mode of a file that holds passwords or readers' data.
inline constexpr QFileDevice::Permissions OwnerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

/// Makes the folder and those above it that are missing, open to their owner alone whatever the umask. False
/// when that is not possible.
bool makePrivateFolder(const QString& path);

/// Takes away access to a file of private data that nobody gave on purpose. Other users lose theirs. The
/// group keeps its own only if it may write: no such file is made with that right, so somebody has granted
/// it. Nothing happens to a missing file or one that belongs to another user.
void tightenAccess(const QString& file);

/// A group of users who share files.
class UserGroup {
public:
    /// Throws `Error` when the system knows no group of that name.
    explicit UserGroup(const QString& name);

    /// Lets the members read and write the open file `descriptor`. False when the owner may not do that.
    bool shareFile(int descriptor) const;
    enum class Standing { Stays, IsShared };
    /// Makes the folder when it is missing; one that stands there is shared too when `standing` says so and
    /// it belongs to this user. Throws `Error` that says what to do when the members can't make files there
    /// that belong to the group: each of them who opens a shared database does.
    void shareFolder(const QString& path, Standing standing = Standing::Stays) const;

private:
    bool sharesFolder(const QByteArray& folder) const;

    QString m_name;
    unsigned m_id = 0;
};

} // namespace quilla
