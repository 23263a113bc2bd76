#include "platform/db/server_probe.h"

#include "platform/core/error.h"
#include "platform/core/text.h"
#include "platform/db/odbc/host_probe.h"
#include "platform/db/odbc/odbc_driver.h"
#include "platform/db/odbc/odbc_text.h"
#include "platform/db/server_schema.h"
#include "platform/sql/postgres_preparation.h"

#include <QElapsedTimer>

namespace quilla {

namespace {

/// What a server is asked in its own words. Each select brings one number.
struct Questions {
    const char16_t* reach; ///< 1 when the login may look into the schema
    const char16_t* make; ///< 1 when it may make tables
    const char16_t* table; ///< of "%1": 0 when a right is missing, 1 when none is, 2 when there is no table
    const char16_t* view; ///< the same, for reading alone
    const char16_t* run; ///< 1 when it may run the procedures
};

constexpr Questions Postgres {
    .reach = u"SELECT CASE WHEN current_schema() IS NULL THEN 0 ELSE 1 END",
    .make = u"SELECT has_schema_privilege(current_schema(), 'CREATE')::int",
    .table
    = u"SELECT CASE WHEN to_regclass('%1') IS NULL THEN 2 WHEN has_table_privilege('%1', 'SELECT') AND "
      u"has_table_privilege('%1', 'INSERT') AND has_table_privilege('%1', 'UPDATE') AND "
      u"has_table_privilege('%1', 'DELETE') THEN 1 ELSE 0 END",
    .view = u"SELECT CASE WHEN to_regclass('%1') IS NULL THEN 2 WHEN has_table_privilege('%1', 'SELECT') "
            u"THEN 1 ELSE 0 END",
    .run = u"SELECT 1",
};

/// There a table for which the login has no right looks like one that does not exist.
constexpr Questions SqlServer {
    .reach = u"select 1",
    .make = u"select has_perms_by_name(db_name(),'DATABASE','CREATE TABLE')",
    .table
    = u"select case when object_id('%1') is null then 2 when has_perms_by_name('%1','OBJECT','SELECT')=1 "
      u"and has_perms_by_name('%1','OBJECT','INSERT')=1 and has_perms_by_name('%1','OBJECT','UPDATE')=1 "
      u"and has_perms_by_name('%1','OBJECT','DELETE')=1 then 1 else 0 end",
    .view
    = u"select case when object_id('%1') is null then 2 when has_perms_by_name('%1','OBJECT','SELECT')=1 "
      u"then 1 else 0 end",
    .run = u"select has_perms_by_name('dbo','SCHEMA','EXECUTE')",
};

const Questions& questionsFor(sql::Engine engine)
{
    return engine == sql::Engine::Postgres ? Postgres : SqlServer;
}

const ServerKind* kindOf(const QString& driver)
{
    const bool postgres = driver.contains(u"postgres"_s, Qt::CaseInsensitive)
        || driver.contains(u"psqlodbc"_s, Qt::CaseInsensitive);
    const bool sqlServer = driver.contains(u"SQL Server"_s, Qt::CaseInsensitive)
        || driver.contains(u"FreeTDS"_s, Qt::CaseInsensitive)
        || driver.contains(u"tdsodbc"_s, Qt::CaseInsensitive);
    if (postgres) return &serverKinds()[0];
    return sqlServer ? &serverKinds()[1] : nullptr;
}

struct Endpoint {
    QString host; ///< empty where the driver alone knows it
    int port = 0;
};

/// A named instance has a port that only the server knows.
Endpoint endpointOf(const ConnectionItems& items, const ServerKind* kind)
{
    QString server = settingOf(items, {u"Servername", u"Server", u"Address"});
    if (server.startsWith(u"tcp:"_s)) server.remove(0, 4);
    if (!kind || server.contains(u'\\')) return {};
    const QString port = server.contains(u',') ? server.section(u',', 1) : settingOf(items, {u"Port"});
    const int number = port.toInt();
    return {server.section(u',', 0, 0).trimmed(), number > 0 ? number : kind->port};
}

ConnectionItems withDatabase(ConnectionItems items, const QString& database)
{
    std::erase_if(items.items,
        [](const auto& item) { return item.first.compare(u"Database"_s, Qt::CaseInsensitive) == 0; });
    items.items.emplace_back(u"Database"_s, database);
    return items;
}

/// The way from a text to a library, a method a step. A step that fails throws.
class Probe {
public:
    Probe(const ConnectionItems& items, const sql::Schema& schema, ServerProbe& probe)
        : m_items(items)
        , m_schema(schema)
        , m_probe(probe)
    {
    }

    void findDriver()
    {
        const QString source = m_items.value(u"DSN").value_or(QString());
        m_probe.place = source.isEmpty() ? m_items.value(u"Driver").value_or(QString()) : source;
        const OdbcInstallation installed = OdbcInstallation::read();
        odbcText(m_items, installed);
        QString driver = m_probe.place;
        for (const auto& known : installed.dataSources)
            if (known.name.compare(source, Qt::CaseInsensitive) == 0) driver = known.driver;
        m_kind = kindOf(driver);
        m_endpoint = endpointOf(m_items, m_kind);
    }

    void findHost()
    {
        m_probe.place = m_endpoint.host;
        if (!m_endpoint.host.isEmpty()) m_addresses = addressesOf(m_endpoint.host, m_endpoint.port);
    }

    void findPort()
    {
        m_probe.place = u"%1:%2"_s.arg(m_endpoint.host).arg(m_endpoint.port);
        if (!m_addresses.empty()) knock(m_addresses);
    }

