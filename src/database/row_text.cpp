#include "database/row_text.h"

#include "platform/core/dates.h"
#include "platform/core/text.h"

namespace quilla {

RowText::RowText(Connection& connection, QStringView table, QStringView columns)
    : m_connection(connection)
    , m_statement(u"insert into %1(%2) values("_s.arg(table, columns))
    , m_head(m_statement.size())
{
}

RowText& RowText::text(QStringView value)
{
    separate();
    m_statement += u'\'';
    m_statement += value.contains(u'\'') ? doubled(value) : value.toString();
    m_statement += u'\'';
    return *this;
}

RowText& RowText::number(qint64 value)
{
    separate();
    m_statement += QString::number(value);
    return *this;
}

RowText& RowText::money(qint64 hundredths)
{
    separate();
    m_statement += QString::number(hundredths / 100);
    m_statement += u'.';
    m_statement += u"%1"_s.arg(hundredths % 100, 2, 10, QChar(u'0'));
    return *this;
}

RowText& RowText::bit(bool value)
{
    return number(value ? 1 : 0);
}

RowText& RowText::date(const QDate& value)
{
    if (!value.isValid()) return null();
    separate();
    m_statement += u'\'';
    m_statement += isoDate(value);
    m_statement += u'\'';
    return *this;
}

RowText& RowText::null()
{
    separate();
    m_statement += u"null"_s;
    return *this;
}

RowText& RowText::value(const Value& field)
{
    switch (field.kind()) {
    case sql::Kind::Unknown:
        return null();
    case sql::Kind::Text:
        return text(field.text());
    case sql::Kind::Bit:
        return bit(field.isTrue());
    case sql::Kind::Date: {
        const CanonicalMoment moment(field.moment().value_or(Moment()));
        return text(QString::fromLatin1(moment.text, qsizetype(moment.length)));
    }
    case sql::Kind::Integer:
    case sql::Kind::Decimal:
        break;
    }
    separate();
    m_statement += field.text();
    return *this;
}

void RowText::send()
{
    m_statement += u')';
    m_connection.execute(m_statement);
    m_statement.truncate(m_head);
}

void RowText::separate()
{
    if (m_statement.size() > m_head) m_statement += u',';
}

} // namespace quilla
