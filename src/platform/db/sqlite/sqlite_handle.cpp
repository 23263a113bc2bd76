#include "platform/db/sqlite/sqlite_handle.h"

#include "platform/core/text.h"

#include <QDir>
#include <QFileInfo>

namespace quilla {

namespace {

struct Sentence {
    int code; ///< primary result code
    QStringView text;
    bool namesFile;
};

constexpr Sentence sentences[] {
    {SQLITE_BUSY, u"数据库正被其他工作站占用，请稍后再试。", false},
    {SQLITE_LOCKED, u"数据库正被其他操作占用，请稍后再试。", false},
    {SQLITE_READONLY, u"数据库文件是只读的，不能写入：", true},
    {SQLITE_FULL, u"磁盘已满，数据没有写入：", true},
    {SQLITE_IOERR, u"读写数据库文件时出错：", true},
    {SQLITE_CORRUPT, u"数据库文件已损坏：", true},
    {SQLITE_NOTADB, u"文件不是数据库，或已损坏：", true},
    {SQLITE_CANTOPEN, u"不能打开数据库文件：", true},
    {SQLITE_PERM, u"没有访问数据库文件的权限：", true},
    {SQLITE_CONSTRAINT, u"数据违反了数据库的约束。", false},
    {SQLITE_NOMEM, u"内存不足。", false},
    {SQLITE_INTERRUPT, u"操作已被中断。", false},
};

QString sentenceFor(int code, const QString& path)
{
    for (const Sentence& sentence : sentences)
        if (sentence.code == (code & 0xff))
            return sentence.text.toString()
                + (sentence.namesFile ? QDir::toNativeSeparators(path) : QString());
    return u"数据库执行语句时出错。"_s;
}

} // namespace

Error sqliteError(int code, const QString& engineWords, const QString& path)
{
    const bool inUse = (code & 0xff) == SQLITE_BUSY;
    return Error(
        inUse ? ErrorNumber::InUse : code, u"SQLite"_s, sentenceFor(code, path) + u'\n' + engineWords);
}

SqliteHandle::SqliteHandle(const QString& path, Mode mode)
    : m_path(path)
{
    const QFileInfo file(path);
    if (path.isEmpty()) throw Error(ErrorNumber::CannotOpen, u"SQLite"_s, u"没有指定数据库文件。"_s);
    if (mode != Mode::Create && !file.exists())
        throw Error(
            ErrorNumber::CannotOpen, u"SQLite"_s, u"数据库文件不存在："_s + QDir::toNativeSeparators(path));
    if (file.exists() && !file.isFile())
        throw Error(
            ErrorNumber::CannotOpen, u"SQLite"_s, u"这不是一个文件："_s + QDir::toNativeSeparators(path));
    constexpr int flags[] {
        SQLITE_OPEN_READWRITE, SQLITE_OPEN_READONLY, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE};
    open(flags[int(mode)] | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE);
}

void SqliteHandle::open(int flags)
{
    const int code = sqlite3_open_v2(m_path.toUtf8().constData(), &m_database, flags, nullptr);
    if (code == SQLITE_OK) return;
    const QString words = QString::fromUtf8(m_database ? sqlite3_errmsg(m_database) : sqlite3_errstr(code));
    sqlite3_close_v2(m_database);
    throw sqliteError(code, words, m_path);
}

SqliteHandle::~SqliteHandle()
{
    sqlite3_close_v2(m_database);
}

void SqliteHandle::fail(int code) const
{
    const QString words = QString::fromUtf8(sqlite3_errmsg(m_database));
    // The functions of ours report an unreadable date by this code, in words fit for the operator.
    if (code == SQLITE_MISMATCH) throw Error(ErrorNumber::CannotConvert, u"SQLite"_s, words);
    throw sqliteError(code, words, m_path);
}

void SqliteHandle::run(const char* statements) const
{
    check(sqlite3_exec(m_database, statements, nullptr, nullptr, nullptr));
}

QString SqliteHandle::text(const char* statement) const
{
    const auto keepFirst = [](void* kept, int columns, char** fields, char**) {
        auto& value = *static_cast<QString*>(kept);
        if (value.isNull() && columns > 0) value = QString::fromUtf8(fields[0]);
        return 0;
    };
    QString value;
    check(sqlite3_exec(m_database, statement, keepFirst, &value, nullptr));
    return value;
}

} // namespace quilla
