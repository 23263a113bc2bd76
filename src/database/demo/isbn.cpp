#include "database/demo/isbn.h"

#include "platform/core/text.h"

namespace quilla::demo {

namespace {

constexpr int GroupAndPublisherAndTitle = 9; // digits
constexpr int FirstYearOfThirteen = 2007;

} // namespace

QChar isbn10CheckDigit(QStringView digits)
{
    int sum = 0;
    for (qsizetype i = 0; i < digits.size(); ++i)
        sum += int(10 - i) * digits[i].digitValue();
    const int check = (11 - sum % 11) % 11;
    return check == 10 ? u'X' : QChar(u'0' + check);
}

QChar isbn13CheckDigit(QStringView digits)
{
    int sum = 0;
    for (qsizetype i = 0; i < digits.size(); ++i)
        sum += digits[i].digitValue() * (i % 2 ? 3 : 1);
    return QChar(u'0' + (10 - sum % 10) % 10);
}

QString IsbnCounter::next(const QString& publisher, int year, int step)
{
    int& last = m_last[publisher];
    last += step;
    const int width = GroupAndPublisherAndTitle - 1 - int(publisher.size());
    const QString title = u"%1"_s.arg(last, width, 10, QChar(u'0'));
    const QString digits = u'7' + publisher + title;
    const QString parts = u"7-"_s + publisher + u'-' + title + u'-';
    if (year < FirstYearOfThirteen) return parts + isbn10CheckDigit(digits);
    return u"978-"_s + parts + isbn13CheckDigit(QString(u"978"_s + digits));
}

} // namespace quilla::demo
