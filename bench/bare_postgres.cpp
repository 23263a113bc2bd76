#include "bench/bare_driver.h"

namespace quilla {

namespace {

/// Each "?" becomes "$1", "$2"...; the statements of the desk have none in quotes.
QByteArray numbered(const QByteArray& text)
{
    QByteArray result;
    int count = 0;
    for (const char c : text)
        result += c == '?' ? '$' + QByteArray::number(++count) : QByteArray(1, c);
    return result;
}

} // namespace

void BarePostgres::check(PGresult* result) const
{
    const ExecStatusType status = PQresultStatus(result);
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) qFatal("%s", PQerrorMessage(m_connection));
    const int rows = PQntuples(result);
    for (int row = 0; row < rows; ++row)
        for (int field = 0; field < PQnfields(result); ++field)
            PQgetvalue(result, row, field);
    PQclear(result);
}

int BarePostgres::prepare(const QByteArray& text, bool isTransaction)
{
    if (isTransaction) return -1;
    m_names.push_back(QByteArray::number(qsizetype(m_names.size())));
    check(PQprepare(m_connection, m_names.back().constData(), numbered(text).constData(), 0, nullptr));
    return int(m_names.size()) - 1;
}

void BarePostgres::run(const Step& step, const DeskTask& work)
{
    if (step.prepared < 0) return check(PQexec(m_connection, step.text.constData()));
    std::array<const char*, 32> texts {};
    for (std::size_t i = 0; i < step.arguments.size(); ++i)
        texts.at(i) = textOf(step.arguments[i], work).constData();
    check(PQexecPrepared(m_connection, m_names[std::size_t(step.prepared)].constData(),
        int(step.arguments.size()), texts.data(), nullptr, nullptr, 0));
}

} // namespace quilla
