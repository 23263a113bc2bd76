#include "database/test_base.h"
#include "support/cases.h"

using namespace quilla;

class TestSchema : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void defaultsAndDoubles()
    {
        TestBase base;
        const auto send = [&](const QString& tsql) { base.connection.execute(tsql); };
        send(u"insert into Jycs(readerclass) Values('教师')"_s);
        QCOMPARE(base.rows(u"select "
                           u"daycount,bookcount,fine,defile,lost,recount,reday,ifcanre,orderday,ordercount,"
                           u"Acount,Bcount,wuzheng from jycs"),
            u"0|0|0|0|0|0|0|False|0|0|0|0|False"_s);
        for (int twice = 0; twice < 2; ++twice) { // a type and a code may be there twice
            send(u"insert into dzk(readercode,name,bookcount) values('R1','张三',5)"_s);
            send(u"Insert dzlx (readerclass) Values ('教师')"_s);
        }
        QCOMPARE(base.rows(u"select yordercshu,yAcount,yBcount from dzk"), u"0|0|0\n0|0|0"_s);
        send(u"insert into zsk(bookname,classcode,zch) values('书','I247.5',12)"_s);
        QCOMPARE(base.rows(u"select classcode + '/'+ convert(varchar,zch)+fzqfh from zsk"), u"I247.5/12"_s);
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
                {QString(), open, u"R1|张三|教师|中文系|B1|书|作者|25|2003-09-01|2003-10-01|op|0.1|1|3"_s}},
            {"due today is not overdue", {QString(), overdue, {}}},
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
                {QString(), u"select readercode,barcode,orderdate from JHK order by orderdate"_s,
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
#include "test_schema.moc"
