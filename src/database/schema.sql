-- The tables of the library, stated once for every engine.
--
-- The names are the interface to the other programs that work on the same base, so they keep their
-- spelling (oprater beside operater, lagclass, the column jhslsk in the table jhslsk).
-- There are no foreign keys and no unique keys on codes: the programs look a row up before they write,
-- and a change of reader code is carried into the other tables one after the other.
-- A server that keeps varchar in a code page needs a Chinese one, compared without case.

-- 读者证
create table dzk (
    readercode varchar(50) not null,        -- 读者证号
    name varchar(50),                       -- 姓名
    sex varchar(10),                        -- 性别
    readerclass varchar(50),                -- 读者类型
    readunit varchar(100),                  -- 读者单位
    bookcount int default 0,                -- 可借册数
    daycount int default 0,                 -- 可借天数
    orderbook int default 0,                -- 已借册数
    ordercount int default 0,               -- 可预借册数
    orderday int default 0,                 -- 可预借天数
    yordercshu int default 0,               -- 预借册数
    Acount int default 0,                   -- 文艺类可借册数
    Bcount int default 0,                   -- 理科类可借册数
    yAcount int default 0,                  -- 已借(文)
    yBcount int default 0,                  -- 已借(理)
    recount int default 0,                  -- 可续借次数
    reday int default 0,                    -- 可续借天数
    ifcanre bit default 0,                  -- 有过期书刊时还可以借书
    fine decimal(8,3) default 0,            -- 超期罚款(元/天)
    defile decimal(8,3) default 0,          -- 污损罚款(倍)
    lost decimal(8,3) default 0,            -- 丢失罚款(倍)
    wuzheng bit default 0,                  -- 可以无证借书
    readstatus varchar(20),                 -- 有效状态: 有效, 超期, 挂失, 无效
    term datetime,                          -- 有效期限
    paperdate datetime,                     -- 办证日期
    photo varchar(400),                     -- 照片文件
    memo varchar(4000)                      -- 备注
)
go
create index ix_dzk_readercode on dzk (readercode)
go
create index ix_dzk_name on dzk (name)
go
create index ix_dzk_readerclass on dzk (readerclass)
go
create index ix_dzk_readunit on dzk (readunit)
go

-- 读者证附加资料, 每证至多一行
create table dzkx (
    readercode varchar(50) not null,        -- 读者证号
    zhenghaolx varchar(20),                 -- 证件类型
    zhenghao varchar(50),                   -- 证件号码
    dizhi varchar(400),                     -- 家庭住址
    birthday datetime,                      -- 出生日期
    email varchar(100)                      -- 电子邮件
)
go
create index ix_dzkx_readercode on dzkx (readercode)
go

-- 读者类型. 一个类型可以出现两次
create table dzlx (
    dzlxid int identity(1,1) primary key,
    readerclass varchar(50)                 -- 读者类型
)
go

-- 读者单位
create table dzdw (
    dzdwid int identity(1,1) primary key,
    readunit varchar(100)                   -- 读者单位
)
go

-- 流通参数, 每个读者类型一行; 办证时抄入 dzk. 一行可以只有类型
create table jycs (
    jycsid int identity(1,1) primary key,
    readerclass varchar(50),                -- 读者类型
    daycount int default 0,                 -- 可借天数
    bookcount int default 0,                -- 可借册数
    fine decimal(8,3) default 0,            -- 超期罚款(元/天)
    defile decimal(8,3) default 0,          -- 污损罚款(倍)
    lost decimal(8,3) default 0,            -- 丢失罚款(倍)
    recount int default 0,                  -- 续借次数
    reday int default 0,                    -- 续借天数
    ifcanre bit default 0,                  -- 过期可借
    orderday int default 0,                 -- 预借天数
    ordercount int default 0,               -- 预借册数
    Acount int default 0,                   -- 文艺类可借册数
    Bcount int default 0,                   -- 理科类可借册数
    wuzheng bit default 0                   -- 无证借书
)
go
create index ix_jycs_readerclass on jycs (readerclass)
go

-- 借书库: 在借的书, 每册一行
create table jhsk (
    jhskid int identity(1,1) primary key,   -- 借书控制号
    readercode varchar(50) not null,        -- 读者证号
    barcode varchar(50) not null,           -- 条形码
    orderdate datetime,                     -- 借书日期
    yhdate datetime,                        -- 应还日期
    operater varchar(50),                   -- 操作员
    res int not null default 0              -- 已续借次数
)
go
create index ix_jhsk_barcode on jhsk (barcode)
go
create index ix_jhsk_readercode on jhsk (readercode, yhdate)
go
create index ix_jhsk_yhdate on jhsk (yhdate)
go

-- 借还历史库: 每次还书一行, 只增不减
create table jhslsk (
    jhslsk int identity(1,1) primary key,   -- 还书控制号
    readercode varchar(50) not null,        -- 读者证号
    barcode varchar(50) not null,           -- 条形码
    orderdate datetime,                     -- 借书日期
    yhdate datetime,                        -- 应还日期
    backdate datetime,                      -- 还书日期
    operater varchar(50)                    -- 收书的操作员
)
go
create index ix_jhslsk_readercode on jhslsk (readercode, backdate)
go
create index ix_jhslsk_barcode on jhslsk (barcode, backdate)
go
create index ix_jhslsk_backdate on jhslsk (backdate)
go
create index ix_jhslsk_orderdate on jhslsk (orderdate)
go

