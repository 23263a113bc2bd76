#include "readers/parameter_ops.h"
#include "support/library_test.h"
#include "support/report_double.h"

using namespace quilla;

namespace {

const QString Question = u"读者库中已经存在该种类型的读者！\n是否使其按新设置的参数进行流通？(Y/N)"_s;
const QString NoNumber = u"无效数字类型，取消该操作。"_s;
const QString Type = u"学'生"_s;
constexpr int RenewalsBox = 5;
const EditorMode Adding {u"A"_s};
const EditorMode Editing {u"E"_s};

Parameters rules(const QString& type)
{
    Parameters parameters;
    parameters.readerclass = type;
    parameters.rules = {.loanDays = u"30"_s,
        .loanCopies = u"5"_s,
        .overdueFine = u"0.1"_s,
        .defileFine = u".50"_s,
        .lostFine = u"2"_s,
        .renewals = u"1"_s,
        .renewalDays = u"15"_s,
        .mayHoldOverdue = true,
        .holdDays = u"7"_s,
        .holdCopies = u"3"_s,
        .artsCopies = u"2"_s,
        .scienceCopies = u"4"_s};
    return parameters;
}

} // namespace

/// Checks and statements of the rules of a reader type, without their screens.
class TestParameters : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m->reader(u"R1"_s, {{u"readerclass"_s, Type}, {u"yordercshu"_s, u"0"_s}});
        m->reader(u"R2"_s, {{u"readerclass"_s, u"教师"_s}});
    }

