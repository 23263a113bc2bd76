-- The tables that the cases run on.
create table dzk (readercode varchar(20) not null primary key, name varchar(50), sex varchar(10), readerclass varchar(50), readunit varchar(100), bookcount int default 0, daycount int default 0, orderbook int default 0, ordercount int default 0, orderday int default 0, yordercshu int not null default 0, Acount int default 0, Bcount int default 0, yAcount int default (0), yBcount int default (0), recount int default 0, reday int default 0, ifcanre bit default 0, fine decimal(8,2) default 0, defile decimal(8,2) default 0, lost decimal(8,2) default 0, wuzheng bit default 0, readstatus varchar(20) default '有效', term datetime, paperdate datetime, photo varchar(400), memo varchar(100))
go
create index ix_dzk_name on dzk (name, readerclass desc)
go
create table dzkx (readercode varchar(20) not null, zhenghaolx varchar(20), zhenghao varchar(50), dizhi varchar(400), birthday datetime, email varchar(100))
go
create table dzlx (dzlxid int identity(1,1) primary key, readerclass varchar(50))
go
create table dzdw (dzdwid int identity primary key, readunit varchar(100), constraint uq_unit unique (readunit))
go
create table jycs (jycsid int identity(1,1) not null primary key, readerclass varchar(50), daycount int default 0, bookcount int default 0, fine decimal(8,2) default 0, defile decimal(8,2) default 0, lost decimal(8,2) default 0, recount int default 0, reday int default 0, ifcanre bit default 0, orderday int default 0, ordercount int default 0, Acount int default 0, Bcount int default 0, wuzheng bit default 0)
go
create table jhsk (jhskid int identity(1,1) primary key, readercode varchar(20), barcode varchar(20), orderdate datetime, yhdate datetime, operater varchar(50), res int not null default 0)
go
create index ix_jhsk_barcode on jhsk (barcode)
go
create table jhslsk (jhslsk int identity(1,1) primary key, readercode varchar(20), barcode varchar(20), orderdate datetime, yhdate datetime, backdate datetime, operater varchar(50))
go
create table yyk (readercode varchar(20), zskid int, barcode varchar(20), ordertime datetime, oldtime datetime, orderstatus bit default 0)
go
create table fkk (readercode varchar(20), name varchar(50), barcode varchar(20), bookname varchar(200), yfmoney decimal(10,2), sfmoney money, cause varchar(20), oprater varchar(50), opratedate datetime, memo varchar(200))
go
create table diushik (readercode varchar(20), name varchar(50), readunit varchar(100), barcode varchar(20), bookname varchar(200), yfjine decimal(10,2), createdate datetime)
go
create table BookOut (BookOutID int identity(1,1) primary key, bookname varchar(200), author varchar(100), barcode varchar(20), price decimal(10,2), cause varchar(50), memo varchar(200), outdate datetime default (getdate()), operater varchar(50))
go
create table sck (sckid int identity(1,1) primary key, zskid int, barcode varchar(20), rollcode varchar(20), bookplace varchar(50), price decimal(10,2), borrowstatus bit default 1 check (borrowstatus in (0,1)), bookstatus varchar(20))
go
create unique index ix_sck_barcode on sck (barcode)
go
create table zsk (zskid int identity(1,1) primary key, bookname varchar(200), author varchar(100), publisher varchar(100), pubplace varchar(50), pubdate varchar(20), isbn varchar(30), classcode char(20), zch int, fzqfh varchar(10) default '', docclass varchar(20), lagclass varchar(20), edition varchar(20), measure varchar(20), pages varchar(20), bookcount int, books varchar(100), booksauthor varchar(100), authorcode varchar(20), ztc varchar(100), endnote text, cataman varchar(20), catatime datetime)
go
create table LibUse (userid int identity(1,1) primary key, username varchar(50), [password] varchar(50), borrow bit)
go
create table Global (type varchar(20), code varchar(50), memo varchar(100))
go
create table numbers (whole int, small smallint, tiny tinyint, big bigint, amount decimal(6,2), flag bit)
go
create table ztfdl (leibie varchar(10), mingcheng varchar(50))
go
create view JhskV as
select j.readercode, d.name, d.readerclass, d.readunit, j.barcode, z.bookname, z.author, s.price, j.orderdate, j.yhdate, j.operater, d.fine, d.defile, d.lost
from jhsk j join dzk d on j.readercode=d.readercode
join sck s on j.barcode=s.barcode and s.bookstatus<>'丢失' and s.bookstatus<>'注销'
join zsk z on s.zskid=z.zskid
go
create view JhskCqV as
select readercode, name, readerclass, readunit, barcode, bookname, author, orderdate, yhdate, datediff(day,yhdate,getdate()) as cqday
from JhskV where datediff(day,yhdate,getdate())>0
go
create view JhslskV as
select h.readercode, d.name, d.readerclass, d.readunit, h.barcode, z.bookname, z.author, h.orderdate, h.yhdate, h.backdate, h.operater
from jhslsk h left join dzk d on h.readercode=d.readercode left join sck s on h.barcode=s.barcode left join zsk z on s.zskid=z.zskid
go
create view FkkV as
select f.readercode, f.name, d.readerclass, d.readunit, f.barcode, f.bookname, z.author, f.cause, f.sfmoney, f.opratedate, f.oprater
from fkk f left join dzk d on f.readercode=d.readercode left join sck s on f.barcode=s.barcode left join zsk z on s.zskid=z.zskid
go
create view BookV as
select s.barcode, z.bookname, z.author, s.price from sck s join zsk z on s.zskid=z.zskid
go
create view JHK as
select readercode, barcode, orderdate from jhsk union all select readercode, barcode, orderdate from jhslsk
go
