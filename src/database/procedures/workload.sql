-- The work of the desk by day or month.
--
-- Where no figure of the whole period is above 0 there is no row; else every day or month has one, since its
-- figures are crossed with all lines, the last of which takes the whole period for its own.
-- 罚款金额 is what was paid, refunds (negative amounts) included. A refund alone is no figure above 0, so the
-- fines are left out where nothing else was.
-- 过期册数 counts the copies that came back after their due date, on the day they came back: that is the
-- desk's work, it goes with the fines beside it, and the figures of a past month never change.
-- 读者人次 counts a reader once for each day on which he borrowed or returned, so that the days of a month
-- add up to the month's line in the year.

-- @tongjiData: 年-月, 如 2003-3 或 2003-03; @monthDays: 该月的天数
create procedure dbo.YueLiuTongTJ @tongjiData varchar(7), @monthDays int
as
select hang.mingcheng as 日期,
    sum(case when f.qi between hang.cong and hang.dao then f.jiechu else 0 end) as 借出册数,
    sum(case when f.qi between hang.cong and hang.dao then f.huanhui else 0 end) as 还回册数,
    sum(case when f.qi between hang.cong and hang.dao then f.guoqi else 0 end) as 过期册数,
    sum(case when f.qi between hang.cong and hang.dao then f.fakuan else 0 end) as 罚款金额,
    sum(case when f.qi between hang.cong and hang.dao then f.renci else 0 end) as 读者人次,
    sum(case when f.qi between hang.cong and hang.dao then f.zhuxiao else 0 end) as 注销册数
from (
    select day(orderdate) as qi, count(*) as jiechu, 0 as huanhui, 0 as guoqi, 0 as fakuan, 0 as renci, 0 as zhuxiao
    from JHK
    where orderdate>=@tongjiData+'-01' and orderdate<dateadd(month,1,@tongjiData+'-01')
    group by day(orderdate)
    union all
    select day(backdate), 0, count(*), sum(case when datediff(day,yhdate,backdate)>0 then 1 else 0 end), 0, 0, 0
    from jhslsk
    where backdate>=@tongjiData+'-01' and backdate<dateadd(month,1,@tongjiData+'-01')
    group by day(backdate)
    union all
    select day(opratedate), 0, 0, 0, sum(sfmoney), 0, 0
    from fkk
    where opratedate>=@tongjiData+'-01' and opratedate<dateadd(month,1,@tongjiData+'-01')
        and (exists (select barcode from JHK where orderdate>=@tongjiData+'-01' and orderdate<dateadd(month,1,@tongjiData+'-01'))
            or exists (select barcode from jhslsk where backdate>=@tongjiData+'-01' and backdate<dateadd(month,1,@tongjiData+'-01'))
            or exists (select barcode from BookOut where outdate>=@tongjiData+'-01' and outdate<dateadd(month,1,@tongjiData+'-01'))
            or exists (select day(opratedate) from fkk where opratedate>=@tongjiData+'-01' and opratedate<dateadd(month,1,@tongjiData+'-01')
                group by day(opratedate) having sum(sfmoney)>0))
    group by day(opratedate)
    union all
    select v.qi, 0, 0, 0, 0, count(*), 0
    from (
        select readercode, day(orderdate) as qi from JHK
        where orderdate>=@tongjiData+'-01' and orderdate<dateadd(month,1,@tongjiData+'-01')
        union
        select readercode, day(backdate) from jhslsk
        where backdate>=@tongjiData+'-01' and backdate<dateadd(month,1,@tongjiData+'-01')
    ) v
    group by v.qi
    union all
    select day(outdate), 0, 0, 0, 0, 0, count(*)
    from BookOut
    where outdate>=@tongjiData+'-01' and outdate<dateadd(month,1,@tongjiData+'-01')
    group by day(outdate)
) f
cross join (
    select 100 as xu, 1 as cong, @monthDays as dao, '合计' as mingcheng
    union all
    select n.shu, n.shu, n.shu, convert(varchar(2),n.shu)
    from (
        select shi.shu+ge.shu as shu
        from (select 0 as shu union all select 10 union all select 20 union all select 30) shi
        cross join (select 0 as shu union all select 1 union all select 2 union all select 3 union all select 4
            union all select 5 union all select 6 union all select 7 union all select 8 union all select 9) ge
    ) n
    where n.shu between 1 and 31 and n.shu<=@monthDays
) hang
group by hang.xu, hang.mingcheng
order by hang.xu
go

