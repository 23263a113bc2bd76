-- What stands in the tables. The clock says 2004-03-09 08:05:03.
insert into dzk(readercode,name,sex,readerclass,readunit,bookcount,orderbook,daycount,recount,reday,fine,lost,term,paperdate,wuzheng,memo) values('R1','张三','男','教师','一中',5,1,30,2,15,0.1,3,'2005-1-5','2003-01-05',1,null)
go
insert into dzk(readercode,name,sex,readerclass,readunit,bookcount,readstatus,memo) values('r2','李四','女','学生','二中',3,'挂失','O''Brien')
go
insert into dzlx(readerclass) values('教师')
go
insert into dzlx(readerclass) values('学生')
go
insert into dzlx(readerclass) values('教师 ')
go
insert into dzdw(readunit) values('一中')
go
insert into jycs(readerclass,ifcanre) values('教师',1)
go
insert into zsk(bookname,author,classcode,zch,fzqfh,isbn,catatime) values('数据库 100%','王五','TP311',12,'A','7-1','2003-01-01')
go
insert into zsk(bookname,author,classcode,zch,isbn) values('Data[1]_x','Lee','I247.5',123456,'7-2')
go
insert into sck(zskid,barcode,price,bookstatus) values(1,'B1',12.5,'库本')
go
insert into sck(zskid,barcode,price,borrowstatus,bookstatus) values(1,'b2',3,0,'借出')
go
insert into sck(zskid,barcode,price,borrowstatus,bookstatus) values(2,'B3',20,0,'丢失')
go
insert into jhsk(readercode,barcode,orderdate,yhdate,operater) values('r1','B2','2004-02-01','2004-03-02','admin')
go
insert into jhslsk(readercode,barcode,orderdate,yhdate,backdate,operater) values('R1','B1','2003-10-01','2003-11-01','2003-10-31','admin')
go
insert into jhslsk(readercode,barcode,orderdate,yhdate,backdate,operater) values('R2','B1','2004-03-01','2004-04-01','2004-03-09','admin')
go
insert into yyk(readercode,zskid,barcode,ordertime,oldtime,orderstatus) values('R2',1,'B1','2004-03-01','2004-03-19',1)
go
insert into yyk(readercode,zskid,ordertime) values('R1',2,'2004-03-02')
go
insert into fkk(readercode,name,barcode,bookname,yfmoney,sfmoney,cause,oprater,opratedate) values('R1','张三','B1','数据库 100%',0.3,0.125,'超期','admin','2003-10-31')
go
insert into BookOut(bookname,barcode,price,cause,outdate) values('Data[1]_x','B3',20,'丢失','2003-10-01')
go
insert into LibUse(username,password,borrow) values('Admin','',1)
go
insert into Global(type,code,memo) values('holiday','2003-10-01 2003-10-07','国庆')
go
insert into ztfdl values('A','马列')
go
insert into numbers values(2147483647,32767,255,9223372036854775807,9999.99,1)
go
