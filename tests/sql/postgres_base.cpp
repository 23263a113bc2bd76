#include "sql/postgres_base.h"

#include "platform/core/dates.h"
#include "platform/core/text.h"
#include "sql/literal_text.h"

namespace quilla::test {

namespace {

/// Server types by their numbers.
constexpr Oid Numeric = 1700;
constexpr Oid Timestamp = 1114;

/// Each "?" outside quotes becomes "$1", "$2"...
QByteArray numbered(const QByteArray& text)
{
    QByteArray result;
    char quote = 0;
    int count = 0;
    for (const char c : text) {
        if (quote)
            quote = c == quote ? 0 : quote;
        else if (c == '\'' || c == '"')
            quote = c;
        result += c == '?' && !quote ? '$' + QByteArray::number(++count) : QByteArray(1, c);
    }
    return result;
}

QString shown(const PGresult* result, int row, int column)
{
    if (PQgetisnull(result, row, column)) return u"NULL"_s;
    QString text = QString::fromUtf8(PQgetvalue(result, row, column));
    const Oid type = PQftype(result, column);
    if (type == Timestamp) return canonicalText(*readDate(text));
    if (type == Numeric && text.contains(u'.')) {
        while (text.endsWith(u'0'))
            text.chop(1);
        if (text.endsWith(u'.')) text.chop(1);
    }
    return text;
}

QString rowsOf(const PGresult* result)
{
    QStringList rows;
    for (int row = 0; row < PQntuples(result); ++row) {
        QStringList fields;
        for (int column = 0; column < PQnfields(result); ++column)
            fields.append(shown(result, row, column));
        rows.append(fields.join(u'|'));
    }
    return rows.join(u';');
}

} // namespace

QString PostgresBase::run(const sql::Translation& statement, const std::vector<sql::Literal>& literals)
{
    std::vector<QByteArray> texts;
    for (const sql::Parameter& parameter : statement.parameters)
        texts.push_back(boundText(parameter, literals[parameter.literal]).toUtf8());
    std::vector<const char*> values;
    for (const QByteArray& text : texts)
        values.push_back(text.constData());
    const auto result = checkedResult(PQexecParams(m_database.handle(), numbered(statement.text).constData(),
        int(values.size()), nullptr, values.data(), nullptr, nullptr, 0));
    return statement.returnsRows ? rowsOf(result.get())
                                 : QString::number(QByteArray(PQcmdTuples(result.get())).toInt());
}

} // namespace quilla::test