-- @tongjiData: 年
create procedure dbo.nianLiuTongTJ @tongjiData varchar(4)
as
select hang.mingcheng as 月份,
    sum(case when f.qi between hang.cong and hang.dao then f.jiechu else 0 end) as 借出册数,
    sum(case when f.qi between hang.cong and hang.dao then f.huanhui else 0 end) as 还回册数,
    sum(case when f.qi between hang.cong and hang.dao then f.guoqi else 0 end) as 过期册数,
    sum(case when f.qi between hang.cong and hang.dao then f.fakuan else 0 end) as 罚款金额,
    sum(case when f.qi between hang.cong and hang.dao then f.renci else 0 end) as 读者人次,
    sum(case when f.qi between hang.cong and hang.dao then f.zhuxiao else 0 end) as 注销册数
from (
    select month(orderdate) as qi, count(*) as jiechu, 0 as huanhui, 0 as guoqi, 0 as fakuan, 0 as renci, 0 as zhuxiao
    from JHK
    where orderdate>=@tongjiData+'-01-01' and orderdate<dateadd(year,1,@tongjiData+'-01-01')
    group by month(orderdate)
    union all
    select month(backdate), 0, count(*), sum(case when datediff(day,yhdate,backdate)>0 then 1 else 0 end), 0, 0, 0
    from jhslsk
    where backdate>=@tongjiData+'-01-01' and backdate<dateadd(year,1,@tongjiData+'-01-01')
    group by month(backdate)
    union all
    select month(opratedate), 0, 0, 0, sum(sfmoney), 0, 0
    from fkk
    where opratedate>=@tongjiData+'-01-01' and opratedate<dateadd(year,1,@tongjiData+'-01-01')
        and (exists (select barcode from JHK where orderdate>=@tongjiData+'-01-01' and orderdate<dateadd(year,1,@tongjiData+'-01-01'))
            or exists (select barcode from jhslsk where backdate>=@tongjiData+'-01-01' and backdate<dateadd(year,1,@tongjiData+'-01-01'))
            or exists (select barcode from BookOut where outdate>=@tongjiData+'-01-01' and outdate<dateadd(year,1,@tongjiData+'-01-01'))
            or exists (select month(opratedate) from fkk where opratedate>=@tongjiData+'-01-01' and opratedate<dateadd(year,1,@tongjiData+'-01-01')
                group by month(opratedate) having sum(sfmoney)>0))
    group by month(opratedate)
    union all
    select v.qi, 0, 0, 0, 0, count(*), 0
    from (
        select readercode, month(orderdate) as qi, day(orderdate) as ri from JHK
        where orderdate>=@tongjiData+'-01-01' and orderdate<dateadd(year,1,@tongjiData+'-01-01')
        union
        select readercode, month(backdate), day(backdate) from jhslsk
        where backdate>=@tongjiData+'-01-01' and backdate<dateadd(year,1,@tongjiData+'-01-01')
    ) v
    group by v.qi
    union all
    select month(outdate), 0, 0, 0, 0, 0, count(*)
    from BookOut
    where outdate>=@tongjiData+'-01-01' and outdate<dateadd(year,1,@tongjiData+'-01-01')
    group by month(outdate)
) f
cross join (
    select 100 as xu, 1 as cong, 12 as dao, '合计' as mingcheng
    union all
    select n.shu, n.shu, n.shu, convert(varchar(2),n.shu)
    from (
        select 1 as shu union all select 2 union all select 3 union all select 4 union all select 5 union all select 6
        union all select 7 union all select 8 union all select 9 union all select 10 union all select 11
        union all select 12
    ) n
) hang
group by hang.xu, hang.mingcheng
order by hang.xu
go
