#include "platform/core/settings.h"

#include "platform/core/error.h"
#include "platform/core/private_files.h"
#include "platform/core/text.h"

#include <QFile>
#include <QSettings>
#include <QStandardPaths>

#include <sys/stat.h>

namespace quilla {

namespace {

Error cannotWrite(const QString& path)
{
    return Error(75, u"settings"_s,
        u"无法写入设置文件：%1\n请检查文件和它的文件夹是否属于您自己，磁盘是否已满。"_s.arg(path));
}

/// The file must be private before the first secret is in it; a later rewrite keeps the mode.
void makePrivate(const QString& path)
{
    QFile file(path);
    const bool ready = file.exists() || file.open(QIODevice::WriteOnly | QIODevice::Append, OwnerOnly);
    file.close();
    if (!ready || !QFile::setPermissions(path, OwnerOnly)) throw cannotWrite(path);
}

/// A file that cannot be read must not be taken for one that is missing: the next writing would replace it.
void refuseUnreadable(const QString& path)
{
    const auto opens = [&] { return QFile(path).open(QIODevice::ReadOnly); };
    if (!QFile::exists(path) || opens() || (QFile::setPermissions(path, OwnerOnly) && opens())) return;
    throw Error(75, u"settings"_s,
        u"不能读取设置文件：%1\n它应该是您自己的文件。请让管理员执行下面的命令，再重新启动程序：\n"
        "    chown 您的用户名 '%1'\n    chmod 600 '%1'"_s.arg(path));
}

/// Returns the name of the copy.
QString keepDamaged(const QString& path)
{
    QString kept = path + u".damaged"_s;
    for (int number = 2; QFile::exists(kept); ++number)
        kept = u"%1.damaged-%2"_s.arg(path).arg(number);
    if (!QFile::setPermissions(path, OwnerOnly) || !QFile::copy(path, kept)) throw cannotWrite(path);
    return kept;
}

/// What could be read of a damaged file becomes the whole file.
void writeAnew(const QString& path, const QHash<QString, QString>& values)
{
    if (values.isEmpty() && QFile::remove(path)) return;
    QSettings file(path, QSettings::IniFormat);
    for (const auto& [key, value] : values.asKeyValueRange())
        file.setValue(key, value);
    file.sync();
    if (file.status() == QSettings::AccessError) throw cannotWrite(path);
}

/// What changes when another process writes the file; zeros for a missing one.
std::array<qint64, 4> lookOf(const QByteArray& path)
{
    struct stat state { };
    if (::stat(path.constData(), &state) != 0) return {};
    return {qint64(state.st_ino), qint64(state.st_size), qint64(state.st_mtim.tv_sec),
        qint64(state.st_mtim.tv_nsec)};
}

constexpr std::chrono::milliseconds LookAgainAfter {100};

} // namespace

FileSettings::FileSettings(QString folder)
    : m_folder(folder.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
                                : std::move(folder))
{
}

QString FileSettings::fileOf(const QString& application) const
{
    return m_folder + u'/' + application + u"/settings.ini"_s;
}

const FileSettings::Snapshot& FileSettings::snapshotOf(const QString& application) const
{
    Snapshot& snapshot = m_snapshots[application];
    if (snapshot.path.isEmpty()) snapshot.path = QFile::encodeName(fileOf(application));
    const auto now = std::chrono::steady_clock::now();
    if (now - snapshot.lookedAt < LookAgainAfter) return snapshot;
    snapshot.lookedAt = now;
    const auto look = lookOf(snapshot.path);
    if (look == snapshot.look) return snapshot;
    snapshot.look = look;
    snapshot.values.clear();
    const QSettings file(fileOf(application), QSettings::IniFormat);
    for (const QString& key : file.allKeys())
        snapshot.values.insert(key, file.value(key).toString());
    snapshot.damaged = file.status() == QSettings::FormatError; // known when all is read
    return snapshot;
}

QString FileSettings::get(
    const QString& application, const QString& section, const QString& key, const QString& fallback) const
{
    return snapshotOf(application).values.value(section + u'/' + key, fallback);
}

QString FileSettings::mend(const QString& application)
{
    const QString path = fileOf(application);
    refuseUnreadable(path);
    if (!snapshotOf(application).damaged) return {};
    const QString kept = keepDamaged(path);
    writeAnew(path, snapshotOf(application).values);
    m_snapshots.remove(application);
    return kept;
}

void FileSettings::set(
    const QString& application, const QString& section, const QString& key, const QString& value)
{
    const QString path = fileOf(application);
    if (!makePrivateFolder(m_folder + u'/' + application))
        throw Error(75, u"settings"_s, u"无法建立设置文件夹：%1"_s.arg(m_folder));
    makePrivate(path);
    mend(application);
    QSettings file(path, QSettings::IniFormat);
    file.setValue(section + u'/' + key, value);
    file.sync();
    if (file.status() != QSettings::NoError) throw cannotWrite(path);
    m_snapshots.remove(application);
}

} // namespace quilla
