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
-- The work of the desk by day or month.
--
-- Where nothing happened in the whole period there is no row; else every day or month has one, since its
-- figures are crossed with all lines, the last of which takes the whole period for its own.
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
    where opratedate>=@tongjiData+'-01' and opratedate<dateadd(month,1,@tongjiData+'-01') and sfmoney>0
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
    where opratedate>=@tongjiData+'-01-01' and opratedate<dateadd(year,1,@tongjiData+'-01-01') and sfmoney>0
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
-- The books lent by day or month and main class.
--
-- All that was lent counts, also copies that have been withdrawn since. The classes L, M, W and Y have no
-- column, and 小计 is the sum of the columns. Lines as in the workload.

-- @tongjiData: 年-月, 如 2003-3 或 2003-03; @monthDays: 该月的天数
create procedure dbo.YueJieChuFenLeiTJ @tongjiData varchar(7), @monthDays int
as
select x.mingcheng as 第几天,
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
            select day(j.orderdate) as qi, left(z.classcode,1) as lei
            from JHK j
            join sck s on j.barcode=s.barcode
            join zsk z on s.zskid=z.zskid
            where j.orderdate>=@tongjiData+'-01' and j.orderdate<dateadd(month,1,@tongjiData+'-01')
        ) k
        where k.lei in ('A','B','C','D','E','F','G','H','I','J','K',
            'N','O','P','Q','R','S','T','U','V','X','Z')
        group by k.qi, k.lei
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
) x
group by x.xu, x.mingcheng
order by x.xu
go
-- @tongjiData: 年
create procedure dbo.NianJieChuFenLeiTJ @tongjiData varchar(4)
as
select x.mingcheng as 月份,
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
            select month(j.orderdate) as qi, left(z.classcode,1) as lei
            from JHK j
            join sck s on j.barcode=s.barcode
            join zsk z on s.zskid=z.zskid
            where j.orderdate>=@tongjiData+'-01-01' and j.orderdate<dateadd(year,1,@tongjiData+'-01-01')
        ) k
        where k.lei in ('A','B','C','D','E','F','G','H','I','J','K',
            'N','O','P','Q','R','S','T','U','V','X','Z')
        group by k.qi, k.lei
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
) x
group by x.xu, x.mingcheng
order by x.xu
go
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
-- Rankings by the number of loans in a period, both days included.
--
-- Equal numbers share a rank and the next one is left out (1, 2, 2, 4); there are never more lines than
-- asked for. Names are text of the library's own: only the number tells who comes first, among equal ones
-- the call number or the reader code.

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
        where j.orderdate>=@cong and j.orderdate<dateadd(day,1,@dao)
            and (@danwei in ('全部','') or j.readercode in (select readercode from dzk where readunit=@danwei))
        group by s.zskid
    ) f
    join zsk z on f.zskid=z.zskid
    where @fenlei='全部' or left(z.classcode,len(@fenlei))=@fenlei
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
        where orderdate>=@cong and orderdate<dateadd(day,1,@dao)
        group by readercode
    ) f
    join dzk d on f.readercode=d.readercode
    where @leixing in ('全部','') or d.readerclass=@leixing
) p
where p.xu<=@shuliang
order by p.xu
go
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
insert into LibUse(userid,username,password,borrow) values(1,'admin','',1)
go
