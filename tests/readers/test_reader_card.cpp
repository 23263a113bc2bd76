#include "platform/core/date_box.h"
#include "readers/reader_card_checks_ops.h"
#include "readers/reader_card_saving_ops.h"
#include "support/library_test.h"

using namespace quilla;

namespace {

/// A screen that holds a card and writes down what was done to it.
class CardScreen final : public ReaderCardView {
public:
    ReaderCard shownCard() const override { return card; }
    bool hasUnits() const override { return units; }
    void showQuota(const QString& text) override { card.rules.loanCopies = text; }
    void showStatus(const QString& text) override { card.status = text; }
    void focusField(int field) override { done += u"field %1"_s.arg(field); }
    void showParameters() override { done += u"panel "_s; }
    void tellFailure(const QString& headline, const QString& detail) override
    {
        QVERIFY(!detail.isEmpty());
        done += headline;
    }

    ReaderCard card;
    bool units = true;
    QString done;
};

const QString AddFailed = u"读者增加失败！请检查后重新操作！详细资料如下："_s;
const QString ChangeFailed = u"读者修改失败！请检查后重新操作！详细资料如下："_s;

CardEdit adding()
{
    return {EditorMode(u"a"_s)};
}

CardEdit changing(const QString& code)
{
    return {EditorMode(u"E"_s), code};
}

CardEdit renaming(const QString& code)
{
    return {EditorMode(u"E"_s), code, true};
}

ReaderCard goodCard(const QString& code)
{
    ReaderCard card;
    int number = 8;
    for (const auto& rule : numberRules<QString>())
        card.rules.*rule.number = QString::number(number++);
    card.rules.loanCopies = u"5"_s;
    card.rules.overdueFine = u"0.1"_s;
    card.rules.mayHoldOverdue = true;
    card.code = code;
    card.name = u"O'Neil"_s;
    card.onLoan = u"0"_s;
    card.issued = u"2026-3-1"_s;
    card.term = u"2027-3-1"_s;
    card.memo = u"一行\n'两行'"_s;
    card.sex = u"男"_s;
    card.type = u"学'生"_s;
    card.unit = u"一'班"_s;
    card.status = u"有效"_s;
    card.photo = u"/照片/o'neil.jpg"_s;
    card.papers = {u"学'生证"_s, u"4'4"_s, u"o'n@x"_s, u"'路'"_s};
    return card;
}

} // namespace

