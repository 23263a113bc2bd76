-- What a new base holds before the first start.

-- The classes of the ranking filter: the main classes of the Chinese Library Classification.
insert into ztfdl(leibie,mingcheng) values('A','马克思主义、列宁主义、毛泽东思想、邓小平理论')
go
insert into ztfdl(leibie,mingcheng) values('B','哲学、宗教')
go
insert into ztfdl(leibie,mingcheng) values('C','社会科学总论')
go
insert into ztfdl(leibie,mingcheng) values('D','政治、法律')
go
insert into ztfdl(leibie,mingcheng) values('E','军事')
go
insert into ztfdl(leibie,mingcheng) values('F','经济')
go
insert into ztfdl(leibie,mingcheng) values('G','文化、科学、教育、体育')
go
insert into ztfdl(leibie,mingcheng) values('H','语言、文字')
go
insert into ztfdl(leibie,mingcheng) values('I','文学')
go
insert into ztfdl(leibie,mingcheng) values('J','艺术')
go
insert into ztfdl(leibie,mingcheng) values('K','历史、地理')
go
insert into ztfdl(leibie,mingcheng) values('N','自然科学总论')
go
insert into ztfdl(leibie,mingcheng) values('O','数理科学和化学')
go
insert into ztfdl(leibie,mingcheng) values('P','天文学、地球科学')
go
insert into ztfdl(leibie,mingcheng) values('Q','生物科学')
go
insert into ztfdl(leibie,mingcheng) values('R','医药、卫生')
go
insert into ztfdl(leibie,mingcheng) values('S','农业科学')
go
insert into ztfdl(leibie,mingcheng) values('T','工业技术')
go
insert into ztfdl(leibie,mingcheng) values('U','交通运输')
go
insert into ztfdl(leibie,mingcheng) values('V','航空、航天')
go
insert into ztfdl(leibie,mingcheng) values('X','环境科学、安全科学')
go
insert into ztfdl(leibie,mingcheng) values('Z','综合性图书')
go

-- The captions that the cataloguing side knows the main columns by.
insert into fdict(DbName,FieldName,CnName) values('zsk','bookname','正题名')
go
insert into fdict(DbName,FieldName,CnName) values('zsk','author','责任者')
go
insert into fdict(DbName,FieldName,CnName) values('zsk','publisher','出版者')
go
insert into fdict(DbName,FieldName,CnName) values('zsk','isbn','ISBN')
go
insert into fdict(DbName,FieldName,CnName) values('zsk','classcode','分类号')
go
insert into fdict(DbName,FieldName,CnName) values('zsk','ztc','主题词')
go
insert into fdict(DbName,FieldName,CnName) values('sck','barcode','条形码')
go
insert into fdict(DbName,FieldName,CnName) values('sck','bookplace','藏址')
go
insert into fdict(DbName,FieldName,CnName) values('sck','price','价格')
go
