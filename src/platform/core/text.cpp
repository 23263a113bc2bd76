#include "platform/core/text.h"

namespace quilla {

namespace {

constexpr QChar Blank = u' ';

QStringView withoutTrailingBlanks(QStringView text)
{
    while (text.endsWith(Blank))
        text.chop(1);
    return text;
}

} // namespace

QString trimBlanks(const QString& text)
{
    return trimBlanks(QStringView(text)).toString();
}

QStringView trimBlanks(QStringView text)
{
    text = withoutTrailingBlanks(text);
    while (text.startsWith(Blank))
        text = text.sliced(1);
    return text;
}

bool isBlank(QStringView text)
{
    return trimBlanks(text).isEmpty();
}

QString doubled(QStringView text)
{
    QString result = text.toString();
    return result.replace(u'\'', u"''"_s);
}

bool sameText(QStringView left, QStringView right)
{
    return compareText(left, right) == 0;
}

} // namespace quilla
