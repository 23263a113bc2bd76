#include "platform/db/sqlite/sqlite_driver.h"

#include "platform/core/text.h"
#include "platform/db/embedded.h"

#include <QDir>

#include <thread>

namespace quilla {

namespace {

Error cannotOpen(const QString& why, const QString& path)
{
    return Error(ErrorNumber::CannotOpen, u"SQLite"_s, why + QDir::toNativeSeparators(path));
}

SqliteHandle::Mode modeFor(SqliteDriver::As as)
{
    return as == SqliteDriver::As::NewFile ? SqliteHandle::Mode::Create : SqliteHandle::Mode::Existing;
}

} // namespace

SqliteDriver::SqliteDriver(const QString& path, const Clock& clock, As as, int busyMilliseconds)
    : m_time(clock)
    , m_patience(busyMilliseconds)
    , m_handle(path, modeFor(as))
{
    setUp(as);
}

/// Called while another desk writes. Tries again after a moment: the engine's own pauses grow to a tenth of a
/// second, in which a desk that does not pause would win the lock again and again.
int SqliteDriver::waitForTurn(void* driver, int timesAsked)
{
    using namespace std::chrono;
    auto& self = *static_cast<SqliteDriver*>(driver);
    if (timesAsked == 0) self.m_waitingSince = steady_clock::now();
    if (steady_clock::now() - self.m_waitingSince >= self.m_patience) return 0;
    std::this_thread::sleep_for(microseconds(std::min(50 + 25 * timesAsked, 500)));
    return 1;
}

void SqliteDriver::setUp(As as)
{
    sqlite3* const database = m_handle.get();
    m_handle.check(sqlite3_busy_handler(database, &SqliteDriver::waitForTurn, this));
    // A misspelt column must be an error, not a text of its own name.
    m_handle.check(sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr));
    m_handle.check(sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr));
    if (as == As::SoleUse) takeAlone();
    m_handle.check(registerFunctions(m_handle.get(), m_time));
    const bool anyVersion = as == As::AnyFile || as == As::SoleUse;
    if (anyVersion && isOfEarlierVersion())
        m_handle.check(registerOrder(m_handle.get(), TextOrder::CodePoint));
    if (as == As::Library) refuseForeignFile();
    m_handle.run("pragma foreign_keys=off; pragma synchronous=full; pragma temp_store=memory");
    if (as == As::NewFile) m_handle.run("pragma journal_mode=memory");
    if (as == As::Library && !sqlite3_db_readonly(database, "main")) {
        m_handle.run("pragma journal_mode=wal");
        m_queue.emplace(QFile::decodeName(sqlite3_db_filename(database, "main")));
    }
    const auto kept = StatementLife::Kept;
    m_begin = std::make_unique<SqliteStatement>(m_handle, "begin immediate", kept);
    m_commit = std::make_unique<SqliteStatement>(m_handle, "commit", kept);
    m_rollback = std::make_unique<SqliteStatement>(m_handle, "rollback", kept);
}

/// The lock is taken at the first look into the file and kept to the end.
void SqliteDriver::takeAlone() const
{
    try {
        m_handle.run("pragma locking_mode=exclusive; begin exclusive; commit");
    } catch (const Error& error) {
        if (error.number != ErrorNumber::InUse) throw;
        throw Error(ErrorNumber::InUse, u"SQLite"_s,
            u"数据库正在使用，请在所有桌面退出程序后再试："_s + QDir::toNativeSeparators(m_handle.path()));
    }
}

bool SqliteDriver::isOfEarlierVersion() const
{
    return m_handle.number("pragma application_id") == LibraryApplicationId
        && m_handle.number("pragma user_version") < EmbeddedSchemaVersion;
}

void SqliteDriver::refuseUnknownFile() const
{
    const int application = m_handle.number("pragma application_id");
    const int version = m_handle.number("pragma user_version");
    if (application != LibraryApplicationId)
        throw cannotOpen(u"文件里没有图书馆的数据表："_s, m_handle.path());
    if (version > EmbeddedSchemaVersion)
        throw cannotOpen(
            u"数据库由更新版本的程序建立（结构版本 %1，本程序认识 %2），请先升级本程序："_s.arg(version).arg(
                EmbeddedSchemaVersion),
            m_handle.path());
}

