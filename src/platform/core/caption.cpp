#include "platform/core/caption.h"

#include <QRegularExpression>

namespace quilla {

namespace {

bool spacedOut(QChar left, QChar right)
{
    return left.unicode() > 0x2e7f && right.unicode() > 0x2e7f;
}

/// Drops the blanks between two Chinese characters, keeps those of a Latin text.
QString closedUp(QStringView text)
{
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u' ') {
            result += text[i];
            continue;
        }
        qsizetype next = i;
        while (next < text.size() && text[next] == u' ')
            ++next;
        if (!result.isEmpty() && next < text.size() && !spacedOut(result.back(), text[next])) result += u' ';
        i = next - 1;
    }
    return result;
}

} // namespace

QString captionName(QStringView caption)
{
    static const QRegularExpression keyBehind(uR"(\s*[(（]\s*&.\s*[)）\]])"_s);
    static const QRegularExpression keyInFront(uR"(^\s*&.\s+|^\s*&.(?=[^\x00-\x7f]))"_s);
    QString name = caption.toString();
    name.remove(keyBehind).remove(keyInFront).remove(u'&');
    name = trimBlanks(name);
    while (name.endsWith(u':') || name.endsWith(u'：'))
        name.chop(1);
    return closedUp(name);
}

QString recordCountText(qsizetype count)
{
    return u"记录数：%1"_s.arg(count);
}

} // namespace quilla
