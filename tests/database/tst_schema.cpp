#include "database/test_base.h"
#include "support/cases.h"

using namespace quilla;

class TestSchema : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// A write, then a select and what it brings.
    void statements_data()
    {
        QTest::addColumn<QStringList>("writes");
        QTest::addColumn<QString>("select");
        QTest::addColumn<QString>("expected");

        const QString reader = u"insert into dzk(readercode,name,bookcount) values('R1','张三',5)"_s;
        QTest::newRow("a type alone has parameters of 0")
            << QStringList {u"insert into Jycs(readerclass) Values('教师')"_s}
            << u"select "
               u"daycount,bookcount,fine,defile,lost,recount,reday,ifcanre,orderday,ordercount,Acount,Bcount,"
               "wuzheng from jycs"_s
            << u"0|0|0|0|0|0|0|False|0|0|0|0|False"_s;
        QTest::newRow("a new card has no reservations and no loans by class")
            << QStringList {reader} << u"select yordercshu,yAcount,yBcount from dzk"_s << u"0|0|0"_s;
        QTest::newRow("the counter of reservations can be raised")
            << QStringList {reader, u"update dzk set yordercshu=yordercshu+1"_s}
            << u"select yordercshu from dzk"_s << u"1"_s;
        QTest::newRow("a loan has not been renewed")
            << QStringList {u"insert into JHSK(readercode,barcode,orderdate,yhdate,operater) "
                            "Values('R1','B1','2003-09-01','2003-10-01','op')"_s}
            << u"select res from jhsk"_s << u"0"_s;
        QTest::newRow("a date is a date")
            << QStringList {u"insert into jhsk(readercode,barcode,orderdate) values('R1','B1','2003-01-01')"_s}
            << u"select "
               u"convert(varchar(10),orderdate,111),year(orderdate),month(orderdate),datediff(dy,orderdate,"
               "'2003-02-01') from jhsk where orderdate between '2003-01-01' and '2003-01-31'"_s
            << u"2003/01/01|2003|1|31"_s;
        QTest::newRow("a waiting reservation names no copy")
            << QStringList {u"insert yyk (readercode,zskid,ordertime,orderstatus) values ('R1',1,'2003-09-01',0)"_s,
                   u"insert yyk (readercode,zskid,barcode) values ('R2',1,'')"_s,
                   u"insert yyk (readercode,zskid,barcode) values ('R3',1,'B1')"_s}
            << u"select readercode from yyk where barcode<>''"_s << u"R3"_s;
        QTest::newRow("codes and states compare without case and blanks at the end")
            << QStringList {u"insert into dzk(readercode,readstatus) values('abc','有效 ')"_s}
            << u"select count(*) from dzk where readercode='ABC  ' and readstatus='有效'"_s << u"1"_s;
        QTest::newRow("a type may be there twice, a code too")
            << QStringList {u"Insert dzlx (readerclass) Values ('教师')"_s,
                   u"Insert dzlx (readerclass) Values ('教师')"_s, reader, reader}
            << u"select count(*),(select count(*) from dzk) from dzlx"_s << u"2|2"_s;
        QTest::newRow("a title without a mark has an empty one")
            << QStringList {u"insert into zsk(bookname,classcode,zch) values('书','I247.5',12)"_s}
            << u"select classcode + '/'+ convert(varchar,zch)+fzqfh from zsk"_s << u"I247.5/12"_s;
        QTest::newRow("words of the language are column names")
            << QStringList {u"insert into Global(type,code,memo) values('holiday','2003-10-01 2003-10-07','国庆')"_s}
            << u"select type,g.memo,name,password from global g,libuse left join dzk on name=username"_s
            << u"holiday|国庆|null|"_s;
        QTest::newRow("fines of a fraction of a yuan stay exact")
            << QStringList {u"insert into jycs(readerclass,fine) values('教师',0.1)"_s}
            << u"select fine*3,fine from jycs where fine=0.10"_s << u"0.3|0.1"_s;
    }

    void statements()
    {
        QFETCH(QStringList, writes);
        QFETCH(QString, select);
        QFETCH(QString, expected);
        TestBase base;
        for (const QString& write : writes)
            base.connection.execute(write);
        QCOMPARE(base.rows(select), expected);
    }

    void insertsByPosition()
    {
        TestBase base;
        base.connection.execute(
            u"Insert into diushik Values ('R1','张三','中文系','B1','书',25.50,'2003-09-01')");
        QCOMPARE(
            base.rows(u"select readercode,name,readunit,barcode,bookname,yfjine,createdate from diushik"),
            u"R1|张三|中文系|B1|书|25.5|2003-09-01"_s);
    }

    /// A number is never given twice, so that history keeps its meaning.
    void numbersRows()
    {
        TestBase base;
        for (const QStringView table : {u"jhsk", u"jhslsk"}) {
            const QString number = table == u"jhsk" ? u"jhskid"_s : u"jhslsk"_s;
            const QString insert = u"insert into %1(readercode,barcode) values('R1','B1')"_s.arg(table);
            base.connection.execute(insert);
            base.connection.execute(insert);
            base.connection.execute(u"delete from %1 where %2=2"_s.arg(table, number));
            base.connection.execute(insert);
            QCOMPARE(base.rows(u"select %1 from %2 order by %1"_s.arg(number, table)), u"1\n3"_s);
        }
    }

    /// Given one loan due on `due` of a copy in `state`.
    void views_data()
    {
        const QString open
            = u"select readercode,name,readerclass,readunit,barcode,bookname,author,price,orderdate,yhdate,"
              "operater,fine,defile,lost from JhskV"_s;
        const QString overdue = u"select barcode,cqday from JHSKCQV"_s;
        cases<QString, QString, QString>({
            {"an open loan with reader and book",
                {{}, open, u"R1|张三|教师|中文系|B1|书|作者|25|2003-09-01|2003-10-01|op|0.1|1|3"_s}},
            {"due today is not overdue", {{}, overdue, {}}},
            {"due yesterday is a day overdue",
                {u"update jhsk set yhdate='2003-09-30'"_s, overdue, u"B1|1"_s}},
            {"a withdrawn copy drops out", {u"update sck set bookstatus='注销'"_s, open, {}}},
            {"a title lends each copy once",
                {u"insert into sck(zskid,barcode) values(1,'B2')"_s,
                    u"select count(*) from jhskv where barcode='b1'"_s, u"1"_s}},
            {"history outlives the reader's card",
                {u"delete from dzk"_s,
                    u"select readercode,name,barcode,bookname,author,orderdate,yhdate,backdate,operater from JhslskV"_s,
                    u"R1|null|B1|书|作者|2003-08-01|2003-08-31|2003-08-20|op"_s}},
            {"fines outlive reader and copy",
                {u"delete from sck"_s,
                    u"select name,readerclass,barcode,bookname,author,cause,sfmoney,opratedate,oprater from FKKV"_s,
                    u"张三|教师|B1|书|null|超期|1.2|2003-08-20|op"_s}},
            {"any copy with its title",
                {u"update sck set bookstatus='注销'"_s,
                    u"select bookname,author,price from BookV where barcode='B1'"_s, u"书|作者|25"_s}},
            {"charges, open and finished",
                {{}, u"select readercode,barcode,orderdate from JHK order by orderdate"_s,
                    u"R1|B1|2003-08-01\nR1|B1|2003-09-01"_s}},
        });
    }

    void views()
    {
        const auto [change, select, expected] = given<QString, QString, QString>();
        TestBase base([](Connection& filled) {
            filled.execute(u"insert into zsk(bookname,author) values('书','作者')");
            filled.execute(
                u"insert into sck(zskid,barcode,price,borrowstatus,bookstatus) values(1,'B1',25,0,'借出')");
            filled.execute(
                u"insert into dzk(readercode,name,readerclass,readunit,orderbook,fine,defile,lost) "
                "values('R1','张三','教师','中文系',1,0.1,1,3)");
            filled.execute(u"insert into jhsk(readercode,barcode,orderdate,yhdate,operater) "
                           "values('R1','B1','2003-09-01','2003-10-01','op')");
            filled.execute(u"insert into jhslsk(readercode,barcode,orderdate,yhdate,backdate,operater) "
                           "values('R1','B1','2003-08-01','2003-08-31','2003-08-20','op')");
            filled.execute(
                u"insert into fkk(readercode,name,barcode,bookname,sfmoney,cause,opratedate,oprater) "
                "values('R1','张三','B1','书',1.20,'超期','2003-08-20','op')");
        });
        if (!change.isEmpty()) base.connection.execute(change);
        QCOMPARE(base.rows(select), expected);
    }

    void refusesSecondCreation()
    {
        TestBase base;
        QVERIFY_THROWS_EXCEPTION(Error, createLibrary(base.connection));
        QVERIFY_THROWS_EXCEPTION(Error, createEmbedded(base.file, base.schema, base.clock, createLibrary));
        QCOMPARE(base.rows(u"select username,password,borrow from LibUse"), u"admin||True"_s);
    }
};

QTEST_GUILESS_MAIN(TestSchema)
#include "tst_schema.moc"
