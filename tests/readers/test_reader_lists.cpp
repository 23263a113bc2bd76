#include "readers/reader_list_ops.h"
#include "support/library_test.h"

using namespace quilla;

namespace {

const QString Entered = u"你已经增加了一个读者类型:%1,请到流通参数功能模块修改其流通参数"_s;

} // namespace

/// The lists of reader types and units, without their screen.
class TestReaderLists : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m->reader(u"R1"_s, {{u"readerclass"_s, u"学'生"_s}, {u"readunit"_s, u"一'班"_s}});
        for (const QString& type : {u"学'生"_s, u"教师"_s})
            m->insert(u"dzlx"_s, {{u"readerclass"_s, type}});
        m->insert(u"jycs"_s, {{u"readerclass"_s, u"学'生"_s}});
        m->insert(u"dzdw"_s, {{u"readunit"_s, u"一'班"_s}});
    }
    void finish() override
    {
        QVERIFY(!m->session.error.isSet());
        QCOMPARE(m->value(u"select readerclass,readunit from dzk"_s), u"学'生|一'班"_s);
    }

private Q_SLOTS:
    void addingAType()
    {
        for (const NameButton button : {NameButton::SaveAndAdd, NameButton::SaveAndLeave}) {
            m->prompt.expect(u"该读者类型已经存在！不能重复添加！"_s).titled(OperationTitle);
            QCOMPARE(add(m_types, u"学'生"_s, button), int(NameBox::Kept));
        }
        m->prompt.expect(Entered.arg(u"外'来"_s)).titled(HintTitle).icon(Icon::Information);
        QCOMPARE(add(m_types, u"外'来"_s, NameButton::SaveAndAdd), -1);
        QCOMPARE(typesAndRules(), u"学'生 教师 外'来|学'生 外'来"_s);
        QCOMPARE(m->value(u"select daycount,fine from jycs where readerclass='外''来'"_s).left(3), u"0|0"_s);
    }

    void renamingAType()
    {
        const ReaderListEntry student = entry(m_types, u"学'生"_s);
        m->failAt({});
        m_types.change(m->session, student, u"学'生"_s);
        QCOMPARE(m->sent.filter(u"update"_s).size(), 0);
        m_types.change(m->session, student, u"研'究生"_s);
        QCOMPARE(typesAndRules(), u"研'究生 教师|研'究生"_s);
    }

    void removingAType_data()
    {
        // the type, the answers to one or two questions, the types and rules left
        cases<QString, QString, QString>({
            {"not at all", {u"学'生"_s, u"N"_s, u"学'生 教师|学'生"_s}},
            {"not its rules", {u"学'生"_s, u"YN"_s, u"学'生 教师|学'生"_s}},
            {"both", {u"学'生"_s, u"YY"_s, u"教师|"_s}},
            {"no rules", {u"教师"_s, u"Y"_s, u"学'生|学'生"_s}},
        });
    }
    void removingAType()
    {
        const auto [type, answers, left] = given<QString, QString, QString>();
        const QString questions[] {u"删除读者类型，则此读者类型相关的借阅参数将同时被删除,继续删除？(Y/N)"_s,
            u"此读者类型已定义了流通参数,要删除这些流通参数吗？(Y/N"_s};
        for (qsizetype i = 0; i < answers.size(); ++i)
            m->prompt.expect(questions[i])
                .titled(OperationTitle)
                .icon(Icon::Question)
                .answer(answers[i] == u'Y' ? Answer::Yes : Answer::No, i == 1 ? Answer::No : Answer::Yes);
        m_types.remove(m->session, entry(m_types, type));
        QCOMPARE(typesAndRules(), left);
    }

    void units()
    {
        m->prompt.expect(u"输入的读者单位已经存在,请重新输入!"_s).titled(OperationTitle);
        QCOMPARE(add(m_units, u"一'班"_s, NameButton::SaveAndAdd), int(NameBox::Emptied));
        QCOMPARE(add(m_units, u"二班"_s, NameButton::SaveAndAdd), -1);
        QCOMPARE(add(m_units, u"一'班"_s, NameButton::SaveAndLeave), -1);
        QCOMPARE(unitNames(), u"一'班 二班 一'班"_s);
        m_units.change(m->session, entry(m_units, u"二班"_s), u"三'班"_s);
        m_units.remove(m->session, entry(m_units, u"一'班"_s));
        QCOMPARE(unitNames(), u"三'班 一'班"_s);
    }

    void failures_data()
    {
        cases<QString, QString>({
            {"new type", {u"insert into dzlx"_s, u"新名 教师|新名 外来"_s}},
            {"its rules", {u"insert into Jycs"_s, u"新名 教师 外来|新名"_s}},
            {"rules renamed", {u"update jycs"_s, u"学'生 教师 外来|学'生 外来"_s}},
            {"type renamed", {u"update dzlx"_s, u"学'生 教师 外来|新名 外来"_s}},
        });
    }
    void failures()
    {
        const auto [part, left] = given<QString, QString>();
        const ReaderListEntry student = entry(m_types, u"学'生"_s);
        m->failAt(part);
        m->prompt.expect(Entered.arg(u"外来"_s));
        m_types.add(m->session, u"外来"_s, NameButton::SaveAndLeave);
        m_types.change(m->session, student, u"新名"_s);
        m->failAt({});
        QCOMPARE(typesAndRules(), left);
    }

private:
    /// The box with the focus afterwards, -1 when the name was entered.
    int add(const ReaderList& list, const QString& name, NameButton button)
    {
        return toldBox(list.add(m->session, name, button));
    }
    ReaderListEntry entry(const ReaderList& list, const QString& name)
    {
        for (auto row = readList(m->session, list); row && !row->eof(); row->next())
            if (row->field(1).text() == name) return {row->field(0).text(), name};
        return {};
    }
    QString typesAndRules()
    {
        return m->rows(u"select readerclass from dzlx order by dzlxid"_s).join(u' ') + u'|'
            + m->rows(u"select readerclass from jycs order by jycsid"_s).join(u' ');
    }
    QString unitNames() { return m->rows(u"select readunit from dzdw order by dzdwid"_s).join(u' '); }

    const ReaderList& m_types = readerList(ReaderTypes);
    const ReaderList& m_units = readerList(ReaderUnits);
};

QTEST_GUILESS_MAIN(TestReaderLists)
#include "test_reader_lists.moc"
