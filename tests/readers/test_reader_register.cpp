#include "frame/sublib.h"
#include "readers/reader_register_ops.h"
#include "support/grid_text.h"
#include "support/library_test.h"
#include "support/progress_double.h"
#include "support/report_double.h"

using namespace quilla;

namespace {

const QString Changed = u"读者单位修改完毕！"_s;

} // namespace

/// The register of readers without its screen.
class TestReaderRegister : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m_grid = std::make_unique<GridModel>();
        m_grid->setCols(ReaderState + 1);
        m_progress = {};
    }
    void finish() override
    {
        QVERIFY(!m->session.error.isSet());
        QCOMPARE(m->broken(), QString());
    }

private Q_SLOTS:
    void everyStateReadsValid()
    {
        m->reader(u"R1"_s, {{u"paperdate"_s, u"2026-1-5"_s}, {u"term"_s, u"2001-02-03"_s}});
        m->reader(u"R'2"_s, {{u"readstatus"_s, u"超期 "_s}});
        m->reader(u"R3"_s, {{u"readstatus"_s, u"挂失"_s}});
        m->reader(u"R5"_s, {{u"term"_s, u"null"_s}, {u"readstatus"_s, u"null"_s}});
        m->failAt({});
        QCOMPARE(found({}, u"readercode Desc"_s), 4);
        QCOMPARE(m->sent.filter(u"update"_s).size(), 1);
        QCOMPARE(columnOf(*m_grid, ReaderCode), u"R5 R3 R1 R'2"_s);
        QCOMPARE(columnOf(*m_grid, ReaderState), u"有效 有效 有效 有效"_s);
        QCOMPARE(m_grid->TextMatrix(3, ReaderIssued) + m_grid->TextMatrix(1, ReaderTerm), u"2026-01-05"_s);
        QCOMPARE(m->rows(u"select readstatus from dzk order by name"_s).join(u' '), u"有效 有效 挂失 null"_s);
    }

    void searches()
    {
        m->reader(u"R1"_s);
        m->reader(u"R2"_s, {{u"name"_s, u"O'Hara"_s}});
        m->reader(u"R3"_s, {{u"bookcount"_s, u"7"_s}});
        QCOMPARE(found(), 3);
        QCOMPARE(found(u"(name Like '%''%') OR (bookcount>=7)"_s, u"readercode Asc"_s), 2);
        QCOMPARE(found(u"Convert(varchar(10),term,111) Like '2027/__/__'"_s), 3);
        QCOMPARE(found(u"name='"_s), 0);
    }

    void deletesOne_data()
    {
        const QString all = u"R1 r'2 R3"_s;
        // the reader, the answer, the statement that fails, the cards left, the details and fines left
        cases<QString, Answer, QString, QString, QString>({
            {"yes", {u"r'2"_s, Answer::Yes, {}, u"R1 R3"_s, u"0 1"_s}},
            {"no", {u"r'2"_s, Answer::No, {}, all, u"1 1"_s}},
            {"has a book", {u"R1"_s, Answer::Ok, {}, all, u"1 1"_s}},
            {"card stays, details go", {u"r'2"_s, Answer::Yes, u"from dzk where"_s, all, u"0 1"_s}},
        });
    }
    void deletesOne()
    {
        const auto [code, answer, fails, left, beside] = given<QString, Answer, QString, QString, QString>();
        threeReaders();
        const bool asks = answer != Answer::Ok;
        m->prompt
            .expect(asks ? u"你确定要删除读者:%1 吗？(Y/N)"_s.arg(code)
                         : u"此读者尚有借书未还，需先归还借书才能删除读者"_s)
            .titled(OperationTitle)
            .icon(asks ? Icon::Question : Icon::Warning)
            .answer(answer, asks ? Answer::No : Answer::Yes);
        m->failAt(fails);
        QCOMPARE(deleteReader(m->session, code), asks);
        m->failAt({});
        QCOMPARE(codes(), left);
        const QStringList counts
            = m->rows(u"select count(*) from dzkx"_s) + m->rows(u"select count(*) from fkk"_s);
        QCOMPARE(counts.join(u' '), beside);
    }

    /// Nobody is asked about a reader whose loans can't be counted; nobody else suffers from it.
    void loansThatCantBeCounted()
    {
        threeReaders();
        m->failAt(u"from jhsk where readercode='r''2'"_s);
        m->prompt.expect(u"无法得知该读者是否还有未还图书，没有删除，请稍后再试。"_s);
        QVERIFY(!deleteReader(m->session, u"r'2"_s));
        m->prompt.expect(u"是否确定删除当前所有读者资料？"_s).answer(Answer::Yes);
        m->prompt.expect(u"无法得知其中 1 位读者是否还有未还图书，没有删除，请稍后再试。"_s);
        deleteReaders(m->session, m_progress, {u"r'2"_s, u"R3"_s}, [] {});
        QCOMPARE(codes(), u"R1 r'2"_s);
    }

    /// Each statement waits for another desk's writing, so the walk ends at the first that waited in vain, be
    /// it the lock of the whole base or that of one row.
    void anotherDeskIsWaitedForOnce()
    {
        const QString inUse = u"数据库正被其他工作站占用，%1，请稍后再试。"_s;
        const QStringList all {u"R1"_s, u"R2"_s, u"R3"_s};
        for (const QString& code : all)
            m->reader(code, {{u"readstatus"_s, u"超期"_s}});
        const QString rowOf2 = u"where readercode='R2'"_s;
        for (const auto& [barred, done] : {std::pair(u"begin"_s, 0), std::pair(rowOf2, 1)}) {
            int tries = 0;
            m->factory.setHook([&](QStringView statement) {
                if (!statement.contains(barred)) return;
                ++tries;
                throw Error(ErrorNumber::InUse, u"test"_s, u"in use"_s);
            });
            m->prompt.expect(inUse.arg(u"只修改了前 %1 位读者的单位"_s.arg(done)));
            quilla::changeUnits(m->session, m_progress, all, QString::number(done));
            QCOMPARE(found({}, u"readercode"_s), 3);
            QCOMPARE(m_toTell, inUse.arg(u"%1 位读者的“超期”状态没有改回“有效”"_s.arg(3 - done)));
            m->prompt.expect(u"是否确定删除当前所有读者资料？"_s).answer(Answer::Yes);
            m->prompt.expect(inUse.arg(u"最后 %1 位读者没有处理"_s.arg(2)));
            deleteReaders(m->session, m_progress, {u"R2"_s, u"R3"_s}, [] {});
            QCOMPARE(tries, 3);
            m->factory.setHook({});
        }
        QCOMPARE(m->rows(u"select readunit,readstatus from dzk order by readercode"_s).join(u' '),
            u"1|有效 null|超期 null|超期"_s);
    }

    /// One has a book, one fails, and the last goes.
    void deletesAllFound()
    {
        threeReaders();
        const QStringList found {u"R1"_s, u"r'2"_s, u"R3"_s};
        const QString question = u"是否确定删除当前所有读者资料？"_s;
        m->prompt.expect(question).titled(OperationTitle).answer(Answer::No);
        deleteReaders(m->session, m_progress, found, [] { QFAIL("not asked for"); });
        m->prompt.expect(question).answer(Answer::Yes);
        m->prompt.expect(u"部分读者存在未还图书，不能删除。\n请先归还已借图书然后再删除该读者资料。"_s)
            .titled(OperationTitle)
            .icon(Icon::Warning);
        m->failAt(u"from dzk where readercode='r''2'"_s);
        QString atRefresh;
        deleteReaders(m->session, m_progress, found, [&] { atRefresh = codes(); });
        QCOMPARE(atRefresh, u"R1 r'2"_s);
    }

    void changesUnits()
    {
        const std::pair<QString, QString> units[] {{u"x' where 1=1 --"_s, u"null|null"_s},
            {u" 新 班 "_s, u" 新 班 | 新 班 "_s}, {u"O''Hara"_s, u"O'Hara|O'Hara"_s}};
        m->reader(u"R1"_s);
        m->reader(u"R2"_s);
        for (const auto& [typed, stored] : units) {
            m->prompt.expect(Changed).titled(OperationTitle).icon(Icon::Information);
            QVERIFY(quilla::changeUnits(m->session, m_progress, {u"R1"_s, u"R2"_s}, typed));
            QCOMPARE(m->rows(u"select readunit from dzk order by readercode"_s).join(u'|'), stored);
        }
        QCOMPARE(m_progress.begun, 0);
    }

    void withoutAConnection()
    {
        m->reader(u"R1"_s);
        storeConnectionText(m->session, u"DSN=nowhere;"_s);
        const QString failed = u"对不起，连接数据库失败！错误原因如下："_s;
        m->prompt.expectStart(failed).answer(Answer::Yes);
        QVERIFY(!quilla::changeUnits(m->session, m_progress, {u"R1"_s}, u"甲"_s));
        m->prompt.expectStart(failed).answer(Answer::No);
        m->prompt.expect(Changed);
        QVERIFY(quilla::changeUnits(m->session, m_progress, {u"R1"_s}, u"甲"_s));
        m->prompt.expectStart(failed).answer(Answer::Yes);
        QCOMPARE(found(), -1);
        storeConnectionText(m->session, m->connectionText);
        QCOMPARE(m->value(u"select readunit from dzk"_s), u"null"_s);
    }

    void aLongWalkCanBeEnded()
    {
        QStringList all;
        for (int i = 0; i < LongWalk + 100; ++i) {
            all.append(u"R%1"_s.arg(i, 4, 10, QChar(u'0')));
            m->reader(all.last());
        }
        m_progress.endAt = 500;
        m->prompt.expect(u"已取消，只修改了前 500 位读者的单位。"_s);
        quilla::changeUnits(m->session, m_progress, all, u"甲"_s);
        QCOMPARE(m->value(u"select max(readercode),count(*) from dzk where readunit='甲'"_s), u"R0499|500"_s);
        QCOMPARE(m_progress.total, 600);
        QVERIFY(m_progress.begun == 1 && m_progress.ended == 1);
    }

    void prints()
    {
        threeReaders();
        ReportDouble report({u"readercode"_s});
        const QString nothing = u"没有可以打印的信息！"_s;
        const QString paper = u"请将打印机设置为【A4--纵向(窄行)打印】\n设置正确后再进行打印！"_s;
        m->prompt.expect(nothing).titled(OperationTitle);
        printReaders(m->session, report, {}, false);
        m->prompt.expect(paper).titled(OperationTitle).icon(Icon::Information);
        m->prompt.expect(nothing).titled(OperationTitle);
        printReaders(m->session, report, {.condition = u"name='gone'"_s}, true);
        m->prompt.expect(paper);
        printReaders(
            m->session, report, {.condition = u"readercode<>'R1'"_s, .order = u"readercode Desc"_s}, true);
        QCOMPARE(report.shown.join(u' '), u"readerPrint R3 r'2"_s);
    }

private:
    int found(const QString& condition = {}, const QString& order = {})
    {
        const auto listed = listReaders(m->session, {.condition = condition, .order = order}, *m_grid);
        m_toTell = listed ? listed->toTell : QString();
        return listed ? int(listed->found) : -1;
    }
    QString codes() { return m->rows(u"select readercode from dzk order by name"_s).join(u' '); }
    /// The first has a book, the second details and a fine.
    void threeReaders()
    {
        for (const QString& code : {u"R1"_s, u"r'2"_s, u"R3"_s})
            m->reader(code, {{u"name"_s, u"读者"_s + code.last(1)}});
        m->loan(u"B1"_s, u"R1"_s, u"2026-04-01"_s);
        m->insert(u"dzkx"_s, {{u"readercode"_s, u"R'2"_s}, {u"email"_s, u"a@b"_s}});
        m->insert(u"fkk"_s, {{u"readercode"_s, u"R'2"_s}, {u"sfmoney"_s, u"1"_s}});
    }

    std::unique_ptr<GridModel> m_grid;
    QString m_toTell; ///< after the last listing
    CountedProgress m_progress {};
};

QTEST_GUILESS_MAIN(TestReaderRegister)
#include "test_reader_register.moc"
