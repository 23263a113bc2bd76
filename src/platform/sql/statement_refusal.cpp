#include "platform/sql/statement_refusal.h"

#include "platform/sql/scan.h"

namespace quilla::sql {

namespace {

constexpr qsizetype LongestWord = 40;

/// The word, name, number or sign that stands at `place`.
QStringView wordAt(QStringView text, qsizetype place)
{
    qsizetype end = place;
    while (end < text.size() && end - place < LongestWord && continuesWord(text[end].unicode()))
        ++end;
    if (end > place) return text.sliced(place, end - place);
    const QChar first = text[place];
    if (first == u'\'' || first == u'[' || first == u'"') return text.sliced(place).left(LongestWord);
    return text.sliced(place, first.isHighSurrogate() && place + 1 < text.size() ? 2 : 1);
}

} // namespace

void refuse(qsizetype place, const QString& reason)
{
    throw Refusal {place, reason};
}

Error errorOf(const Refusal& refusal, QStringView tsql, int firstLine)
{
    const qsizetype place = std::min(refusal.place, tsql.size());
    const QStringView before = tsql.first(place);
    const qsizetype line = firstLine + before.count(u'\n');
    const qsizetype column = place - before.lastIndexOf(u'\n');
    const QString word = place < tsql.size() ? u"“%1”"_s.arg(wordAt(tsql, place)) : u"语句末尾"_s;
    const QString where = u"无法理解的 SQL 语句：第 "_s + QString::number(line) + u" 行第 "_s
        + QString::number(column) + u" 列，"_s + word + u"："_s;
    return Error(ErrorNumber::NotUnderstood, u"sql"_s, where + refusal.reason);
}

} // namespace quilla::sql
