#include "platform/core/private_files.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quilla {

namespace {

constexpr mode_t OfOwner = S_IRUSR | S_IWUSR;
constexpr mode_t OfGroup = S_IRGRP | S_IWGRP;
/// What is made in such a folder belongs to the folder's group.
constexpr mode_t SharedFolder = S_IRWXU | S_IRWXG | S_ISGID;

} // namespace

bool makePrivateFolder(const QString& path)
{
    const QFileInfo folder(path);
    if (folder.isDir()) return true;
    if (!makePrivateFolder(folder.absolutePath())) return false;
    return QDir().mkdir(path, OwnerOnly | QFileDevice::ExeOwner) || QFileInfo(path).isDir();
}

void tightenAccess(const QString& file)
{
    const QByteArray path = QFile::encodeName(file);
    struct stat state { };
    if (::stat(path.constData(), &state) != 0 || !S_ISREG(state.st_mode)) return;
    const mode_t mode = state.st_mode & 07777;
    const mode_t meant = mode & (mode & S_IWGRP ? OfOwner | OfGroup : OfOwner);
    if (mode != meant) std::ignore = ::chmod(path.constData(), meant);
}

UserGroup::UserGroup(const QString& name)
    : m_name(name)
{
    const group* const found = ::getgrnam(name.toLocal8Bit().constData());
    if (!found) throw Error(5, u"UserGroup"_s, u"系统里没有用户组“%1”。"_s.arg(name));
    m_id = found->gr_gid;
}

bool UserGroup::shareFile(int descriptor) const
{
    return ::fchown(descriptor, uid_t(-1), m_id) == 0 && ::fchmod(descriptor, OfOwner | OfGroup) == 0;
}

bool UserGroup::sharesFolder(const QByteArray& folder) const
{
    struct stat state { };
    return ::stat(folder.constData(), &state) == 0 && S_ISDIR(state.st_mode) && state.st_gid == m_id
        && (state.st_mode & SharedFolder) == SharedFolder;
}

void UserGroup::shareFolder(const QString& path, Standing standing) const
{
    const QByteArray folder = QFile::encodeName(path);
    const bool isNew = !QFileInfo::exists(path) && makePrivateFolder(path);
    if (sharesFolder(folder)) return;
    if ((isNew || standing == Standing::IsShared) && ::chown(folder.constData(), uid_t(-1), m_id) == 0)
        ::chmod(folder.constData(), SharedFolder);
    if (sharesFolder(folder)) return;
    throw Error(75, u"UserGroup"_s,
        u"用户组“%1”的成员不能在文件夹 %2 "
        u"中共用文件。\n请换一个还没有的文件夹，由程序建立，或者请它的主人或管理员先执行：\n"
        "    chgrp %1 '%2'\n    chmod 2770 '%2'"_s.arg(m_name, QDir::toNativeSeparators(path)));
}

} // namespace quilla