/// Checks and statements of a reader card, without its screen.
class TestReaderCard : public LibraryTest {
    Q_OBJECT

private Q_SLOTS:
    /// An empty form, mended fault by fault.
    void checksInTheirOrder()
    {
        struct Fault {
            QString text;
            Icon icon;
            QString title;
            QString done;
            std::function<void(CardScreen&)> mend;
        };
        const auto set = [](QString ReaderCard::*text, const QString& value) {
            return [=](CardScreen& screen) { screen.card.*text = value; };
        };
        const auto rule = [](QString RuleTexts::*number, const QString& value) {
            return [=](CardScreen& screen) { screen.card.rules.*number = value; };
        };
        const auto otherRules = [](CardScreen& screen) {
            for (const auto& each : numberRules<QString>())
                if (isBlank(screen.card.rules.*each.number)) screen.card.rules.*each.number = u"1"_s;
            screen.card.rules.scienceCopies = u"1.5"_s;
        };
        const QString own = u"青简台"_s;
        const QString usual = u"操作提示"_s;
        const QString issued = u"请正确输入登记日期(例如:2003-01-01)"_s;
        const QString term = u"请正确输入有效期限(例如:2003-01-01)"_s;
        const QString fullYear = u"请输入完整的日期格式!(例如:2003-01-01)"_s;
        const QString noNumber = u"读者流通参数应该为数值！请重新设定！"_s;
        const QString missing = u"有一些必须的参数没有设置，请检查并继续设置！"_s;
        const std::vector<Fault> faults {
            {u"请正确输入读者号"_s, Icon::Warning, own, u"field 0"_s, set(&ReaderCard::code, u"R1 "_s)},
            {u"请输入读者姓名"_s, Icon::Warning, own, u"field 1"_s, set(&ReaderCard::name, u"张"_s)},
            {u"读者类型没有定义！请添加读者类型！"_s, Icon::Information, usual, {},
                set(&ReaderCard::type, u"甲"_s)},
            {u"目前没有可用的读者单位，请先定义读者单位"_s, Icon::Information, own, u"field 2"_s,
                [](CardScreen& screen) { screen.units = true; }},
            {u"请输入读者单位"_s, Icon::Warning, own, u"field 2"_s, set(&ReaderCard::unit, u"甲"_s)},
            {issued, Icon::Information, usual, u"field 3"_s, set(&ReaderCard::issued, u"1-2-03"_s)},
            {fullYear, Icon::Information, usual, u"field 3"_s, set(&ReaderCard::issued, u"2026-3-10"_s)},
            {term, Icon::Information, usual, u"field 4"_s, set(&ReaderCard::term, u"1-2-29"_s)},
            {fullYear, Icon::Information, usual, u"field 4"_s, set(&ReaderCard::term, u"2027-3-10"_s)},
            {noNumber, Icon::Information, usual, u"field 5"_s, rule(&RuleTexts::loanDays, u"0"_s)},
            {noNumber, Icon::Information, usual, u"field 7"_s, otherRules},
            {noNumber, Icon::Information, usual, u"field 15"_s, rule(&RuleTexts::scienceCopies, u"0"_s)},
            // the first test of a code takes it as typed, the second without blanks around it
            {u"读者号重复"_s, Icon::Warning, own, u"field 0"_s, set(&ReaderCard::code, u" R1"_s)},
            {missing, Icon::Information, usual, u"panel field 6"_s, rule(&RuleTexts::loanCopies, u"1.5"_s)},
            {missing, Icon::Information, usual, u"panel field 5"_s, rule(&RuleTexts::loanDays, u"20"_s)},
            {noNumber, Icon::Information, usual, u"panel field 6"_s, rule(&RuleTexts::loanCopies, u"5"_s)},
            {u"该读者证号已经存在，请重新输入！"_s, Icon::Information, usual, u"field 0"_s,
                set(&ReaderCard::code, u"R2"_s)},
        };
        m->reader(u"r1"_s);
        const QString before = m->everything();
        CardScreen screen;
        screen.units = false;
        for (const Fault& fault : faults) {
            m->prompt.expect(fault.text).titled(fault.title).icon(fault.icon);
            screen.done.clear();
            QVERIFY(!saveCard(m->session, adding(), screen));
            QCOMPARE(m->prompt.takeComplaints(), QString());
            QCOMPARE(screen.done, fault.done);
            fault.mend(screen);
        }
        QCOMPARE(m->everything(), before);
        QVERIFY(saveCard(m->session, adding(), screen));
    }

    /// The term as typed, the state before and after.
    void stateFollowsTerm()
    {
        const std::array<QString, 3> cases[] {{u"2026-03-09"_s, u"有效"_s, u"超期"_s},
            {u"2026年3月9日 8:15"_s, u"有效"_s, u"有效"_s}, {u"2026-03-10"_s, u"超期"_s, u"有效"_s},
            {u"2026-3-9"_s, u"超期"_s, u"有效"_s}, {u"2020-01-01"_s, u"挂失"_s, u"挂失"_s},
            {u"2030-01-01"_s, u"无效"_s, u"无效"_s}};
        m->reader(u"R1"_s);
        for (const auto& [term, state, saved] : cases) {
            ReaderCard card = goodCard(u"R1"_s);
            card.term = term;
            card.status = state;
            QCOMPARE(save(changing(u"R1"_s), card), u"saved"_s);
            QCOMPARE(
                m->value(u"select readstatus,term from dzk"_s), saved + u'|' + isoDate(*platformDate(term)));
        }
    }

