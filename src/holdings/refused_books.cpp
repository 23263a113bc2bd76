#include "holdings/refused_books.h"

#include "holdings/book_lines.h"
#include "holdings/marc_parser.h"
#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QFileInfo>

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(5, u"RefusedBooks"_s, text);
}

/// A folder that is missing is rather a slip of the pen than a wish.
const QString& withFolder(const QString& file)
{
    const QString folder = QFileInfo(file).absolutePath();
    if (!QFileInfo(folder).isDir()) throw fault(u"没有文件夹 %1。"_s.arg(folder));
    return file;
}

} // namespace

RefusedBooks::RefusedBooks(const QString& file)
    : m_names {withFolder(file), file + u".damaged.mrc"_s}
    , m_files {NewFile(m_names[0]), NewFile(m_names[1])}
    , m_lines(m_files[0].part())
    , m_damaged(m_files[1].part())
{
    for (QFile* part : {&m_lines, &m_damaged})
        if (!part->open(QIODevice::WriteOnly))
            throw fault(u"无法写入文件 %1：%2"_s.arg(part->fileName(), part->errorString()));
}

void RefusedBooks::write(QFile& file, const QByteArray& bytes)
{
    if (file.write(bytes) != bytes.size())
        throw fault(u"无法写入文件 %1：%2"_s.arg(file.fileName(), file.errorString()));
}

void RefusedBooks::add(const BookRecord& book, const QString& reason)
{
    // one that has no end would swallow the next
    if (!book.raw.isEmpty()) write(m_damaged, book.raw.endsWith(RecordEnd) ? book.raw : book.raw + RecordEnd);
    if (m_lines.pos() == 0) write(m_lines, (u"\ufeff"_s + bookHeadings(u',', true)).toUtf8());
    write(m_lines, bookLines(book, u',', book.place() + u'：' + reason).toUtf8());
}

QStringList RefusedBooks::finish()
{
    QStringList names;
    QFile* parts[] {&m_lines, &m_damaged};
    for (int at = 0; at < 2; ++at) {
        const bool used = parts[at]->pos() > 0;
        if (!parts[at]->flush()) throw fault(u"无法写入文件 %1。"_s.arg(m_names[at]));
        parts[at]->close();
        if (!used) continue;
        m_files[at].finish();
        names.append(m_names[at]);
    }
    return names;
}

} // namespace quilla
