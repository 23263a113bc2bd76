#include "readers/refused_readers.h"

#include "platform/core/error.h"

#include <QFileInfo>

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(5, u"RefusedReaders"_s, text);
}

} // namespace

QByteArray contentOf(const QString& name)
{
    QFile file(name);
    if (QFileInfo(name).isDir()) throw fault(u"%1 是文件夹，不是文件。"_s.arg(name));
    if (!QFileInfo::exists(name)) throw fault(u"没有文件 %1。"_s.arg(name));
    if (!file.open(QIODevice::ReadOnly)) throw fault(u"无法读取文件 %1：%2"_s.arg(name, file.errorString()));
    return file.readAll();
}

RefusedReaders::RefusedReaders(const QString& name)
{
    if (name.isEmpty()) return;
    // A folder that is missing is rather a slip of the pen than a wish.
    const QString folder = QFileInfo(name).absolutePath();
    if (!QFileInfo(folder).isDir()) throw fault(u"没有文件夹 %1。"_s.arg(folder));
    m_file.emplace(name);
}

void RefusedReaders::write(const ImportReport& report)
{
    if (!m_file || report.refused.empty()) return;
    writePart(refusedFile(report));
    m_file->finish();
}

void RefusedReaders::writePart(const QByteArray& lines) const
{
    QFile part(m_file->part());
    if (!part.open(QIODevice::WriteOnly) || part.write(lines) < 0 || !part.flush())
        throw fault(u"无法写入文件 %1：%2"_s.arg(part.fileName(), part.errorString()));
}

} // namespace quilla
