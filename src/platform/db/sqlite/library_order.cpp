#include "platform/db/sqlite/library_order.h"

#include "platform/core/text.h"
#include "platform/core/text_order.h"
#include "platform/db/embedded.h"

namespace quilla {

namespace {

QStringList indexes(const SqliteHandle& handle)
{
    const char* const select = "select group_concat(name, char(10)) from sqlite_master where type='index'";
    return handle.text(select).split(u'\n', Qt::SkipEmptyParts);
}

/// A unique index fails where two codes were different in the old order and are the same in the new one.
Error explained(const Error& error, const QString& index)
{
    if ((error.number & 0xff) != SQLITE_CONSTRAINT) return error;
    return Error(error.number, error.source,
        u"唯一索引 %1 在新的排序里不成立，有只差全角半角的号码，数据库没有改变。\n%2\n"
        "请先用原来的程序改正这些号码；或者取消这个索引（sqlite3 数据库文件 \"drop index %1\"），"
        "升级以后运行 quilla-db check 找出它们。"_s.arg(index, error.text));
}

void makeIndexesAnew(const SqliteHandle& handle, const IndexesDone& progress)
{
    const QStringList all = indexes(handle);
    for (qsizetype done = 0; done < all.size(); ++done) {
        progress(done, all.size());
        QString name = all[done];
        try {
            handle.run(u"reindex \"%1\""_s.arg(name.replace(u'"', u"\"\""_s)).toUtf8().constData());
        } catch (const Error& error) {
            throw explained(error, all[done]);
        }
    }
    progress(all.size(), all.size());
}

void refuseFault(const SqliteHandle& handle)
{
    const QString fault = handle.text("pragma integrity_check(1)");
    if (fault != u"ok")
        throw Error(SQLITE_CORRUPT, u"SQLite"_s, u"数据库没有改变，重新排序后的数据有误："_s + fault);
}

} // namespace

bool isInOrder(const SqliteHandle& handle)
{
    if (handle.number("select count(*) from sqlite_master where name='qj_order'") == 0) return false;
    return handle.text("select version from qj_order") == orderVersion();
}

void noteOrder(const SqliteHandle& handle)
{
    handle.run(u"create table if not exists qj_order (version text not null);"
               "delete from qj_order; insert into qj_order values ('%1'); pragma user_version=%2"_s
                   .arg(orderVersion())
                   .arg(EmbeddedSchemaVersion)
                   .toUtf8()
                   .constData());
}

void sortAnew(SqliteDriver& sole, const IndexesDone& progress)
{
    const SqliteHandle& handle = sole.handle();
    handle.check(registerOrder(handle.get(), TextOrder::Pinyin));
    sole.begin(OnFailure::EndTransaction);
    try {
        makeIndexesAnew(handle, progress);
        noteOrder(handle);
        refuseFault(handle);
        sole.commit();
    } catch (...) {
        sole.rollback();
        throw;
    }
}

std::unique_ptr<SqliteDriver> openLibraryFile(const QString& path, const Clock& clock)
{
    auto driver = std::make_unique<SqliteDriver>(path, clock);
    if (isInOrder(driver->handle())) return driver;
    driver.reset();
    {
        SqliteDriver sole(path, clock, SqliteDriver::As::SoleUse);
        sortAnew(sole, [](qsizetype, qsizetype) {});
    }
    // From here on the open connection itself keeps others from sorting the file anew.
    driver = std::make_unique<SqliteDriver>(path, clock);
    if (isInOrder(driver->handle())) return driver;
    throw Error(ErrorNumber::InUse, u"SQLite"_s,
        u"另一个程序正以不同的排序规则使用数据库，请把各桌面的程序更新到同一版本。"_s);
}

} // namespace quilla
