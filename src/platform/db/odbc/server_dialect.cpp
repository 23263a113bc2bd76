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
        .setUp = "SET lock_timeout=30000;SET client_min_messages=warning",
        .begin = "BEGIN",
        .commit = "COMMIT",
        .rollback = "ROLLBACK",
        .save = "SAVEPOINT q",
        .saveAgain = "RELEASE q;SAVEPOINT q",
        .undo = "ROLLBACK TO q",
        .beginAgain = "ROLLBACK;BEGIN",
        .openTransactions = nullptr,
        .smallIntegerIsBit = true,
    },
    {
        // Dates are written year first, whatever the language of the login.
        .product = u"SQL Server",
        .engine = sql::Engine::SqlServer,
        .setUp = "set dateformat ymd set lock_timeout 30000",
        .begin = "begin transaction",
        .commit = "commit transaction",
        .rollback = "if @@trancount>0 rollback transaction",
        .save = nullptr,
        .saveAgain = nullptr,
        .undo = nullptr,
        .beginAgain = nullptr,
        .openTransactions = "select @@trancount",
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
