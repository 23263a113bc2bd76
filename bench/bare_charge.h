#pragma once

#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// The statements of one successful charge on nothing but sqlite3: prepared once, one connection, the
/// same pragmas as the program. The yardstick of the benchmarks.
class BareCharge {
public:
    explicit BareCharge(const std::string& file);
    ~BareCharge();
    BareCharge(const BareCharge&) = delete;
    BareCharge& operator=(const BareCharge&) = delete;

    /// Throws std::runtime_error when a statement fails.
    void charge(const std::string& barcode, const std::string& reader);

private:
    sqlite3_stmt* prepare(const char* sql);
    void run(const char* sql);
    int step(sqlite3_stmt* statement);
    void all(sqlite3_stmt* statement, std::initializer_list<const std::string*> values = {});
    std::string today(int daysOn);

    sqlite3* m_db = nullptr;
    std::vector<sqlite3_stmt*> m_statements;
    sqlite3_stmt *m_reader, *m_date, *m_overdue, *m_copy, *m_hold, *m_begin, *m_holidays, *m_loan,
        *m_copyUpdate, *m_readerUpdate, *m_commit;
};
