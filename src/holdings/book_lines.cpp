#include "holdings/book_lines.h"

#include "platform/core/text.h"
#include "readers/delimited_text.h"
#include "readers/import_fields.h"

namespace quilla {

QString bookHeadings(QChar delimiter, bool withReason)
{
    QStringList headings;
    if (withReason) headings.append(ReasonCaption.toString());
    for (int field = 0; field < CopyField::Count; ++field)
        headings.append(copyField(field).captions.first());
    for (int field = 0; field < TitleField::Count; ++field)
        headings.append(titleField(field).captions.first());
    return delimitedLine(headings, delimiter);
}

const QRegularExpression& betweenBarcodes()
{
    static const QRegularExpression marks(u"[;；、,，|\\n]"_s);
    return marks;
}

QString bookLines(const BookRecord& book, QChar delimiter, const QString& reason)
{
    QStringList title;
    if (!reason.isEmpty()) title.append(reason);
    const qsizetype copyAt = title.size();
    for (const QString& text : book.title)
        title.append(text);
    QString lines;
    for (std::size_t at = 0; at < std::max<std::size_t>(1, book.copies.size()); ++at) {
        const CopyValues copy = at < book.copies.size() ? book.copies[at] : CopyValues();
        QStringList line = title;
        for (int field = CopyField::Count - 1; field >= 0; --field)
            line.insert(copyAt, copy[std::size_t(field)]);
        lines += delimitedLine(line, delimiter);
    }
    return lines;
}

} // namespace quilla