    /// With the loans as they were shown: a charge between opening and saving is undone by the save.
    void comesBackAsSaved()
    {
        const ReaderCard card = goodCard(u"R'1"_s);
        m->insert(u"dzkx"_s, {{u"readercode"_s, u"R'1"_s}, {u"dizhi"_s, u"旧"_s}}); // of an earlier card
        QCOMPARE(save(adding(), card), u"saved"_s);
        m->send(u"update dzk set orderbook=1,yordercshu=2,yAcount=3,yBcount=4"_s);
        QCOMPARE(save(changing(u"R'1"_s), card), u"saved"_s);
        const auto loaded = readCard(m->session, u"r'1"_s);
        ReaderCard expected = card;
        expected.issued = u"2026-03-01"_s;
        expected.term = u"2027-03-01"_s;
        expected.reserved = u"2"_s;
        expected.artsOnLoan = u"3"_s;
        expected.scienceOnLoan = u"4"_s;
        expected.papers = {}; // they come beside it
        QVERIFY(loaded && loaded->card == expected);
        QVERIFY(loaded->papers == card.papers);
    }

    void papersThatAreMissing()
    {
        m->reader(u"R2"_s, {{u"term"_s, u"null"_s}});
        const auto bare = readCard(m->session, u"R2"_s);
        QCOMPARE(bare->card.term + bare->papers->kind, u"其它"_s);
        m->insert(u"dzkx"_s, {{u"readercode"_s, u"R2"_s}, {u"zhenghaolx"_s, u"null"_s}});
        QCOMPARE(readCard(m->session, u"R2"_s)->papers->kind, u"其它"_s);
        m->send(u"update dzkx set zhenghaolx='' where readercode='R2'"_s);
        QCOMPARE(readCard(m->session, u"R2"_s)->papers->kind, QString());
    }

    void ownRulesOfTheType()
    {
        m->insert(u"jycs"_s,
            {{u"readerclass"_s, u"教'师"_s}, {u"daycount"_s, u"60"_s}, {u"fine"_s, u"0.1"_s},
                {u"wuzheng"_s, u"1"_s}});
        const auto rules = rulesOfType(m->session, u"教'师"_s);
        QCOMPARE(rules->loanDays + u' ' + rules->overdueFine, u"60 0.1"_s);
        QVERIFY(!rules->mayHoldOverdue && rules->needsNoCard);
        QVERIFY(rulesOfType(m->session, u"无规则"_s) == noRules());
        m->failAt(u"from jycs"_s);
        QVERIFY(!rulesOfType(m->session, u"教'师"_s));
    }

    /// What the database has is written and looked for as it stands, though it is shown without the blank.
    void aBlankBeforeTheCode()
    {
        m->reader(u" R1"_s);
        m->reader(u"R1"_s, {{u"name"_s, u"别人"_s}});
        const auto loaded = readCard(m->session, u" R1"_s);
        QCOMPARE(loaded->card.code + u'|' + loaded->storedCode, u"R1| R1"_s);
        QCOMPARE(save(changing(loaded->storedCode), goodCard(u"R1"_s)), u"saved"_s);
        QCOMPARE(m->rows(u"select readercode,name from dzk order by readercode"_s).join(u';'),
            u" R1|O'Neil;R1|别人"_s);
        QCOMPARE(m->value(u"select readercode from dzkx"_s), u" R1"_s);
    }

    /// Which statement fails, or a code that is too long; how many cards and papers stand afterwards.
    void failuresOfSingleStatements()
    {
        const std::array<QString, 2> cases[] {{u"insert into dzk("_s, u"0|1"_s},
            {u"insert  into  dzkx"_s, u"1|0"_s}, {u"select readercode from dzk where"_s, u"0|0"_s},
            {QString(51, u'码'), u"0|0"_s}, {u"update dzk set"_s, u"1|1"_s}};
        for (const auto& [fault, stands] : cases) {
            m = std::make_unique<TestLibrary>();
            const bool change = fault.startsWith(u"update");
            const bool tooLong = !fault.contains(u' ');
            if (change) m->reader(u"R1"_s);
            if (!tooLong) m->failAt(fault);
            const ReaderCard card = goodCard(tooLong ? fault : u"R1"_s);
            QCOMPARE(save(change ? changing(u"R1"_s) : adding(), card), change ? ChangeFailed : AddFailed);
            m->factory.setHook({});
            QCOMPARE(
                m->value(u"select count(*) from dzk"_s) + u'|' + m->value(u"select count(*) from dzkx"_s),
                stands);
            QVERIFY(!m->session.error.isSet());
        }
    }

