#include "platform/db/embedded.h"

#include "platform/core/new_file.h"
#include "platform/core/text.h"
#include "platform/db/pool.h"
#include "platform/db/sqlite/library_order.h"
#include "platform/db/sqlite/sqlite_driver.h"

#include <QDir>
#include <QFileInfo>

namespace quilla {

namespace {

constexpr QStringView AccessDriver = u"Microsoft Access Driver (*.mdb)";

constexpr int Cancelled = 18;

/// As the connection dialog stored it, quotes doubled.
QString pathOf(QString stored)
{
    stored.replace(u"''"_s, u"'"_s);
    return QDir(QFileInfo(embeddedDatabaseFile()).path()).absoluteFilePath(stored);
}

/// What the engine keeps beside a file. An old log beside a new file would be played into it.
const QStringList Companions {u"-wal"_s, u"-shm"_s, u"-journal"_s};

void useOnce(
    std::unique_ptr<Driver> driver, const sql::Schema& schema, const std::function<void(Connection&)>& use)
{
    sql::Translator translator(sql::Engine::Sqlite, schema);
    const PoolContext context {[&](sql::Engine) -> sql::Translator& { return translator; }, {}, {}};
    const auto pool = std::make_shared<Pool>([&] { return std::move(driver); }, context);
    Connection connection(pool->lend());
    use(connection);
}

/// The version is set in the same transaction: a file that carries it is complete.
void fillLibrary(const QString& path, const sql::Schema& schema, const Clock& clock,
    const std::function<void(Connection&)>& fill)
{
    auto driver = std::make_unique<SqliteDriver>(path, clock, SqliteDriver::As::NewFile);
    const SqliteHandle& handle = driver->handle();
    useOnce(std::move(driver), schema, [&](Connection& connection) {
        connection.begin();
        fill(connection);
        noteOrder(handle);
        handle.run(QByteArray("pragma application_id=" + QByteArray::number(LibraryApplicationId)
            + "; pragma user_version=" + QByteArray::number(EmbeddedSchemaVersion))
                       .constData());
        connection.commit();
    });
}

/// The copy is one file that can be read where nothing can be written; its first opening as a library brings
/// the log back.
void copyDatabase(const SqliteHandle& from, const SqliteHandle& to)
{
    from.number("pragma schema_version"); // fails here, so that the error names the right file
    sqlite3_backup* backup = sqlite3_backup_init(to.get(), "main", from.get(), "main");
    if (!backup) to.fail(sqlite3_extended_errcode(to.get()));
    sqlite3_backup_step(backup, -1);
    to.check(sqlite3_backup_finish(backup));
    to.run("pragma journal_mode=delete");
}

/// What the engine's own check, a pragma, finds in the file.
QStringList faultsOf(const QString& path, const char* check)
{
    const SystemClock clock;
    const SqliteDriver driver(path, clock, SqliteDriver::As::AnyFile);
    // Indexes that another ICU made can't be compared with their rows.
    const bool readable = driver.isOfEarlierVersion() || isInOrder(driver.handle());
    if (!readable) check = "pragma quick_check";
    QStringList faults;
    const int code = sqlite3_exec(
        driver.handle().get(), check,
        [](void* list, int, char** fields, char**) {
            static_cast<QStringList*>(list)->append(QString::fromUtf8(fields[0]));
            return 0;
        },
        &faults, nullptr);
    faults.removeAll(u"ok"_s);
    if (code != SQLITE_OK) faults.append(QString::fromUtf8(sqlite3_errmsg(driver.handle().get())));
    return faults;
}

void refuseFaults(const QStringList& faults, const QString& what)
{
    if (!faults.isEmpty())
        throw Error(SQLITE_CORRUPT, u"SQLite"_s, what + u"\n    "_s + faults.join(u"\n    "_s));
}

/// Reads no row: the engine looks the names up when it prepares the statement.
void lookUpColumns(const SqliteHandle& handle, const sql::Table& table)
{
    QStringList columns;
    for (const sql::Column& column : table.columns)
        columns.append(u"[%1]"_s.arg(column.name));
    handle.run(u"select %1 from [%2] limit 0"_s.arg(columns.join(u','), table.name).toUtf8().constData());
}

void refuseMissingColumns(const SqliteHandle& handle, const sql::Table& table)
{
    try {
        lookUpColumns(handle, table);
    } catch (const Error& error) {
        if (error.number != SQLITE_ERROR) throw;
        throw Error(error.number, error.source,
            u"文件里图书馆的数据表不完整：%1\n表 %2：%3"_s.arg(QDir::toNativeSeparators(handle.path()),
                table.name, QString::fromUtf8(sqlite3_errmsg(handle.get()))));
    }
}

void refuseForeignLibrary(const SqliteDriver& driver, const sql::Schema& schema)
{
    driver.refuseUnknownFile();
    for (const sql::Table& table : schema.tables())
        refuseMissingColumns(driver.handle(), table);
}

/// Copies what is in `source` to the new file `to` and checks the copy.
void copyChecked(
    const SqliteDriver& source, const QString& to, const sql::Schema& schema, const QString& group)
{
    refuseForeignLibrary(source, schema);
    NewFile file(to, Companions, group);
    copyDatabase(source.handle(), SqliteHandle(file.part(), SqliteHandle::Mode::Existing));
    refuseFaults(faultsOf(file.part(), "pragma integrity_check(10)"),
        u"数据库文件已损坏，没有复制：%1\n请改用完好的备份。损坏之处："_s.arg(
            QDir::toNativeSeparators(source.handle().path())));
    file.finish();
}

/// A name that no file has yet: "quilla-v1.db", "quilla-v1-2.db" …
QString nameOfCopy(const QString& path, int version)
{
    const QFileInfo file(path);
    const QString stem = u"%1/%2-v%3"_s.arg(file.path(), file.completeBaseName()).arg(version);
    const QString ending = file.suffix().isEmpty() ? QString() : u'.' + file.suffix();
    QString name = stem + ending;
    for (int number = 2; QFileInfo::exists(name); ++number)
        name = u"%1-%2%3"_s.arg(stem).arg(number).arg(ending);
    return name;
}

void sortAnew(SqliteDriver& sole, Progress& progress)
{
    sortAnew(sole, [&](qsizetype done, qsizetype all) {
        progress.setTotal(all);
        progress.setDone(done);
        if (!progress.goOn()) throw Error(Cancelled, u"SQLite"_s, u"已取消，数据库没有改变。"_s);
    });
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
    const std::function<void(Connection&)>& fill, const QString& group)
{
    NewFile file(path, Companions, group);
    fillLibrary(file.part(), schema, clock, fill);
    refuseFaults(faultsOf(file.part(), "pragma quick_check(10)"), u"没有建立数据库，写入的数据有误："_s);
    file.finish();
}

void backupEmbedded(const QString& from, const QString& to, const sql::Schema& schema, const QString& group)
{
    const SystemClock clock;
    copyChecked(SqliteDriver(from, clock, SqliteDriver::As::AnyFile), to, schema, group);
}

bool isEarlierLibrary(const QString& path)
{
    const SystemClock clock;
    return SqliteDriver(path, clock, SqliteDriver::As::AnyFile).isOfEarlierVersion();
}

Upgrade upgradeEmbedded(const QString& path, const sql::Schema& schema, Progress& progress)
{
    const SystemClock clock;
    SqliteDriver sole(path, clock, SqliteDriver::As::SoleUse);
    sole.refuseUnknownFile();
    Upgrade upgrade;
    if (sole.isOfEarlierVersion()) {
        upgrade.copy = nameOfCopy(path, sole.handle().number("pragma user_version"));
        copyChecked(sole, upgrade.copy, schema, {});
    } else if (isInOrder(sole.handle())) {
        return upgrade;
    }
    progress.begin();
    sortAnew(sole, progress);
    progress.end();
    upgrade.done = true;
    return upgrade;
}

QStringList checkEmbedded(const QString& path)
{
    return faultsOf(path, "pragma integrity_check");
}

void readEmbedded(const QString& path, const sql::Schema& schema, const Clock& clock,
    const std::function<void(Connection&)>& read)
{
    auto driver = std::make_unique<SqliteDriver>(path, clock, SqliteDriver::As::AnyFile);
    driver->refuseUnknownFile();
    if (!driver->isOfEarlierVersion()) driver = openLibraryFile(path, clock);
    useOnce(std::move(driver), schema, read);
}

void tightenEmbedded(const QString& path)
{
    const QString file = QFileInfo(path).canonicalFilePath(); // the log lies beside what a link leads to
    if (file.isEmpty()) return;
    for (const QString& ending : QStringList {QString()} + Companions)
        tightenAccess(file + ending);
}

} // namespace quilla
