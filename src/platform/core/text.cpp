#include "platform/core/text.h"

namespace quilla {

namespace {

QStringView withoutTrailingBlanks(QStringView text)
{
    while (!text.isEmpty() && text.back() == u' ')
        text.chop(1);
    return text;
}

} // namespace

QString doubled(QStringView text)
{
    QString result = text.toString();
    return result.replace(u'\'', u"''"_s);
}

bool sameText(QStringView left, QStringView right)
{
    return compareText(left, right) == 0;
}

int compareText(QStringView left, QStringView right)
{
    return withoutTrailingBlanks(left).compare(withoutTrailingBlanks(right), Qt::CaseInsensitive);
}

} // namespace quilla