private Q_SLOTS:
    void numbers_data()
    {
        // the box, its rule, what was typed, whether the column holds it
        cases<int, QString RuleTexts::*, QString, bool>({
            {"rate", {2, &RuleTexts::overdueFine, u"0.1"_s, true}},
            {"rate too large", {4, &RuleTexts::lostFine, u"100000"_s, false}},
            {"fraction of a day", {10, &RuleTexts::scienceCopies, u"1.5"_s, false}},
            {"count too large", {0, &RuleTexts::loanDays, u"3000000000"_s, false}},
            {"statement", {0, &RuleTexts::loanDays, u"1;delete from dzk"_s, false}},
        });
    }
    void numbers()
    {
        const auto [box, rule, text, good] = given<int, QString RuleTexts::*, QString, bool>();
        Parameters parameters = rules(Type);
        parameters.rules.*rule = text;
        if (!good)
            m->prompt.expect(u"无效数字格式，取消该操作。"_s).titled(OperationTitle).icon(Icon::Warning);
        QCOMPARE(toldBox(leftBoxRefusal(box, text)), good ? -1 : box);
        if (!good) m->prompt.expect(NoNumber).titled(OperationTitle).icon(Icon::Warning);
        QCOMPARE(toldBox(checkParameters(m->session, Editing, parameters)), good ? -1 : box);
        QCOMPARE(readerTypes(m->session), QStringList());
    }

    void faultsKeepTheTypeEntered()
    {
        Parameters parameters = rules({});
        m->prompt.expect(u"无效读者类型，取消该操作。"_s).titled(OperationTitle).icon(Icon::Warning);
        QCOMPARE(toldBox(checkParameters(m->session, Adding, parameters)), int(ParameterBox::Type));

        // A box left empty is refused only here, and the type is in already; each further try adds it again.
        parameters.readerclass = u"新'类"_s;
        parameters.rules.renewals.clear();
        for (int tries = 1; tries <= 2; ++tries) {
            QVERIFY(!leftBoxRefusal(RenewalsBox, {}));
            m->prompt.expect(NoNumber);
            QCOMPARE(toldBox(checkParameters(m->session, Adding, parameters)), RenewalsBox);
            QCOMPARE(m->rows(u"select readerclass from dzlx"_s).size(), tries);
        }
        QCOMPARE(readerTypes(m->session), QStringList {u"新'类"_s});

        m->insert(u"jycs"_s, {{u"readerclass"_s, u"新'类"_s}});
        m->prompt.expect(u"已经存在'新'类'的参数设定，取消该操作。"_s)
            .titled(OperationTitle)
            .icon(Icon::Warning);
        QCOMPARE(toldBox(checkParameters(m->session, Adding, parameters)), int(ParameterBox::Type));
        QCOMPARE(m->rows(u"select readerclass from dzlx"_s).size(), 2);
    }

    void savesForTheTypeAndItsCards_data()
    {
        cases<bool, Answer>({
            {"new, for all", {true, Answer::Yes}},
            {"new, for new cards", {true, Answer::No}},
            {"changed, for all", {false, Answer::Yes}},
        });
    }
    void savesForTheTypeAndItsCards()
    {
        const auto [adds, answer] = given<bool, Answer>();
        const QString theirs
            = u"select yordercshu,yAcount,yBcount,readstatus,orderbook from dzk order by readercode"_s;
        m->send(u"update dzk set bookcount=99,yAcount=2,yBcount=3,readstatus='挂失'"_s);
        for (const QString& type : adds ? QStringList {u"教师"_s} : QStringList {u"教师"_s, Type})
            m->insert(u"jycs"_s, {{u"readerclass"_s, type}, {u"daycount"_s, u"1"_s}});
        const QString cards = m->value(theirs);
        const QString card = of(u"dzk"_s, Type);
        const QString other = of(u"dzk"_s, u"教师"_s) + of(u"jycs"_s, u"教师"_s);
        m->prompt.expect(Question).titled(OperationTitle).icon(Icon::Question).answer(answer);
        QVERIFY(saveParameters(m->session, adds ? Adding : Editing, rules(Type)));
        const QString saved = u"30|5|0.1|0.5|2|1|15|True|7|3|2|4|False"_s;
        QCOMPARE(of(u"jycs"_s, Type), saved);
        QCOMPARE(of(u"dzk"_s, Type), answer == Answer::Yes ? saved : card);
        QCOMPARE(of(u"dzk"_s, u"教师"_s) + of(u"jycs"_s, u"教师"_s), other);
        QCOMPARE(m->value(theirs), cards);
    }

    void failingStatementsChangeNothing()
    {
        m->insert(u"jycs"_s, {{u"readerclass"_s, Type}, {u"daycount"_s, u"1"_s}});
        const QString before = m->everything();
        for (const QString& part :
            {u"begin"_s, u"Update jycs"_s, u"select top 1"_s, u"update DZK"_s, u"commit"_s}) {
            if (part == u"update DZK" || part == u"commit") m->prompt.expect(Question).answer(Answer::Yes);
            m->failAt(part);
            QVERIFY_THROWS_EXCEPTION(Error, saveParameters(m->session, Editing, rules(Type)));
            m->failAt({});
            QVERIFY2(m->everything() == before, qPrintable(part));
        }
    }

    /// Nobody is asked about a type without cards.
    void readingBack()
    {
        QVERIFY(saveParameters(m->session, Adding, rules(u"外'来"_s)));
        m->insert(u"jycs"_s, {{u"readerclass"_s, u"空"_s}, {u"daycount"_s, u"null"_s}});
        RuleTexts expected = rules({}).rules;
        expected.defileFine = u"0.5"_s;
        expected.mayHoldOverdue = false; // the list says how the flags stand
        QVERIFY(readParameters(m->session, u"外'来"_s) == expected);
        QCOMPARE(readParameters(m->session, u"空"_s).loanDays, QString());
        QCOMPARE(readParameters(m->session, u"无"_s).loanCopies, QString());
    }

    void printing()
    {
        ReportDouble report({u"readerclass"_s, u"chaoqixujie"_s, u"wuzhengjie"_s});
        const QString nothing = u"没有可以打印的信息！"_s;
        const QString paper = u"请将打印机设置为【A4--横向(宽行)打印】\n设置正确后再进行打印！"_s;
        m->prompt.expect(nothing).titled(OperationTitle);
        printParameters(m->session, report, {});
        // The list shows a type that another desk has taken out.
        m->prompt.expect(paper).titled(OperationTitle);
        m->prompt.expect(nothing).titled(OperationTitle);
        printParameters(m->session, report, u"外来"_s);
        m->insert(u"jycs"_s, {{u"readerclass"_s, u"外来"_s}, {u"ifcanre"_s, u"1"_s}});
        m->prompt.expect(paper);
        printParameters(m->session, report, u"外来"_s);
        QCOMPARE(report.shown.join(u' '), u"ltcsPrint 外来 是 否"_s);
    }

private:
    /// The rules as a table has them, however many places the engine shows.
    QString of(const QString& table, const QString& type)
    {
        const QString columns
            = u"daycount,bookcount,fine,defile,lost,recount,reday,ifcanre,orderday,ordercount,Acount,Bcount,wuzheng"_s;
        return m->value(u"select %1 from %2 where readerclass='%3'"_s.arg(columns, table, doubled(type)))
            .replace(u"0.100"_s, u"0.1"_s)
            .replace(u"0.500"_s, u"0.5"_s)
            .replace(u"2.000"_s, u"2"_s);
    }
};

QTEST_GUILESS_MAIN(TestParameters)
#include "test_parameters.moc"
