#include "readers/parameter_ops.h"
#include "support/test_library.h"

#include <QTest>

using namespace quilla;

namespace {

class ViewerDouble final : public ReportViewer {
public:
    void showReport(const QString& design, Recordset& rows, const ReportTexts&) override
    {
        shown = design + u':' + rows.field(0).text() + u' ' + rows.field(u"chaoqixujie").text()
            + rows.field(u"wuzhengjie").text();
    }
    QString shown;
};

const QString Question = u"读者库中已经存在该种类型的读者！\n是否使其按新设置的参数进行流通？(Y/N)"_s;
const QString Columns
    = u"daycount,bookcount,fine,defile,lost,recount,reday,ifcanre,orderday,ordercount,Acount,Bcount,wuzheng"_s;
const QString Saved = u"30|5|0.1|0.5|2|1|15|True|7|3|2|4|False"_s;
const EditorMode Adding {u"A"_s};
const EditorMode Editing {u"E"_s};

Parameters rules(const QString& type)
{
    Parameters parameters;
    parameters.readerclass = type;
    parameters.numbers
        = {u"30"_s, u"5"_s, u"0.1"_s, u".50"_s, u"2"_s, u"1"_s, u"15"_s, u"7"_s, u"3"_s, u"2"_s, u"4"_s};
    parameters.mayHoldOverdue = true;
    return parameters;
}

} // namespace

class TestParameters : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { QCOMPARE(m->prompt.takeComplaints(), QString()); }

    void numbers_data();
    void numbers();
    void faultsKeepTheTypeEntered();
    void addingAndChanging_data();
    void addingAndChanging();
    void cardsKeepWhatIsTheirs();
    void nobodyIsAskedWithoutCards();
    void eachStatement_data();
    void eachStatement();
    void readingBack();
    void removing();
    void printing();

private:
    QString of(const QString& table, const QString& type)
    {
        return m->value(u"select %1 from %2 where readerclass='%3'"_s.arg(Columns, table, doubled(type)))
            .replace(u"0.100"_s, u"0.1"_s)
            .replace(u"0.500"_s, u"0.5"_s)
            .replace(u"2.000"_s, u"2"_s);
    }

    std::unique_ptr<TestLibrary> m;
};

void TestParameters::init()
{
    m = std::make_unique<TestLibrary>();
    m->reader(u"R1"_s, {{u"readerclass"_s, u"学'生"_s}, {u"yordercshu"_s, u"0"_s}});
    m->reader(u"R2"_s, {{u"readerclass"_s, u"教师"_s}});
}

void TestParameters::numbers_data()
{
    QTest::addColumn<int>("box");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("good");
    QTest::newRow("plain") << int(ParameterBox::LoanDays) << u"30"_s << true;
    QTest::newRow("rate") << int(ParameterBox::OverdueFine) << u"0.1"_s << true;
    QTest::newRow("fraction of a day") << int(ParameterBox::LoanDays) << u"1.5"_s << false;
    QTest::newRow("letters") << int(ParameterBox::LoanDays) << u"3o"_s << false;
    QTest::newRow("date") << int(ParameterBox::LoanDays) << u"2003-02-31"_s << false;
    QTest::newRow("statement") << int(ParameterBox::LoanDays) << u"1;delete from dzk"_s << false;
    QTest::newRow("quote") << int(ParameterBox::LostFine) << u"'2'"_s << false;
    QTest::newRow("column") << int(ParameterBox::LoanDays) << u"bookcount"_s << false;
    QTest::newRow("beyond the column") << int(ParameterBox::LoanDays) << u"3000000000"_s << false;
    QTest::newRow("beyond the rate") << int(ParameterBox::LostFine) << u"100000"_s << false;
    QTest::newRow("overlong") << int(ParameterBox::LoanDays) << u"1"_s.repeated(500) << false;
}

