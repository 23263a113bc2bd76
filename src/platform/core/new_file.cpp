#include "platform/core/new_file.h"

#include "platform/core/error.h"
#include "platform/core/lock_file.h"
#include "platform/core/text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

namespace quilla {

namespace {

const QString CannotMake = u"不能建立文件，请检查文件夹的权限和磁盘空间："_s;

const QString NotSaved = u"文件没有写到磁盘上，请检查磁盘："_s;

class Descriptor {
public:
    Descriptor(const QString& path, int flags, mode_t mode = 0)
        : m_value(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, mode))
    {
    }
    ~Descriptor()
    {
        if (m_value >= 0) ::close(m_value);
    }
    Q_DISABLE_COPY_MOVE(Descriptor)

    operator int() const { return m_value; }

private:
    int m_value;
};

} // namespace

bool isSaved(const QString& path)
{
    const Descriptor written(path, O_RDONLY);
    // some network file systems can't be told to save a folder; they say so
    return written >= 0 && (::fsync(written) == 0 || errno == EINVAL);
}

NewFile::NewFile(const QString& path, const QStringList& companions, const QString& group)
    : m_path(path)
    , m_part(path + u".part"_s)
    , m_companions(companions)
    , m_maker(m_part + u".lock"_s)
{
    refuseStanding();
    if (!group.isEmpty()) m_group.emplace(group);
    makeFolder();
    claim();
    removePart();
    makePart();
}

NewFile::~NewFile()
{
    if (m_maker.isLocked()) removePart();
}

void NewFile::refuseStanding() const
{
    for (const QString& ending : QStringList {QString()} + m_companions)
        if (QFile::exists(m_path + ending))
            throw Error(58, u"NewFile"_s,
                u"文件已经存在，请换一个名字，或先把它移走："_s + QDir::toNativeSeparators(m_path + ending));
}

void NewFile::makeFolder()
{
    const QString folder = QFileInfo(m_path).absolutePath();
    if (m_group) m_group->shareFolder(folder);
    if (!makePrivateFolder(folder)) fail(u"不能建立文件夹，文件为："_s);
}

/// Two programs that make the same file would take each other's part away.
void NewFile::claim()
{
    if (takeLock(m_maker)) return;
    const bool taken = m_maker.error() == QLockFile::LockFailedError;
    fail(taken ? u"另一个程序正在建立这个文件："_s : CannotMake);
}

void NewFile::makePart()
{
    const Descriptor part(m_part, O_WRONLY | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    if (part < 0) fail(CannotMake);
    if (m_group && !m_group->shareFile(part)) fail(u"您不是该用户组的成员，不能让它共用文件："_s);
}

void NewFile::finish()
{
    for (const QString& ending : std::as_const(m_companions))
        if (QFile::exists(m_part + ending)) fail(u"文件没有写完整："_s);
    if (!isSaved(m_part)) fail(NotSaved);
    // Does not overwrite what came to stand there meanwhile.
    if (!QFile::rename(m_part, m_path)) fail(CannotMake);
    // Without that a power failure takes the new name away.
    if (isSaved(QFileInfo(m_path).absolutePath())) return;
    QFile::remove(m_path);
    fail(NotSaved);
}

void NewFile::removePart()
{
    for (const QString& ending : QStringList {QString()} + m_companions)
        QFile::remove(m_part + ending);
}

void NewFile::fail(const QString& what) const
{
    throw Error(75, u"NewFile"_s, what + QDir::toNativeSeparators(m_path));
}

} // namespace quilla
