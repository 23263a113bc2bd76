-- Divides the history of loans on PostgreSQL into a partition a year, so that a statistic reads only the years it
-- asks for. Worth it beyond some 20 million rows. Run it once, as the owner, with all desks closed:
--   psql -v ON_ERROR_STOP=1 -f partition-history.sql "host=… user=library_owner dbname=library"
-- One transaction: it leaves the old table or the new one. Afterwards give the desks their rights again, on the
-- numbers of the history too, without which no book can be returned:
--   grant select, insert, update, delete on all tables in schema public to library_desk;
--   grant usage on sequence jhslsk_number to library_desk;
-- Rows that no year takes go to jhslsk_rest; add a year before it begins:
--   create table jhslsk_2032 partition of jhslsk for values from ('2032-01-01') to ('2033-01-01');
begin;
do $$
declare
    first_year int := (select extract(year from coalesce(min(backdate), now())) from jhslsk);
    next_number int := (select coalesce(max(jhslsk), 0) + 1 from jhslsk);
    item record;
    y int;
begin
    create temp table qj_views on commit drop as
        select c.relname, pg_get_viewdef(c.oid) as definition
        from pg_class c where c.oid in ('jhslskv'::regclass, 'jhk'::regclass);
    drop view jhslskv, jhk;

    alter table jhslsk rename to jhslsk_whole;
    create table jhslsk (like jhslsk_whole including defaults) partition by range (backdate);
    execute format('create sequence jhslsk_number owned by jhslsk.jhslsk start %s', next_number);
    alter table jhslsk alter jhslsk set default nextval('jhslsk_number');
    for y in first_year .. extract(year from now())::int + 5 loop
        execute format('create table jhslsk_%s partition of jhslsk for values from (%L) to (%L)',
            y, make_date(y, 1, 1), make_date(y + 1, 1, 1));
    end loop;
    create table jhslsk_rest partition of jhslsk default;
    insert into jhslsk select * from jhslsk_whole order by jhslsk;
    drop table jhslsk_whole;

    create index on jhslsk (jhslsk);
    create index on jhslsk (readercode nulls first, backdate nulls first);
    create index on jhslsk (barcode nulls first, backdate nulls first);
    create index on jhslsk (backdate nulls first);
    create index on jhslsk (orderdate nulls first);
    for item in select * from qj_views loop
        execute format('create view %I as %s', item.relname, item.definition);
    end loop;
end $$;
commit;
analyze jhslsk;
