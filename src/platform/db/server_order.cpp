#include "platform/db/server_order.h"

#include "platform/core/text.h"
#include "platform/db/open_driver.h"

namespace quilla {

namespace {

/// One row where the collation is an earlier program's, or the server's ICU not the one of the indexes.
constexpr QStringView StaleOrder
    = u"SELECT CASE WHEN colliculocale <> 'zh-u-ks-level2' THEN 1 ELSE 2 END FROM pg_collation "
      u"WHERE collname = 'quilla' AND pg_collation_is_visible(oid) AND (colliculocale <> 'zh-u-ks-level2' "
      u"OR collversion IS DISTINCT FROM pg_collation_actual_version(oid))";

/// The server tells by itself which indexes hang on the collation. The new version is noted in the same
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

/// 0 when the order is this program's, 1 for an earlier program's, 2 for that of another ICU.
qint64 staleness(Driver& driver)
{
    sql::Translation select = inOwnWords(StaleOrder);
    select.writes = false;
    select.returnsRows = true;
    select.columns = {sql::Kind::Integer};
    const auto cursor = driver.query(select, {});
    return cursor->step() ? cursor->cell(0).number : 0;
}

} // namespace

bool renewServerOrder(const ConnectionItems& items)
{
    const SystemClock clock;
    const auto driver = openDriver(items, clock);
    if (driver->engine() != sql::Engine::Postgres) return false;
    driver->begin(OnFailure::EndTransaction);
    const qint64 stale = staleness(*driver);
    if (stale) driver->execute(inOwnWords(stale == 1 ? ChangeCollation : MakeIndexesAnew), {});
    driver->commit();
    return stale != 0;
}

} // namespace quilla