-- 预约库: 预约的是一种书, 书到时才记下为读者留的那一册
create table yyk (
    readercode varchar(50) not null,        -- 读者证号
    zskid int not null,                     -- 控制ID
    barcode varchar(50),                    -- 为读者留的书册; 未到为空
    ordertime datetime,                     -- 预约时间
    oldtime datetime,                       -- 到期时间; 未到为空
    orderstatus bit default 0               -- 0 没到, 1 到书
)
go
create index ix_yyk_barcode on yyk (barcode)
go
create index ix_yyk_zskid on yyk (zskid, ordertime)
go
create index ix_yyk_readercode on yyk (readercode)
go

-- 罚款库: 每笔罚款一行, 抄下当时的读者和书
create table fkk (
    readercode varchar(50),                 -- 读者证号
    name varchar(50),                       -- 当时的姓名
    barcode varchar(50),                    -- 条形码
    bookname varchar(400),                  -- 当时的书名
    yfmoney decimal(12,2),                  -- 应罚金额
    sfmoney decimal(12,2),                  -- 实罚金额
    cause varchar(50),                      -- 罚款原因: 超期, 污损, 丢失
    oprater varchar(50),                    -- 操作员
    opratedate datetime,                    -- 罚款日期
    memo varchar(4000)                      -- 备注
)
go
create index ix_fkk_readercode on fkk (readercode)
go
create index ix_fkk_barcode on fkk (barcode)
go
create index ix_fkk_opratedate on fkk (opratedate)
go

-- 丢失登记. 按位置插入: 正好这七列, 正好这个顺序
create table diushik (
    readercode varchar(50),                 -- 读者证号
    name varchar(50),                       -- 读者姓名
    readunit varchar(100),                  -- 读者单位
    barcode varchar(50),                    -- 条形码
    bookname varchar(400),                  -- 书名
    yfjine decimal(12,2),                   -- 应罚金额
    createdate datetime                     -- 登记日期
)
go
create index ix_diushik_barcode on diushik (barcode)
go

-- 藏书注销帐: 书的资料抄在这里, 比书册活得久
create table BookOut (
    BookOutID int identity(1,1) primary key,-- 注销编号
    bookname varchar(400),                  -- 书名
    author varchar(200),                    -- 作者
    barcode varchar(50),                    -- 条形码
    price decimal(12,2),                    -- 价格
    cause varchar(100),                     -- 注销原因
    memo varchar(4000),                     -- 备注
    outdate datetime,                       -- 注销日期
    operater varchar(50)                    -- 操作员
)
go
create index ix_bookout_barcode on BookOut (barcode)
go
create index ix_bookout_outdate on BookOut (outdate)
go

-- 书册库, 属于编目; 流通只写 borrowstatus 和 bookstatus
create table sck (
    sckid int identity(1,1) primary key,
    zskid int not null,                     -- 控制ID
    barcode varchar(50) not null,           -- 条形码
    rollcode varchar(50),                   -- 卷次
    bookplace varchar(100),                 -- 藏址
    price decimal(12,2),                    -- 价格
    borrowstatus bit default 1,             -- 1 可借, 0 不可借
    bookstatus varchar(20) default '库本'   -- 库本, 借出, 丢失, 注销, 典藏
)
go
create index ix_sck_barcode on sck (barcode)
go
create index ix_sck_zskid on sck (zskid)
go

-- 总书库: 每种书一行, 属于编目; 流通只读
create table zsk (
    zskid int identity(1,1) primary key,    -- 控制ID
    bookname varchar(400),                  -- 正题名
    author varchar(200),                    -- 责任者
    publisher varchar(200),                 -- 出版者
    pubplace varchar(100),                  -- 出版地
    pubdate varchar(50),                    -- 出版日期
    isbn varchar(50),                       -- ISBN
    classcode varchar(50),                  -- 分类号
    zch int default 0,                      -- 种次号
    fzqfh varchar(50) not null default '',  -- 辅助区分号, 接在索书号后面
    docclass varchar(50),                   -- 文献类型
    lagclass varchar(50),                   -- 语种
    edition varchar(50),                    -- 版本
    measure varchar(50),                    -- 尺寸
    pages varchar(50),                      -- 页数
    bookcount int default 0,                -- 册数
    books varchar(400),                     -- 丛书名
    booksauthor varchar(200),               -- 丛书作者
    authorcode varchar(50),                 -- 作者号
    ztc varchar(400),                       -- 主题词
    endnote varchar(4000),                  -- 附注
    cataman varchar(50),                    -- 编目人
    catatime datetime                       -- 入库日期
)
go
create index ix_zsk_bookname on zsk (bookname)
go
create index ix_zsk_classcode on zsk (classcode, zch)
go
create index ix_zsk_isbn on zsk (isbn)
go

-- 操作员
create table LibUse (
    userid int,
    username varchar(50),                   -- 登录名
    password varchar(50) default '',        -- 密码, 可以为空
    borrow bit default 0                    -- 可以使用流通台
)
go

-- 杂项. type 为 holiday 的行: code 是起止日期 "2003-10-01 2003-10-07", memo 是假期名称
create table Global (
    type varchar(50),
    code varchar(100),
    memo varchar(400)
)
go
create index ix_global_type on Global (type, code)
go

-- 排行榜的类目
create table ztfdl (
    leibie varchar(10),                     -- 类号
    mingcheng varchar(100)                  -- 类名
)
go

-- 字段字典, 属于编目
create table fdict (
    DbName varchar(50),                     -- 表
    FieldName varchar(50),                  -- 字段
    CnName varchar(100)                     -- 中文名
)
go

-- 采购库, 属于编目
create table CBK (
    cbkid int identity(1,1) primary key,
    c_sbn varchar(50)                       -- ISBN
)
go
