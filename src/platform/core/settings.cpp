#include "platform/core/settings.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QStandardPaths>

namespace quilla {

namespace {

constexpr QFileDevice::Permissions OwnerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

/// The file must be private before the first secret is in it; a later rewrite keeps the mode.
void makePrivate(const QString& path)
{
    QFile file(path);
    const bool ready = file.exists() || file.open(QIODevice::WriteOnly | QIODevice::Append, OwnerOnly);
    file.close();
    if (!ready || !QFile::setPermissions(path, OwnerOnly))
        throw Error(75, u"settings"_s, u"无法写入设置文件：%1"_s.arg(path));
}

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

QString FileSettings::get(
    const QString& application, const QString& section, const QString& key, const QString& fallback) const
{
    const QString path = fileOf(application);
    if (!QFile::exists(path)) return fallback;
    const QSettings file(path, QSettings::IniFormat);
    return file.value(section + u'/' + key, fallback).toString();
}

void FileSettings::set(
    const QString& application, const QString& section, const QString& key, const QString& value)
{
    const QString path = fileOf(application);
    if (!QDir().mkpath(m_folder + u'/' + application))
        throw Error(75, u"settings"_s, u"无法建立设置文件夹：%1"_s.arg(m_folder));
    makePrivate(path);
    QSettings file(path, QSettings::IniFormat);
    file.setValue(section + u'/' + key, value);
    file.sync();
    if (file.status() != QSettings::NoError)
        throw Error(75, u"settings"_s, u"无法写入设置文件：%1"_s.arg(path));
}

} // namespace quilla
