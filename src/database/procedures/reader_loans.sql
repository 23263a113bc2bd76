-- The books lent to readers.

-- 各类读者一个月每天借出的册数. @nian: 年, @yue: 月
--
-- One line a type, in the order and the spelling in which the types were entered; types that only cards
-- carry follow. Types without a loan stand there with 0, but a month without any loan brings no row. What
-- deleted readers had borrowed stands in a line without a type, so that the lines add up to all that was
-- lent.
create procedure dbo.procydztj @nian varchar(10), @yue varchar(10)
as
select isnull(min(x.liebiao),x.leixing) as 读者类型, sum(x.ceshu) as 小计,
    sum(case x.ri when 1 then x.ceshu else 0 end) as t1,
    sum(case x.ri when 2 then x.ceshu else 0 end) as t2,
    sum(case x.ri when 3 then x.ceshu else 0 end) as t3,
    sum(case x.ri when 4 then x.ceshu else 0 end) as t4,
    sum(case x.ri when 5 then x.ceshu else 0 end) as t5,
    sum(case x.ri when 6 then x.ceshu else 0 end) as t6,
    sum(case x.ri when 7 then x.ceshu else 0 end) as t7,
    sum(case x.ri when 8 then x.ceshu else 0 end) as t8,
    sum(case x.ri when 9 then x.ceshu else 0 end) as t9,
    sum(case x.ri when 10 then x.ceshu else 0 end) as t10,
    sum(case x.ri when 11 then x.ceshu else 0 end) as t11,
    sum(case x.ri when 12 then x.ceshu else 0 end) as t12,
    sum(case x.ri when 13 then x.ceshu else 0 end) as t13,
    sum(case x.ri when 14 then x.ceshu else 0 end) as t14,
    sum(case x.ri when 15 then x.ceshu else 0 end) as t15,
    sum(case x.ri when 16 then x.ceshu else 0 end) as t16,
    sum(case x.ri when 17 then x.ceshu else 0 end) as t17,
    sum(case x.ri when 18 then x.ceshu else 0 end) as t18,
    sum(case x.ri when 19 then x.ceshu else 0 end) as t19,
    sum(case x.ri when 20 then x.ceshu else 0 end) as t20,
    sum(case x.ri when 21 then x.ceshu else 0 end) as t21,
    sum(case x.ri when 22 then x.ceshu else 0 end) as t22,
    sum(case x.ri when 23 then x.ceshu else 0 end) as t23,
    sum(case x.ri when 24 then x.ceshu else 0 end) as t24,
    sum(case x.ri when 25 then x.ceshu else 0 end) as t25,
    sum(case x.ri when 26 then x.ceshu else 0 end) as t26,
    sum(case x.ri when 27 then x.ceshu else 0 end) as t27,
    sum(case x.ri when 28 then x.ceshu else 0 end) as t28,
    sum(case x.ri when 29 then x.ceshu else 0 end) as t29,
    sum(case x.ri when 30 then x.ceshu else 0 end) as t30,
    sum(case x.ri when 31 then x.ceshu else 0 end) as t31
from (
    select l.xu, l.leixing, convert(varchar(50),null) as liebiao, l.ri, count(*) as ceshu
    from (
        select 2147483647 as xu, isnull(d.readerclass,'') as leixing, day(j.orderdate) as ri
        from JHK j
        left join dzk d on j.readercode=d.readercode
        where j.orderdate>=@nian+'-'+@yue+'-01' and j.orderdate<dateadd(month,1,@nian+'-'+@yue+'-01')
    ) l
    group by l.xu, l.leixing, l.ri
    union all
    select dzlxid, readerclass, readerclass, 0, 0
    from dzlx
    where readerclass<>'' and exists (
        select barcode from JHK
        where orderdate>=@nian+'-'+@yue+'-01' and orderdate<dateadd(month,1,@nian+'-'+@yue+'-01'))
) x
group by x.leixing
order by min(x.xu), x.leixing
go

-- 每个读者一年每月借出的册数. @nian: 年; @danwei, @leixing: 单位和类型, "全部"或空为不限
--
-- One line a reader who borrowed in the year. A reader without a card any more has neither name, unit nor
-- type, and stands there only when none is asked for.
create procedure dbo.procndztj @nian varchar(10), @danwei varchar(100), @leixing varchar(50)
as
select d.readunit as 读者单位, d.name as 读者姓名, d.readerclass as 读者类型,
    isnull(d.readercode,x.readercode) as 借书证号,
    sum(x.ceshu) as 小计,
    sum(case x.yue when 1 then x.ceshu else 0 end) as 一月,
    sum(case x.yue when 2 then x.ceshu else 0 end) as 二月,
    sum(case x.yue when 3 then x.ceshu else 0 end) as 三月,
    sum(case x.yue when 4 then x.ceshu else 0 end) as 四月,
    sum(case x.yue when 5 then x.ceshu else 0 end) as 五月,
    sum(case x.yue when 6 then x.ceshu else 0 end) as 六月,
    sum(case x.yue when 7 then x.ceshu else 0 end) as 七月,
    sum(case x.yue when 8 then x.ceshu else 0 end) as 八月,
    sum(case x.yue when 9 then x.ceshu else 0 end) as 九月,
    sum(case x.yue when 10 then x.ceshu else 0 end) as 十月,
    sum(case x.yue when 11 then x.ceshu else 0 end) as 十一月,
    sum(case x.yue when 12 then x.ceshu else 0 end) as 十二月
from (
    select readercode, month(orderdate) as yue, count(*) as ceshu
    from JHK
    where orderdate>=@nian+'-01-01' and orderdate<dateadd(year,1,@nian+'-01-01')
    group by readercode, month(orderdate)
) x
left join dzk d on x.readercode=d.readercode
where (@danwei in ('全部','') or d.readunit=@danwei) and (@leixing in ('全部','') or d.readerclass=@leixing)
group by x.readercode, d.readercode, d.readunit, d.name, d.readerclass
order by d.readunit, d.readerclass, x.readercode
go