void TestParameters::numbers()
{
    QFETCH(int, box);
    QFETCH(QString, text);
    QFETCH(bool, good);
    Parameters parameters = rules(u"学'生"_s);
    parameters.numbers[box] = text;
    if (!good) m->prompt.expect(u"无效数字格式，取消该操作。"_s).titled(OperationTitle).icon(Icon::Warning);
    QCOMPARE(checkLeftBox(m->session, box, text), good);
    if (!good) m->prompt.expect(u"无效数字类型，取消该操作。"_s).titled(OperationTitle).icon(Icon::Warning);
    QCOMPARE(checkParameters(m->session, Editing, parameters).value_or(-2), good ? -2 : box);
}

void TestParameters::faultsKeepTheTypeEntered()
{
    Parameters parameters = rules({});
    m->prompt.expect(u"无效读者类型，取消该操作。"_s).titled(OperationTitle).icon(Icon::Warning);
    QCOMPARE(checkParameters(m->session, Adding, parameters), int(ParameterBox::Type));

    // A box left empty is refused only here, and the type is in already; each further try adds it again.
    parameters.readerclass = u"新'类"_s;
    parameters.numbers[ParameterBox::Renewals].clear();
    for (int tries = 1; tries <= 2; ++tries) {
        QVERIFY(checkLeftBox(m->session, ParameterBox::Renewals, {}));
        m->prompt.expect(u"无效数字类型，取消该操作。"_s);
        QCOMPARE(checkParameters(m->session, Adding, parameters), int(ParameterBox::Renewals));
        QCOMPARE(m->rows(u"select readerclass from dzlx"_s).size(), tries);
    }
    QCOMPARE(readerTypes(m->session), QStringList {u"新'类"_s});

    m->insert(u"jycs"_s, {{u"readerclass"_s, u"新'类"_s}});
    m->prompt.expect(u"已经存在'新'类'的参数设定，取消该操作。"_s).titled(OperationTitle).icon(Icon::Warning);
    QCOMPARE(checkParameters(m->session, Adding, parameters), int(ParameterBox::Type));
    QCOMPARE(m->rows(u"select readerclass from dzlx"_s).size(), 2);
}

void TestParameters::addingAndChanging_data()
{
    QTest::addColumn<bool>("adds");
    QTest::addColumn<bool>("propagates");
    for (const bool adds : {true, false})
        for (const bool propagates : {true, false})
            QTest::addRow("%s, %s", adds ? "new" : "changed", propagates ? "for all" : "for new cards")
                << adds << propagates;
}

void TestParameters::addingAndChanging()
{
    QFETCH(bool, adds);
    QFETCH(bool, propagates);
    const QString type = u"学'生"_s;
    if (!adds) m->insert(u"jycs"_s, {{u"readerclass"_s, type}, {u"daycount"_s, u"1"_s}});
    const QString card = of(u"dzk"_s, type);
    const QString other = of(u"dzk"_s, u"教师"_s);
    m->prompt.expect(Question)
        .titled(OperationTitle)
        .icon(Icon::Question)
        .answer(propagates ? Answer::Yes : Answer::No);
    QVERIFY(saveParameters(m->session, adds ? Adding : Editing, rules(type)));
    QCOMPARE(of(u"jycs"_s, type), Saved);
    QCOMPARE(of(u"dzk"_s, type), propagates ? Saved : card);
    QCOMPARE(of(u"dzk"_s, u"教师"_s), other);
}

void TestParameters::cardsKeepWhatIsTheirs()
{
    m->send(u"update dzk set bookcount=99,yAcount=2,yBcount=3,readstatus='挂失'"_s);
    m->prompt.expect(Question).answer(Answer::Yes);
    QVERIFY(saveParameters(m->session, Adding, rules(u"学'生"_s)));
    QCOMPARE(
        m->value(
            u"select bookcount,orderbook,yordercshu,yAcount,yBcount,readstatus from dzk where readercode='R1'"_s),
        u"5|0|0|2|3|挂失"_s);
}

void TestParameters::nobodyIsAskedWithoutCards()
{
    m->failAt({});
    QVERIFY(saveParameters(m->session, Adding, rules(u"外来"_s)));
    QCOMPARE(of(u"jycs"_s, u"外来"_s), Saved);
    QVERIFY(
        m->sent.join(u' ').contains(u"Insert Into jycs "
                                    u"(readerclass,daycount,bookcount,fine,defile,lost,recount,reday,ifcanre,"
                                    u"orderday,ordercount,Acount,Bcount,wuzheng) Values ('外来',30,5,0.1,"));
}

