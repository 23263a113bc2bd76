#include "platform/db/server_schema.h"

#include "platform/core/text.h"
#include "platform/db/odbc/odbc_driver.h"
#include "platform/sql/postgres_preparation.h"

namespace quilla {

namespace {

/// 0 where there is no library. Earlier programs did not note their version.
constexpr QStringView NotedVersion
    = u"SELECT coalesce((SELECT coalesce(obj_description(oid, 'pg_collation'), '2')::integer "
      u"FROM pg_collation WHERE collname = 'quilla' AND pg_collation_is_visible(oid)), 0)";

/// 1 where the collation is an earlier program's, 2 where the server's ICU is not the one of the indexes,
/// else 0. The column with its locale has another name in PostgreSQL 14 and from 17 on.
constexpr QStringView StaleOrder
    = u"SELECT coalesce((SELECT CASE WHEN coalesce(to_jsonb(c)->>'colllocale', to_jsonb(c)->>'colliculocale', "
      u"collcollate) <> 'zh-u-ks-level2' THEN 1 WHEN collversion IS DISTINCT FROM pg_collation_actual_version(oid) THEN 2 END "
      u"FROM pg_collation c WHERE collname = 'quilla' AND pg_collation_is_visible(oid)), 0)";

/// The server knows which indexes depend on the collation. The new version is noted in the same
/// transaction, so that no crash can leave an old index under it.
constexpr QStringView MakeIndexesAnew = uR"(DO $$
DECLARE
    item record;
BEGIN
    FOR item IN SELECT DISTINCT i.indexrelid::regclass AS name FROM pg_index i
        WHERE 'quilla'::regcollation::oid = ANY (i.indcollation::oid[])
    LOOP
        EXECUTE format('REINDEX INDEX %s', item.name);
    END LOOP;
    ALTER COLLATION quilla REFRESH VERSION;
END $$)";

/// A collation can't be changed in place. The new one and the types that carry it take the names of the old
/// ones, the columns change to them, which makes their indexes anew, and views are taken away meanwhile, with
/// those who may use them put back.
constexpr QStringView ChangeCollation = uR"(DO $$
DECLARE
    item record;
BEGIN
    CREATE TEMP TABLE qj_views ON COMMIT DROP AS
        SELECT oid, oid::regclass::text AS name, pg_get_viewdef(oid) AS definition, relacl
        FROM pg_class WHERE relkind = 'v' AND relnamespace = current_schema()::regnamespace;
    CREATE TEMP TABLE qj_types ON COMMIT DROP AS
        SELECT t.oid, t.typname AS name, coalesce((SELECT string_agg(pg_get_constraintdef(c.oid), ' ')
                FROM pg_constraint c WHERE c.contypid = t.oid), '') AS checks
        FROM pg_type t WHERE t.typtype = 'd' AND t.typcollation = 'quilla'::regcollation;

    FOR item IN SELECT name FROM qj_views ORDER BY oid DESC LOOP
        EXECUTE format('DROP VIEW %s', item.name);
    END LOOP;
    ALTER COLLATION quilla RENAME TO qj_former;
    CREATE COLLATION quilla (provider = icu, locale = 'zh-u-ks-level2', deterministic = false);
    FOR item IN SELECT name, checks FROM qj_types LOOP
        EXECUTE format('ALTER DOMAIN %I RENAME TO %I', item.name, item.name || '_former');
        EXECUTE format('CREATE DOMAIN %I AS bpchar COLLATE quilla %s', item.name, item.checks);
    END LOOP;
    FOR item IN SELECT a.attrelid::regclass AS name,
            string_agg(format('ALTER COLUMN %I TYPE %I', a.attname, t.name), ', ') AS changes
        FROM pg_attribute a JOIN qj_types t ON t.oid = a.atttypid JOIN pg_class c ON c.oid = a.attrelid
        WHERE c.relkind = 'r' AND NOT a.attisdropped GROUP BY a.attrelid
    LOOP
        EXECUTE format('ALTER TABLE %s %s', item.name, item.changes);
    END LOOP;
    FOR item IN SELECT name FROM qj_types LOOP
        EXECUTE format('DROP DOMAIN %I', item.name || '_former');
    END LOOP;
    DROP COLLATION qj_former;
    FOR item IN SELECT name, definition FROM qj_views ORDER BY oid LOOP
        EXECUTE format('CREATE VIEW %s AS %s', item.name, item.definition);
    END LOOP;
    FOR item IN SELECT v.name, a.privilege_type AS may,
            CASE a.grantee WHEN 0 THEN 'PUBLIC' ELSE a.grantee::regrole::text END AS who
        FROM qj_views v, aclexplode(v.relacl) a
    LOOP
        EXECUTE format('GRANT %s ON %s TO %s', item.may, item.name, item.who);
    END LOOP;
END $$)";

sql::Translation inOwnWords(QStringView text)
{
    sql::Translation statement;
    statement.text = text.toUtf8();
    statement.writes = true;
    return statement;
}

} // namespace

qint64 serverSchemaVersion(const OdbcDriver& driver)
{
    return driver.engine() == sql::Engine::Postgres ? driver.number(NotedVersion) : 0;
}

void refuseOtherSchema(const OdbcDriver& driver)
{
    const qint64 version = serverSchemaVersion(driver);
    if (version == 0 || version == sql::PostgresSchemaVersion) return;
    const QString told = version > sql::PostgresSchemaVersion
        ? u"数据库由更新版本的程序建立（结构版本 %1，本程序认识 %2），请先升级本程序。"_s
        : u"数据库由较早版本的程序建立（结构版本 %1，本程序需要 %2）。请在所有桌面退出程序，然后运行 quilla-db "
          "upgrade 升级。"_s;
    throw Error(ErrorNumber::CannotOpen, u"PostgreSQL"_s, told.arg(version).arg(sql::PostgresSchemaVersion));
}

bool upgradeServer(const ConnectionItems& items, const sql::Schema& schema)
{
    OdbcDriver driver(items);
    if (driver.engine() != sql::Engine::Postgres) return false;
    driver.begin(OnFailure::EndTransaction);
    const qint64 version = driver.number(NotedVersion);
    if (version > sql::PostgresSchemaVersion) refuseOtherSchema(driver);
    const qint64 stale = driver.number(StaleOrder);
    if (stale) driver.execute(inOwnWords(stale == 1 ? ChangeCollation : MakeIndexesAnew), {});
    const bool renewed = version && (stale == 1 || version < sql::PostgresSchemaVersion);
    if (renewed)
        for (const QString& statement : sql::postgresRenewal(schema))
            driver.execute(inOwnWords(statement), {});
    driver.commit();
    return stale || renewed;
}

} // namespace quilla
