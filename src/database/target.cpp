#include "database/target.h"

#include "platform/core/text.h"
#include "platform/db/connection_text.h"
#include "platform/db/embedded.h"

#include <QDir>
#include <QFile>

namespace quilla {

QString Target::name() const
{
    return file ? QDir::toNativeSeparators(*file) : u"数据库服务器"_s;
}

bool Target::exists() const
{
    return file && QFile::exists(*file);
}

Target ownTarget()
{
    return fileTarget(embeddedDatabaseFile());
}

Target fileTarget(const QString& path)
{
    const QString file = QDir::current().absoluteFilePath(path);
    return {u"PROVIDER=MSDASQL;DSN=%1;UID=quilla;PWD=;Database=%2"_s.arg(BuiltInDataSource, doubled(file)),
        file, {}};
}

Target connectionTarget(const QString& text)
{
    return {text, embeddedFileOf(ConnectionItems(text)), {}};
}

} // namespace quilla
