-- Rankings by the number of loans in a period, both days included.
--
-- Equal numbers share a rank and the next one is left out (1, 2, 2, 4); there are never more lines than
-- asked for. Names are text of the library's own: only the number tells who comes first, among equal ones
-- the call number or the reader code.
--
-- The last day ends at .997, behind which the server has no time: after 9999-12-31 there is no day.

-- 图书借阅排行榜. @danwei: 读者单位, @fenlei: 分类号的开头, "全部"或空为不限; @shuliang: 前几名
create procedure dbo.procjhphb @danwei varchar(100), @shuliang int, @cong varchar(20), @dao varchar(20),
    @fenlei varchar(50)
as
select p.bangci as 榜次, case when @danwei='' then '全部' else @danwei end as 读者单位, p.suoshuhao as 索书号,
    p.bookname as 正题名, p.author as 责任说明, p.cishu as 借阅次数
from (
    select rank() over (order by f.cishu desc) as bangci,
        row_number() over (order by f.cishu desc, z.classcode, z.zch, z.zskid) as xu,
        rtrim(z.classcode)+'/'+convert(varchar(5),z.zch)+z.fzqfh as suoshuhao, z.bookname, z.author, f.cishu
    from (
        select s.zskid, count(*) as cishu
        from JHK j
        join sck s on j.barcode=s.barcode
        where j.orderdate>=@cong and j.orderdate<=@dao+' 23:59:59.997'
            and (@danwei in ('全部','') or j.readercode in (select readercode from dzk where readunit=@danwei))
        group by s.zskid
    ) f
    join zsk z on f.zskid=z.zskid
    where @fenlei in ('全部','') or left(z.classcode,len(@fenlei))=@fenlei
) p
where p.xu<=@shuliang
order by p.xu
go

-- 读者借阅排行榜. @leixing: 读者类型, "全部"或空为不限; @shuliang: 前几名
--
-- Readers whose card was deleted can't be named and are left out.
create procedure dbo.procdzjyphb @leixing varchar(50), @shuliang int, @cong varchar(20), @dao varchar(20)
as
select p.bangci as 榜次, p.name, p.readerclass, p.readunit, p.cishu as jycishu
from (
    select rank() over (order by f.cishu desc) as bangci,
        row_number() over (order by f.cishu desc, d.readercode) as xu, d.name, d.readerclass, d.readunit, f.cishu
    from (
        select readercode, count(*) as cishu
        from JHK
        where orderdate>=@cong and orderdate<=@dao+' 23:59:59.997'
        group by readercode
    ) f
    join dzk d on f.readercode=d.readercode
    where @leixing in ('全部','') or d.readerclass=@leixing
) p
where p.xu<=@shuliang
order by p.xu
go
