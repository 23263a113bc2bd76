#include "platform/core/built_in_file.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QFile>

namespace quilla {

QByteArray builtInFile(const QString& path)
{
    constexpr int FileNotFound = 53;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Error(FileNotFound, u"BuiltInFile"_s, u"程序内缺少文件：%1"_s.arg(path));
    return file.readAll();
}

} // namespace quilla
