#include "platform/db/odbc/server_dialect.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

namespace quilla {

namespace {

// A statement waits for another desk as long as a command is given by default, half a minute.
constexpr ServerDialect Dialects[] {
    {
        .product = u"PostgreSQL",
        .engine = sql::Engine::Postgres,
        .setUp = u"SET lock_timeout=30000;SET client_min_messages=warning",
        .begin = u"BEGIN",
        .commit = u"COMMIT",
        .rollback = u"ROLLBACK",
        .save = u"SAVEPOINT q",
        .saveAgain = u"RELEASE q;SAVEPOINT q",
        .undo = u"ROLLBACK TO q",
        .beginAgain = u"ROLLBACK;BEGIN",
        .gatherStatistics = u"VACUUM ANALYZE",
        .openTransactions = nullptr,
        .smallIntegerIsBit = true,
    },
    {
        // Dates are written year first, whatever the language of the login.
        .product = u"SQL Server",
        .engine = sql::Engine::SqlServer,
        .setUp = u"set dateformat ymd set lock_timeout 30000",
        .begin = u"begin transaction",
        .commit = u"commit transaction",
        .rollback = u"if @@trancount>0 rollback transaction",
        .save = nullptr,
        .saveAgain = nullptr,
        .undo = nullptr,
        .beginAgain = nullptr,
        .gatherStatistics = nullptr,
        .openTransactions = u"select @@trancount",
        .smallIntegerIsBit = false,
    },
};

} // namespace

const ServerDialect& serverDialect(QStringView product)
{
    for (const ServerDialect& dialect : Dialects)
        if (product.contains(dialect.product, Qt::CaseInsensitive)) return dialect;
    throw Error(
        ErrorNumber::CannotOpen, u"ODBC"_s, u"不支持这种数据库服务器：%1。"_s.arg(product.toString()));
}

} // namespace quilla
