-- The books lent by day or month and main class.
--
-- All that was lent counts, also copies that have been withdrawn since. The classes L, M, W and Y have no
-- column, and 小计 is the sum of the columns. Lines as in the workload.

-- @tongjiData: 年-月 (如 2003-3 或 2003-03) 或年; @monthDays: 该月的天数
create procedure dbo.{name} {parameters}
as
select x.mingcheng as {caption},
    sum(case x.lei when 'A' then x.ceshu else 0 end) as A类,
    sum(case x.lei when 'B' then x.ceshu else 0 end) as B类,
    sum(case x.lei when 'C' then x.ceshu else 0 end) as C类,
    sum(case x.lei when 'D' then x.ceshu else 0 end) as D类,
    sum(case x.lei when 'E' then x.ceshu else 0 end) as E类,
    sum(case x.lei when 'F' then x.ceshu else 0 end) as F类,
    sum(case x.lei when 'G' then x.ceshu else 0 end) as G类,
    sum(case x.lei when 'H' then x.ceshu else 0 end) as H类,
    sum(case x.lei when 'I' then x.ceshu else 0 end) as I类,
    sum(case x.lei when 'J' then x.ceshu else 0 end) as J类,
    sum(case x.lei when 'K' then x.ceshu else 0 end) as K类,
    sum(case x.lei when 'N' then x.ceshu else 0 end) as N类,
    sum(case x.lei when 'O' then x.ceshu else 0 end) as O类,
    sum(case x.lei when 'P' then x.ceshu else 0 end) as P类,
    sum(case x.lei when 'Q' then x.ceshu else 0 end) as Q类,
    sum(case x.lei when 'R' then x.ceshu else 0 end) as R类,
    sum(case x.lei when 'S' then x.ceshu else 0 end) as S类,
    sum(case x.lei when 'T' then x.ceshu else 0 end) as T类,
    sum(case x.lei when 'U' then x.ceshu else 0 end) as U类,
    sum(case x.lei when 'V' then x.ceshu else 0 end) as V类,
    sum(case x.lei when 'X' then x.ceshu else 0 end) as X类,
    sum(case x.lei when 'Z' then x.ceshu else 0 end) as Z类,
    sum(x.ceshu) as 小计
from (
    select hang.xu, hang.mingcheng, f.lei, case when f.qi between hang.cong and hang.dao then f.ceshu else 0 end as ceshu
    from (
        select k.qi, k.lei, count(*) as ceshu
        from (
            select {part}(j.orderdate) as qi, left(z.classcode,1) as lei
            from JHK j
            join sck s on j.barcode=s.barcode
            join zsk z on s.zskid=z.zskid
            where j.orderdate>={begin} and j.orderdate<{end}
        ) k
        where k.lei in ('A','B','C','D','E','F','G','H','I','J','K',
            'N','O','P','Q','R','S','T','U','V','X','Z')
        group by k.qi, k.lei
    ) f
    cross join (
        select 100 as xu, 1 as cong, {lines} as dao, '合计' as mingcheng
        union all
        select n.shu, n.shu, n.shu, convert(varchar(2),n.shu)
        from (
            select shi.shu+ge.shu as shu
            from (select 0 as shu union all select 10 union all select 20 union all select 30) shi
            cross join (select 0 as shu union all select 1 union all select 2 union all select 3 union all select 4
                union all select 5 union all select 6 union all select 7 union all select 8 union all select 9) ge
        ) n
        where n.shu between 1 and 31 and n.shu<={lines}
    ) hang
) x
group by x.xu, x.mingcheng
order by x.xu
go
