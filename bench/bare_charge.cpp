#include "bench/bare_charge.h"

#include <sqlite3.h>

#include <cstring>
#include <ctime>
#include <stdexcept>

namespace {

/// The order of the columns' collation as far as the codes of the benchmark need it.
int compare(void*, int leftSize, const void* left, int rightSize, const void* right)
{
    const auto* a = static_cast<const unsigned char*>(left);
    const auto* b = static_cast<const unsigned char*>(right);
    while (leftSize > 0 && a[leftSize - 1] == ' ')
        --leftSize;
    while (rightSize > 0 && b[rightSize - 1] == ' ')
        --rightSize;
    const int both = leftSize < rightSize ? leftSize : rightSize;
    for (int at = 0; at < both; ++at) {
        const int x = a[at] >= 'A' && a[at] <= 'Z' ? a[at] + 32 : a[at];
        const int y = b[at] >= 'A' && b[at] <= 'Z' ? b[at] + 32 : b[at];
        if (x != y) return x - y;
    }
    return leftSize - rightSize;
}

} // namespace

BareCharge::BareCharge(const std::string& file)
{
    if (sqlite3_open_v2(file.c_str(), &m_db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(m_db));
    sqlite3_create_collation(m_db, "QUILLA", SQLITE_UTF8, nullptr, compare);
    sqlite3_busy_timeout(m_db, 10'000);
    run("pragma journal_mode=wal");
    run("pragma synchronous=full");
    m_reader
        = prepare("select readstatus,term,bookcount,orderbook,daycount,ifcanre from DZK where ReaderCode=?");
    m_date = prepare("select strftime('%Y-%m-%d %H:%M:%f','now','localtime')");
    m_overdue = prepare("select count(jhskid) from jhsk where readercode=? and yhdate<?");
    m_copy = prepare("select borrowstatus,bookstatus from SCK where bookstatus<>'丢失' and "
                     "bookstatus<>'注销' and barcode=?");
    m_hold = prepare(
        "select yyk.barcode,oldtime,yyk.readercode,yyk.barcode,name,readerclass from yyk join dzk on "
        "yyk.readercode=dzk.readercode where yyk.barcode=?");
    m_begin = prepare("begin immediate");
    m_holidays = prepare("select code from Global where type='holiday' order by code");
    m_loan = prepare("insert into JHSK(readercode,barcode,orderdate,yhdate,operater) values(?,?,?,?,?)");
    m_copyUpdate = prepare("update SCK set borrowstatus=0,bookstatus='借出' where bookstatus<>'丢失' and "
                           "bookstatus<>'注销' and barcode=?");
    m_readerUpdate = prepare("update DZK set orderbook=orderbook+1 where ReaderCode=?");
    m_commit = prepare("commit");
}

BareCharge::~BareCharge()
{
    for (sqlite3_stmt* statement : m_statements)
        sqlite3_finalize(statement);
    sqlite3_close(m_db);
}

sqlite3_stmt* BareCharge::prepare(const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v3(m_db, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(m_db));
    m_statements.push_back(statement);
    return statement;
}

void BareCharge::run(const char* sql)
{
    if (sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(m_db));
}

int BareCharge::step(sqlite3_stmt* statement)
{
    const int result = sqlite3_step(statement);
    if (result != SQLITE_ROW && result != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(m_db));
    return result;
}

void BareCharge::all(sqlite3_stmt* statement, std::initializer_list<const std::string*> values)
{
    int place = 0;
    for (const std::string* value : values)
        sqlite3_bind_text(statement, ++place, value->data(), int(value->size()), SQLITE_STATIC);
    while (step(statement) == SQLITE_ROW) {
        for (int field = 0; field < sqlite3_column_count(statement); ++field)
            sqlite3_column_text(statement, field);
    }
    sqlite3_reset(statement);
}

std::string BareCharge::today(int daysOn)
{
    const std::time_t moment = std::time(nullptr) + daysOn * 86'400L;
    std::tm local {};
    localtime_r(&moment, &local);
    char text[16];
    std::strftime(text, sizeof text, "%Y-%m-%d", &local);
    return text;
}

void BareCharge::charge(const std::string& barcode, const std::string& reader)
{
    const std::string now = today(0);
    const std::string due = today(30);
    const std::string by = "bench";
    all(m_reader, {&reader});
    all(m_date);
    all(m_date);
    all(m_overdue, {&reader, &now});
    all(m_copy, {&barcode});
    all(m_hold, {&barcode});
    all(m_begin);
    all(m_date);
    all(m_holidays);
    all(m_date);
    all(m_loan, {&reader, &barcode, &now, &due, &by});
    all(m_copyUpdate, {&barcode});
    all(m_readerUpdate, {&reader});
    all(m_commit);
}