    /// Only a second attempt shows whether the password is wrong or the database.
    void logIn()
    {
        const QString port = m_probe.place;
        m_probe.place = settingOf(m_items, {u"UID", u"Username"});
        QElapsedTimer waited;
        waited.start();
        try {
            m_driver = std::make_unique<OdbcDriver>(m_items);
        } catch (const Error& error) {
            m_refusal = error.text;
        }
        if (m_driver) return;
        constexpr int nearly = OdbcConnection::LoginSeconds * 1000 - 500;
        if (waited.elapsed() > nearly) failAs(ServerStep::Port, port);
        if (!anyDatabaseOpens()) throw Error(ErrorNumber::CannotOpen, u"ODBC"_s, m_refusal);
    }

    void openDatabase()
    {
        m_probe.place = settingOf(m_items, {u"Database"});
        if (!m_driver) throw Error(ErrorNumber::CannotOpen, u"ODBC"_s, m_refusal);
    }

    void testRights()
    {
        const Questions& questions = questionsFor(m_driver->engine());
        m_probe.place = settingOf(m_items, {u"UID", u"Username"});
        need(questions.reach, u"不能进入数据库里的模式（schema）。"_s);
        for (const sql::Table& table : m_schema.tables())
            testRight(table, table.view ? questions.view : questions.table);
        if (m_found.isEmpty())
            need(questions.make, u"没有看到图书馆的表，这个用户也不能建表。"_s);
        else
            need(questions.run, u"不能运行存储过程。"_s);
    }

    void testSchema()
    {
        m_probe.place = settingOf(m_items, {u"Database"});
        const qint64 version = serverSchemaVersion(*m_driver);
        if (version > sql::PostgresSchemaVersion)
            refuse(u"结构版本是 %1，本程序只认识 %2。"_s.arg(version).arg(sql::PostgresSchemaVersion));
        const bool known = m_driver->engine() != sql::Engine::Postgres || version > 0;
        if (m_found.isEmpty() && version == 0)
            m_probe.state = ServerProbe::State::Empty;
        else if (!m_missing.isEmpty() || !known)
            refuse(m_missing.isEmpty() ? u"表不是本程序建立的。"_s
                                       : u"缺少表或视图：%1。"_s.arg(m_missing.join(u"、"_s)));
        else
            m_probe.state = version > 0 && version < sql::PostgresSchemaVersion ? ServerProbe::State::Earlier
                                                                                : ServerProbe::State::Ready;
    }

private:
    [[noreturn]] static void refuse(const QString& words)
    {
        throw Error(ErrorNumber::CannotOpen, u"server"_s, words);
    }

    /// Somebody listens there who does not speak the language of a database.
    [[noreturn]] void failAs(ServerStep step, const QString& place)
    {
        m_probe.step = step;
        m_probe.place = place;
        refuse(u"有程序应答，但 %1 秒内没有像数据库服务器那样回答。"_s.arg(OdbcConnection::LoginSeconds));
    }

    bool anyDatabaseOpens() const
    {
        for (const QString& name : m_kind ? m_kind->commonDatabases : QStringList()) {
            try {
                const OdbcConnection attempt(withDatabase(m_items, name));
                return true;
            } catch (const Error&) {
                continue;
            }
        }
        return false;
    }

    void need(const char16_t* question, const QString& words) const
    {
        if (m_driver->number(question) != 1) refuse(words);
    }

    void testRight(const sql::Table& table, const char16_t* question)
    {
        constexpr qint64 noRight = 0;
        constexpr qint64 notThere = 2;
        const qint64 answer = m_driver->number(QString::fromUtf16(question).replace(u"%1"_s, table.name));
        if (answer == noRight)
            refuse((table.view ? u"没有读视图 %1 的权限。"_s : u"没有读写表 %1 的权限。"_s).arg(table.name));
        (answer == notThere ? m_missing : m_found).append(table.name);
    }

    const ConnectionItems& m_items;
    const sql::Schema& m_schema;
    ServerProbe& m_probe;
    const ServerKind* m_kind = nullptr;
    Endpoint m_endpoint;
    std::vector<HostAddress> m_addresses;
    std::unique_ptr<OdbcDriver> m_driver;
    QString m_refusal; ///< what the server said when it did not open the database
    QStringList m_found;
    QStringList m_missing;
};

} // namespace

std::span<const ServerKind> serverKinds()
{
    static const ServerKind kinds[] {
        {u"PostgreSQL"_s, u"PostgreSQL Unicode"_s, 5432, u"SSLmode=require"_s, u";Port="_s,
            {u"postgres"_s, u"template1"_s}},
        {u"SQL Server"_s, u"SQL Server"_s, 1433, {}, u","_s, {u"master"_s}},
    };
    return kinds;
}

ServerProbe probeServer(
    const ConnectionItems& items, const sql::Schema& schema, const std::function<void(ServerStep)>& begun)
{
    ServerProbe probe;
    Probe steps(items, schema, probe);
    const std::pair<ServerStep, void (Probe::*)()> all[] {{ServerStep::Driver, &Probe::findDriver},
        {ServerStep::Name, &Probe::findHost}, {ServerStep::Port, &Probe::findPort},
        {ServerStep::Login, &Probe::logIn}, {ServerStep::Database, &Probe::openDatabase},
        {ServerStep::Rights, &Probe::testRights}, {ServerStep::Schema, &Probe::testSchema}};
    try {
        for (const auto& [step, run] : all) {
            probe.step = step;
            begun(step);
            (steps.*run)();
        }
    } catch (const Error& error) {
        probe.state = ServerProbe::State::Failed;
        probe.words = error.text;
        // in these words whatever language the server speaks otherwise, the second in those before PostgreSQL
        // 14
        probe.needsEncryption = probe.words.contains(u"no encryption") || probe.words.contains(u"SSL off");
        probe.lacksEncryption = probe.words.contains(u"does not support SSL");
    }
    return probe;
}

} // namespace quilla
