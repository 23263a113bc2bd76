-- The views of the library, stated once for every engine.
--
-- A copy that is lost or withdrawn behaves as unknown to the desk, so an open loan of it does not show.
-- Finished loans and fines keep a line for every row, also after the reader's card was deleted or the
-- copy left the collection.

-- 在借的书, 连同读者和书
create view JhskV as
select j.readercode, d.name, d.readerclass, d.readunit, j.barcode, z.bookname, z.author, s.price,
    j.orderdate, j.yhdate, j.operater, d.fine, d.defile, d.lost
from jhsk j
join dzk d on j.readercode=d.readercode
join sck s on j.barcode=s.barcode and s.bookstatus<>'丢失' and s.bookstatus<>'注销'
join zsk z on s.zskid=z.zskid
go

-- 超期的书; 应还日期是今天的不算
create view JhskCqV as
select j.readercode, d.name, d.readerclass, d.readunit, j.barcode, z.bookname, z.author,
    j.orderdate, j.yhdate, datediff(day,j.yhdate,getdate()) as cqday
from jhsk j
join dzk d on j.readercode=d.readercode
join sck s on j.barcode=s.barcode and s.bookstatus<>'丢失' and s.bookstatus<>'注销'
join zsk z on s.zskid=z.zskid
where j.yhdate<convert(datetime,convert(varchar(8),getdate(),112))
go

-- 借还历史, 连同读者和书
create view JhslskV as
select h.readercode, d.name, d.readerclass, d.readunit, h.barcode, z.bookname, z.author,
    h.orderdate, h.yhdate, h.backdate, h.operater
from jhslsk h
left join dzk d on h.readercode=d.readercode
left join sck s on h.barcode=s.barcode
left join zsk z on s.zskid=z.zskid
go

-- 罚款, 连同读者和书
create view FkkV as
select f.readercode, f.name, d.readerclass, d.readunit, f.barcode, f.bookname, z.author,
    f.cause, f.sfmoney, f.opratedate, f.oprater
from fkk f
left join dzk d on f.readercode=d.readercode
left join sck s on f.barcode=s.barcode
left join zsk z on s.zskid=z.zskid
go

-- 任一书册, 连同书目
create view BookV as
select s.barcode, z.bookname, z.author, s.price
from sck s
join zsk z on s.zskid=z.zskid
go

-- 借出的每一次, 在借的和已还的
create view JHK as
select readercode, barcode, orderdate from jhsk
union all
select readercode, barcode, orderdate from jhslsk
go
