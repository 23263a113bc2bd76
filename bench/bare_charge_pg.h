#pragma once

#include "platform/sql/translator.h"

#include <libpq-fe.h>

#include <string>
#include <vector>

/// The statements of one successful charge on nothing but libpq: the same texts as the program's, prepared
/// once, one connection, no savepoints. The yardstick of the benchmark.
class BareChargePg {
public:
    BareChargePg(PGconn* connection, quilla::sql::Translator& translator);

    void charge(const std::string& barcode, const std::string& reader);

private:
    using Values = std::initializer_list<std::string>;

    int prepare(quilla::sql::Translator& translator, const QString& tsql);
    void run(int statement, Values values = {});
    void send(const char* text);

    PGconn* m_connection;
    int m_count = 0;
    int m_reader, m_date, m_overdue, m_copy, m_hold, m_holidays, m_loan, m_copyUpdate, m_readerUpdate;
};