    /// Taken codes are refused; the old one, also in other letters, goes the way of a new one.
    void newCode()
    {
        plantReader();
        m->prompt.expect(u"该读者证号已经存在，请重新输入！"_s).titled(u"操作提示").icon(Icon::Information);
        const QString before = m->everything();
        QCOMPARE(save(renaming(u"R1"_s), goodCard(u"r2 "_s)), u"field 0"_s);
        QCOMPARE(m->everything(), before);
        QString old = u"R1"_s;
        for (const QString& code : {u"r1"_s, u" N'9 "_s}) {
            QCOMPARE(save(renaming(old), goodCard(code)), u"saved"_s);
            old = trimBlanks(code);
            for (const QString& table : {u"dzk"_s, u"dzkx"_s, u"fkk"_s, u"jhsk"_s, u"jhslsk"_s, u"yyk"_s})
                QVERIFY2(m->rows(u"select readercode from "_s + table).contains(old), qPrintable(table));
        }
        QCOMPARE(m->value(u"select readercode from diushik"_s), u"R1"_s);
        QCOMPARE(m->value(u"select readercode from jhsk where barcode='B2'"_s), u"R2"_s);
    }

    void newCodeIsAllOrNothing()
    {
        plantReader();
        const QString before = m->everything();
        for (const QString& fault :
            {u"begin"_s, u"update dzk set"_s, u"select readercode from dzkx"_s, u"update dzkx  set"_s,
                u"update fkk"_s, u"update jhsk set"_s, u"update jhslsk"_s, u"update yyk"_s, u"commit"_s}) {
            m->failAt(fault);
            QCOMPARE(save(renaming(u"R1"_s), goodCard(u"N9"_s)), ChangeFailed);
            m->factory.setHook({});
            QVERIFY2(m->everything() == before, qPrintable(fault));
        }
    }

    void yearsOfTerm()
    {
        const std::array<QString, 3> cases[] {{u"1"_s, u"2024-2-29"_s, u"2025-02-28"_s},
            {u" 5 "_s, u"2026-02-31"_s, u"2031-03-10"_s}, {u"6"_s, u"2026-03-01"_s, u"none"_s},
            {u"0"_s, {}, u"none"_s}, {u"两年"_s, {}, u"none"_s}};
        for (const auto& [years, issued, term] : cases)
            QCOMPARE(termOfYears(m->session, years, issued).value_or(u"none"_s), term);
    }

private:
    /// What the screen was asked to do, and "saved" after a success.
    QString save(const CardEdit& edit, const ReaderCard& card)
    {
        CardScreen screen;
        screen.card = card;
        const bool saved = saveCard(m->session, edit, screen);
        return screen.done + (saved ? u"saved"_s : QString());
    }

    void plantReader()
    {
        m->reader(u"R1"_s, {{u"name"_s, u"旧"_s}});
        m->reader(u"R2"_s);
        m->insert(u"dzkx"_s, {{u"readercode"_s, u"R1"_s}});
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-30"_s);
        m->loan(u"B2"_s, u"R2"_s, u"2026-03-30"_s);
        m->reservation(u"R1"_s);
        for (const QString& table : {u"jhslsk"_s, u"fkk"_s, u"diushik"_s})
            m->insert(table, {{u"readercode"_s, u"R1"_s}, {u"barcode"_s, u"B1"_s}});
    }
};

QTEST_GUILESS_MAIN(TestReaderCard)
#include "test_reader_card.moc"