void SqliteDriver::refuseForeignFile() const
{
    refuseUnknownFile();
    if (!isOfEarlierVersion()) return;
    throw cannotOpen(
        u"数据库由较早版本的程序建立（结构版本 %1，本程序需要 %2）。请在所有桌面退出程序，然后运行 "
        "quilla-db upgrade 升级："_s.arg(m_handle.number("pragma user_version"))
            .arg(EmbeddedSchemaVersion),
        m_handle.path());
}

/// Whether the file was moved away or replaced under its name: what is written now would be lost.
bool SqliteDriver::wasMoved() const
{
    int moved = 0;
    sqlite3_file_control(m_handle.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved;
}

/// A read may take a tenth of a second to notice.
bool SqliteDriver::wasMovedLately()
{
    const auto now = std::chrono::steady_clock::now();
    if (now - m_lookedAt < std::chrono::milliseconds(100)) return false;
    m_lookedAt = now;
    return wasMoved();
}

/// A write is never sent to it.
void SqliteDriver::refuseMovedFile() const
{
    if (!m_inTransaction && m_queue && wasMoved())
        throw cannotOpen(u"数据库文件已被移走或替换，请再做一次："_s, m_handle.path());
}

bool SqliteDriver::isAlive()
{
    return !m_inTransaction && sqlite3_get_autocommit(m_handle.get()) && !wasMovedLately();
}

/// When the engine gave up the transaction by itself (a full disk), what follows must not stand alone.
void SqliteDriver::refuseAfterLostTransaction() const
{
    if (m_inTransaction && sqlite3_get_autocommit(m_handle.get()))
        throw sqliteError(SQLITE_ABORT_ROLLBACK, u"数据库已撤销当前事务。"_s, m_handle.path());
}

SqliteStatementLoan SqliteDriver::start(
    const sql::Translation& statement, const std::vector<sql::Literal>& literals)
{
    refuseAfterLostTransaction();
    m_time.startStatement();
    auto prepared = m_statements.lend(statement);
    prepared->bind(statement, literals);
    return prepared;
}

int SqliteDriver::execute(const sql::Translation& statement, const std::vector<sql::Literal>& literals)
{
    refuseMovedFile();
    const auto prepared = start(statement, literals);
    const WriteQueue::Head head(queue(), m_patience);
    // Unlike the count of the last statement this one does not move at a statement that changes no rows.
    const int before = sqlite3_total_changes(m_handle.get());
    while (prepared->step()) { }
    return sqlite3_total_changes(m_handle.get()) - before;
}

std::unique_ptr<Cursor> SqliteDriver::query(
    const sql::Translation& statement, const std::vector<sql::Literal>& literals)
{
    auto prepared = start(statement, literals);
    Fields fields = prepared->fields(statement);
    return std::make_unique<SqliteCursor>(std::move(prepared), std::move(fields));
}

void SqliteDriver::run(SqliteStatement& statement)
{
    struct Reset {
        SqliteStatement& statement;
        ~Reset() { statement.reset(); }
    } reset {statement};
    statement.step();
}

/// Where a statement that may write waits; null inside of a transaction, which has its turn.
const WriteQueue* SqliteDriver::queue() const
{
    return m_queue && !m_inTransaction ? &*m_queue : nullptr;
}

void SqliteDriver::begin(OnFailure)
{
    refuseMovedFile();
    const WriteQueue::Head head(queue(), m_patience);
    run(*m_begin);
    m_inTransaction = true;
}

void SqliteDriver::commit()
{
    try {
        refuseAfterLostTransaction();
        run(*m_commit);
        m_inTransaction = false;
    } catch (const Error&) {
        rollback();
        throw;
    }
}

void SqliteDriver::rollback()
{
    if (!std::exchange(m_inTransaction, false) || sqlite3_get_autocommit(m_handle.get())) return;
    run(*m_rollback);
}

} // namespace quilla