void TestParameters::eachStatement_data()
{
    QTest::addColumn<bool>("adds");
    QTest::addColumn<QString>("part");
    QTest::newRow("begin") << false << u"begin"_s;
    QTest::newRow("insert") << true << u"Insert Into jycs"_s;
    QTest::newRow("update") << false << u"Update jycs"_s;
    QTest::newRow("look for cards") << false << u"select top 1"_s;
    QTest::newRow("cards") << false << u"update DZK"_s;
    QTest::newRow("commit") << true << u"commit"_s;
}

void TestParameters::eachStatement()
{
    QFETCH(bool, adds);
    QFETCH(QString, part);
    const QString type = u"学'生"_s;
    if (!adds) m->insert(u"jycs"_s, {{u"readerclass"_s, type}, {u"daycount"_s, u"1"_s}});
    const QString before = m->everything();
    if (part == u"update DZK" || part == u"commit") m->prompt.expect(Question).answer(Answer::Yes);
    m->failAt(part);
    QVERIFY_THROWS_EXCEPTION(Error, saveParameters(m->session, adds ? Adding : Editing, rules(type)));
    m->failAt({});
    QCOMPARE(m->everything(), before);
}

void TestParameters::readingBack()
{
    QVERIFY(saveParameters(m->session, Adding, rules(u"外'来"_s)));
    m->insert(
        u"jycs"_s, {{u"readerclass"_s, u"空"_s}, {u"daycount"_s, u"null"_s}, {u"ifcanre"_s, u"null"_s}});
    auto expected = rules({}).numbers;
    expected[ParameterBox::DefileFine] = u"0.5"_s;
    QCOMPARE(readParameters(m->session, u"外'来"_s), expected);
    QCOMPARE(readParameters(m->session, u"空"_s)[ParameterBox::LoanDays], QString());
    QCOMPARE(readParameters(m->session, u"空"_s)[ParameterBox::LoanCopies], u"0"_s);
    QCOMPARE(readParameters(m->session, u"无"_s)[ParameterBox::LoanCopies], QString());
    QCOMPARE(listParameters(m->session)->recordCount(), 2);
}

void TestParameters::removing()
{
    for (const QString& type : {u"学'生"_s, u"教师"_s, u"外来"_s})
        m->insert(u"jycs"_s, {{u"readerclass"_s, type}});
    m->insert(u"dzlx"_s, {{u"readerclass"_s, u"教师"_s}});
    const QString cards = m->value(u"select readercode,readerclass from dzk order by readercode"_s);
    m->prompt.expect(u"是否确定删除所选的读者类型的参数？"_s)
        .titled(OperationTitle)
        .icon(Icon::Question)
        .answer(Answer::Yes);
    removeRecords(m->session, parameterRemoval(), {u"学'生"_s, u"教师"_s}, [] {});
    QCOMPARE(m->value(u"select readerclass from jycs"_s), u"外来"_s);
    QCOMPARE(m->value(u"select readerclass from dzlx"_s), u"教师"_s);
    QCOMPARE(m->value(u"select readercode,readerclass from dzk order by readercode"_s), cards);
}

void TestParameters::printing()
{
    ViewerDouble viewer;
    const QString nothing = u"没有可以打印的信息！"_s;
    const QString paper = u"请将打印机设置为【A4--横向(宽行)打印】\n设置正确后再进行打印！"_s;
    m->prompt.expect(nothing).titled(OperationTitle);
    printParameters(m->session, viewer, {});
    // The list shows a type that another desk has taken out.
    m->prompt.expect(paper).titled(OperationTitle);
    m->prompt.expect(nothing).titled(OperationTitle);
    printParameters(m->session, viewer, u"外来"_s);
    QCOMPARE(viewer.shown, QString());
    QVERIFY(saveParameters(m->session, Adding, rules(u"外来"_s)));
    m->prompt.expect(paper);
    printParameters(m->session, viewer, u"外来"_s);
    QCOMPARE(viewer.shown, u"ltcsPrint:外来 是否"_s);
}

QTEST_GUILESS_MAIN(TestParameters)
#include "test_parameters.moc"
