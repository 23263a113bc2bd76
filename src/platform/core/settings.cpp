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

/// The file must be private before the first secret is in it; a later rewrite keeps the mode.
void makePrivate(const QString& path)
{
    QFile file(path);
    const bool ready = file.exists() || file.open(QIODevice::WriteOnly | QIODevice::Append, OwnerOnly);
    file.close();
    if (!ready || !QFile::setPermissions(path, OwnerOnly))
        throw Error(75, u"settings"_s, u"无法写入设置文件：%1"_s.arg(path));
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
    return snapshot;
}

QString FileSettings::get(
    const QString& application, const QString& section, const QString& key, const QString& fallback) const
{
    return snapshotOf(application).values.value(section + u'/' + key, fallback);
}

void FileSettings::set(
    const QString& application, const QString& section, const QString& key, const QString& value)
{
    const QString path = fileOf(application);
    if (!makePrivateFolder(m_folder + u'/' + application))
        throw Error(75, u"settings"_s, u"无法建立设置文件夹：%1"_s.arg(m_folder));
    makePrivate(path);
    QSettings file(path, QSettings::IniFormat);
    file.setValue(section + u'/' + key, value);
    file.sync();
    if (file.status() != QSettings::NoError)
        throw Error(75, u"settings"_s, u"无法写入设置文件：%1"_s.arg(path));
    m_snapshots.remove(application);
}

} // namespace quilla
