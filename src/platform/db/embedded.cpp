#include "platform/db/embedded.h"

#include "platform/core/text.h"
#include "platform/db/pool.h"
#include "platform/db/sqlite/sqlite_driver.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

namespace quilla {

namespace {

constexpr QStringView AccessDriver = u"Microsoft Access Driver (*.mdb)";

/// As the connection dialog stored it, quotes doubled.
QString pathOf(QString stored)
{
    stored.replace(u"''"_s, u"'"_s);
    return QDir(QFileInfo(embeddedDatabaseFile()).path()).absoluteFilePath(stored);
}

/// A file that comes to stand under its name when all of it is there, or not at all.
class NewFile {
public:
    explicit NewFile(const QString& path)
        : m_path(path)
        , m_part(path + u".part"_s)
        , m_maker(m_part + u".lock"_s)
    {
        if (QFile::exists(path)) throw fault(u"文件已经存在："_s);
        if (!QDir().mkpath(QFileInfo(path).absolutePath())) throw fault(u"不能建立文件夹，文件为："_s);
        claim();
        removePart();
    }
    ~NewFile()
    {
        if (m_maker.isLocked()) removePart();
    }
    Q_DISABLE_COPY_MOVE(NewFile)

    const QString& part() const { return m_part; }
    void finish()
    {
        // Does not overwrite what came to stand there meanwhile.
        if (!QFile::rename(m_part, m_path)) throw fault(u"不能建立文件："_s);
    }

private:
    /// Two programs that make the same file would take each other's part away.
    void claim()
    {
        m_maker.setStaleLockTime(0);
        if (m_maker.tryLock()) return;
        const bool taken = m_maker.error() == QLockFile::LockFailedError;
        throw fault(taken ? u"另一个程序正在建立这个文件："_s : u"不能建立文件："_s);
    }
    Error fault(const QString& what) const
    {
        return Error(ErrorNumber::CannotOpen, u"SQLite"_s, what + QDir::toNativeSeparators(m_path));
    }
    void removePart()
    {
        for (const QStringView suffix : {u"", u"-wal", u"-shm", u"-journal"})
            QFile::remove(m_part + suffix.toString());
    }

    QString m_path;
    QString m_part;
    QLockFile m_maker;
};

/// The version is set in the same transaction: a file that carries it is complete.
void fillLibrary(const QString& path, const sql::Schema& schema, const Clock& clock,
    const std::function<void(Connection&)>& fill)
{
    auto driver = std::make_unique<SqliteDriver>(path, clock, SqliteDriver::As::NewFile);
    const SqliteHandle& handle = driver->handle();
    sql::Translator translator(sql::Engine::Sqlite, schema);
    const PoolContext context {[&](sql::Engine) -> sql::Translator& { return translator; }, {}, {}};
    const auto pool = std::make_shared<Pool>([&] { return std::move(driver); }, context);
    Connection connection(pool->lend());
    connection.begin();
    fill(connection);
    handle.run(QByteArray("pragma application_id=" + QByteArray::number(LibraryApplicationId)
        + "; pragma user_version=" + QByteArray::number(EmbeddedSchemaVersion))
                   .constData());
    connection.commit();
}

/// The copy is one file that can be read where nothing can be written; its first opening as a library brings
/// the log back.
void copyDatabase(const SqliteHandle& from, const SqliteHandle& to)
{
    from.number("pragma schema_version"); // what can't be read is told with its own name
    sqlite3_backup* backup = sqlite3_backup_init(to.get(), "main", from.get(), "main");
    if (!backup) to.fail(sqlite3_extended_errcode(to.get()));
    sqlite3_backup_step(backup, -1);
    to.check(sqlite3_backup_finish(backup));
    to.run("pragma journal_mode=delete");
}

} // namespace

std::optional<QString> embeddedFileOf(const ConnectionItems& items)
{
    const QString database = items.value(u"Database").value_or(QString());
    if (const auto dsn = items.value(u"DSN")) {
        if (dsn->compare(BuiltInDataSource, Qt::CaseInsensitive) != 0) return {};
        return database.isEmpty() ? embeddedDatabaseFile() : pathOf(database);
    }
    const QString driver = items.value(u"Driver").value_or(QString());
    if (driver.compare(AccessDriver, Qt::CaseInsensitive) != 0) return {};
    return database.isEmpty() ? QString() : pathOf(database);
}

void createEmbedded(const QString& path, const sql::Schema& schema, const Clock& clock,
    const std::function<void(Connection&)>& fill)
{
    NewFile file(path);
    fillLibrary(file.part(), schema, clock, fill);
    file.finish();
}

void backupEmbedded(const QString& from, const QString& to)
{
    const SqliteHandle source(from, SqliteHandle::Mode::Existing);
    NewFile file(to);
    copyDatabase(source, SqliteHandle(file.part(), SqliteHandle::Mode::Create));
    file.finish();
}

QStringList checkEmbedded(const QString& path)
{
    const SystemClock clock;
    const SqliteDriver driver(path, clock, SqliteDriver::As::AnyFile);
    QStringList faults;
    const int code = sqlite3_exec(
        driver.handle().get(), "pragma integrity_check",
        [](void* list, int, char** fields, char**) {
            static_cast<QStringList*>(list)->append(QString::fromUtf8(fields[0]));
            return 0;
        },
        &faults, nullptr);
    faults.removeAll(u"ok"_s);
    if (code != SQLITE_OK) faults.append(QString::fromUtf8(sqlite3_errmsg(driver.handle().get())));
    return faults;
}

} // namespace quilla
