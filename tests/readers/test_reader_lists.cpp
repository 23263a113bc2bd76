#include "readers/reader_list_ops.h"
#include "support/test_library.h"

#include <QTest>

using namespace quilla;

namespace {

const QString Dependent = u"删除读者类型，则此读者类型相关的借阅参数将同时被删除,继续删除？(Y/N)"_s;
const QString WithRules = u"此读者类型已定义了流通参数,要删除这些流通参数吗？(Y/N"_s;
const QString Entered = u"你已经增加了一个读者类型:%1,请到流通参数功能模块修改其流通参数"_s;

} // namespace

class TestReaderLists : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void addingAType();
    void renamingAType();
    void removingAType_data();
    void removingAType();
    void units();
    void failures_data();
    void failures();

private:
    ReaderListEntry entry(const ReaderList& list, const QString& name)
    {
        for (auto row = readList(m->session, list); row && !row->eof(); row->next())
            if (row->field(1).text() == name) return {row->field(0).text(), name};
        return {};
    }
    QString types() { return m->rows(u"select readerclass from dzlx order by dzlxid"_s).join(u' '); }
    QString rules() { return m->rows(u"select readerclass from jycs order by jycsid"_s).join(u' '); }
    QString unitNames() { return m->rows(u"select readunit from dzdw order by dzdwid"_s).join(u' '); }
    QString cards() { return m->value(u"select readerclass,readunit from dzk"_s); }

    std::unique_ptr<TestLibrary> m;
    const ReaderList& m_types = readerList(ReaderTypes);
    const ReaderList& m_units = readerList(ReaderUnits);
};

void TestReaderLists::init()
{
    m = std::make_unique<TestLibrary>();
    m->reader(u"R1"_s, {{u"readerclass"_s, u"学'生"_s}, {u"readunit"_s, u"一'班"_s}});
    for (const QString& type : {u"学'生"_s, u"教师"_s})
        m->insert(u"dzlx"_s, {{u"readerclass"_s, type}});
    m->insert(u"jycs"_s, {{u"readerclass"_s, u"学'生"_s}});
    m->insert(u"dzdw"_s, {{u"readunit"_s, u"一'班"_s}});
}

void TestReaderLists::cleanup()
{
    QCOMPARE(m->prompt.takeComplaints(), QString());
    QVERIFY(!m->session.error.isSet());
    QCOMPARE(cards(), u"学'生|一'班"_s);
}

void TestReaderLists::addingAType()
{
    for (const NameButton button : {NameButton::SaveAndAdd, NameButton::SaveAndLeave}) {
        m->prompt.expect(u"该读者类型已经存在！不能重复添加！"_s)
            .titled(OperationTitle)
            .icon(Icon::Information);
        QCOMPARE(m_types.add(m->session, u"学'生"_s, button), NameOutcome::Stay);
    }
    m->prompt.expect(Entered.arg(u"外'来"_s)).titled(HintTitle).icon(Icon::Information);
    QCOMPARE(m_types.add(m->session, u"外'来"_s, NameButton::SaveAndAdd), NameOutcome::Entered);
    QCOMPARE(types(), u"学'生 教师 外'来"_s);
    QCOMPARE(m->value(u"select daycount,fine from jycs where readerclass='外''来'"_s).left(3), u"0|0"_s);
}

void TestReaderLists::renamingAType()
{
    const ReaderListEntry student = entry(m_types, u"学'生"_s);
    m->failAt({});
    m_types.change(m->session, student, u"学'生"_s);
    QCOMPARE(m->sent.filter(u"update"_s).size(), 0);
    m_types.change(m->session, student, u"研'究生"_s);
    QCOMPARE(types(), u"研'究生 教师"_s);
    QCOMPARE(rules(), u"研'究生"_s);
}

void TestReaderLists::removingAType_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("answers"); // first and second question
    QTest::addColumn<QString>("typesLeft");
    QTest::addColumn<QString>("rulesLeft");
    QTest::newRow("not at all") << u"学'生"_s << u"N"_s << u"学'生 教师"_s << u"学'生"_s;
    QTest::newRow("not its rules") << u"学'生"_s << u"YN"_s << u"学'生 教师"_s << u"学'生"_s;
    QTest::newRow("both") << u"学'生"_s << u"YY"_s << u"教师"_s << QString();
    QTest::newRow("no rules") << u"教师"_s << u"Y"_s << u"学'生"_s << u"学'生"_s;
}

void TestReaderLists::removingAType()
{
    QFETCH(QString, type);
    QFETCH(QString, answers);
    m->prompt.expect(Dependent)
        .titled(OperationTitle)
        .icon(Icon::Question)
        .answer(answers[0] == u'Y' ? Answer::Yes : Answer::No);
    if (answers.size() > 1)
        m->prompt.expect(WithRules)
            .icon(Icon::Question)
            .answer(answers[1] == u'Y' ? Answer::Yes : Answer::No);
    m_types.remove(m->session, entry(m_types, type));
    QTEST(types(), "typesLeft");
    QTEST(rules(), "rulesLeft");
}

void TestReaderLists::units()
{
    m->prompt.expect(u"输入的读者单位已经存在,请重新输入!"_s).titled(OperationTitle).icon(Icon::Information);
    QCOMPARE(m_units.add(m->session, u"一'班"_s, NameButton::SaveAndAdd), NameOutcome::Retype);
    QCOMPARE(m_units.add(m->session, u"二班"_s, NameButton::SaveAndAdd), NameOutcome::Entered);
    QCOMPARE(m_units.add(m->session, u"一'班"_s, NameButton::SaveAndLeave), NameOutcome::Entered);
    QCOMPARE(unitNames(), u"一'班 二班 一'班"_s);
    m_units.change(m->session, entry(m_units, u"二班"_s), u"三'班"_s);
    m_units.remove(m->session, entry(m_units, u"一'班"_s));
    QCOMPARE(unitNames(), u"三'班 一'班"_s);
}

void TestReaderLists::failures_data()
{
    QTest::addColumn<QString>("part");
    QTest::addColumn<QString>("typesLeft");
    QTest::addColumn<QString>("rulesLeft");
    QTest::newRow("new type") << u"insert into dzlx"_s << u"新名 教师"_s << u"新名 外来"_s;
    QTest::newRow("its rules") << u"insert into Jycs"_s << u"新名 教师 外来"_s << u"新名"_s;
    QTest::newRow("rules renamed") << u"update jycs"_s << u"学'生 教师 外来"_s << u"学'生 外来"_s;
    QTest::newRow("type renamed") << u"update dzlx"_s << u"学'生 教师 外来"_s << u"新名 外来"_s;
}

void TestReaderLists::failures()
{
    QFETCH(QString, part);
    const ReaderListEntry student = entry(m_types, u"学'生"_s);
    m->failAt(part);
    m->prompt.expect(Entered.arg(u"外来"_s));
    m_types.add(m->session, u"外来"_s, NameButton::SaveAndLeave);
    m_types.change(m->session, student, u"新名"_s);
    m->failAt({});
    QTEST(types(), "typesLeft");
    QTEST(rules(), "rulesLeft");
}

QTEST_GUILESS_MAIN(TestReaderLists)
#include "test_reader_lists.moc"
