-- 一册书或一个读者的借阅历史. @zhonglei: 0 按图书, 17 按读者; 另一个条码不看
--
-- Loans that are still open come first, then the latest ones; the copy may have been withdrawn and the
-- reader's card deleted since.
create procedure dbo.procjylstj @zhonglei int, @barcode varchar(50), @readercode varchar(50)
as
select x.biaozhi as 标志, x.barcode, x.readercode, x.orderdate, x.backdate, x.operater
from (
    select 1 as xu, jhskid as hao, '在借' as biaozhi, barcode, readercode, orderdate, convert(datetime,null) as backdate,
        operater
    from jhsk
    where @zhonglei=0 and barcode=@barcode
    union all
    select 1, jhskid, '在借', barcode, readercode, orderdate, null, operater
    from jhsk
    where @zhonglei=17 and readercode=@readercode
    union all
    select 2, jhslsk, '已还', barcode, readercode, orderdate, backdate, operater
    from jhslsk
    where @zhonglei=0 and barcode=@barcode
    union all
    select 2, jhslsk, '已还', barcode, readercode, orderdate, backdate, operater
    from jhslsk
    where @zhonglei=17 and readercode=@readercode
) x
order by x.xu, x.orderdate desc, x.hao desc
go
