#include "catalogue/recommended_ops.h"
#include "catalogue/title_search_ops.h"
#include "reservations/reservation_ops.h"
#include "support/field_texts.h"
#include "support/grid_text.h"
#include "support/library_test.h"
#include "support/report_double.h"

using namespace quilla;

namespace {

QString namesOf(std::optional<Recordset> titles)
{
    QStringList names = titles ? fieldTexts(*titles, u"bookname") : QStringList();
    names.sort();
    return names.join(u'|');
}

/// A grid of found titles with these ids.
void find(GridModel& grid, int first, int last)
{
    const GridModel::Filling filling(grid);
    grid.setFormatString(u"控制ID|索书号|正题名|ISBN|作者"_s);
    grid.setRows(1);
    for (int id = first; id <= last; ++id)
        grid.addRow({QString::number(id), u"A/1"_s, u"书"_s + QString::number(id), u"7-1"_s, u"某"_s});
}

} // namespace

/// Titles and copies found, and the list of recommended books.
class TestTitleSearch : public LibraryTest {
    Q_OBJECT

private Q_SLOTS:
    /// With the distinguishing mark in the call number only where a title is reserved.
    void search_data()
    {
        cases<QString, QString, QString>({
            {"inside the name, any case", {u" aTa "_s, u"Data 1_0%"_s, u"Data 1_0%"_s}},
            {"start of the call number", {u"tp3"_s, u"Data 1_0%"_s, u"Data 1_0%"_s}},
            {"call number as listed", {u"TP311/12"_s, u"Data 1_0%"_s, u"Data 1_0%"_s}},
            {"with its mark", {u"TP311/12b"_s, u""_s, u"Data 1_0%"_s}},
            {"inside the call number", {u"311"_s, u""_s, u""_s}},
            {"quote", {u"O'B"_s, u"O'Brien"_s, u"O'Brien"_s}},
            {"injection", {u"x') or ('1'='1"_s, u""_s, u""_s}},
            {"wild cards", {u"1_0%"_s, u"Data 1_0%"_s, u"Data 1_0%"_s}},
            {"no number, no call number", {u"K"_s, u""_s, u""_s}},
            {"blanks alone", {u"  "_s, u"Data 1_0%|O'Brien|无号"_s, u"Data 1_0%|O'Brien|无号"_s}},
            {"argument marks", {u"%1"_s, u"Data 1_0%"_s, u"Data 1_0%"_s}},
        });
    }
    void search()
    {
        const auto [text, plain, marked] = given<QString, QString, QString>();
        title(u"Data 1_0%"_s, u"TP311"_s, u"12"_s, u"b"_s);
        title(u"O'Brien"_s, u"I5"_s, u"3"_s, {});
        title(u"无号"_s, u"K2"_s, u"null"_s, {});
        QCOMPARE(namesOf(findTitles(m->session, titlesLike(text))), plain);
        QCOMPARE(namesOf(SearchTitles(m->session, text)), marked);
    }

    void searchByConditionAndItsFailure()
    {
        for (const QString& number : {u"1"_s, u"2"_s, u"3"_s})
            title(u"书"_s + number, u"I"_s, number, {});
        auto titles = findTitles(m->session, titlesBy(u"zch>1"_s, u"zch Desc"_s));
        QCOMPARE(titles->field(u"shh").text(), u"I/3"_s);
        QCOMPARE(titles->recordCount(), 2);
        QCOMPARE(findTitles(m->session, titlesBy({}, {}))->recordCount(), 3);
        m->failAt(u"from zsk"_s);
        m->prompt.expect(u"语句失败：from zsk"_s).titled(OperationTitle).icon(Icon::Information);
        QVERIFY(!findTitles(m->session, titlesBy({}, {})));
    }

    void copiesAndDetail()
    {
        for (const QString& state : {u"库本"_s, u"借出"_s, u"丢失"_s, u"注销"_s, u"典藏"_s, u"null"_s})
            m->copy(u"B"_s + state, {{u"bookstatus"_s, state}, {u"zskid"_s, u"1"_s}});
        QCOMPARE(usableCopies(m->session, Opened::Directly, u"1"_s)->recordCount(), 3);
        QCOMPARE(usableCopies(m->session, Opened::Directly, u"2"_s)->recordCount(), 0);
        m->send(u"update zsk set bookname=null,catatime='2003-01-02',isbn='7-1' where zskid=1"_s);
        QCOMPARE(ShowTitleDetail(m->session, u"1"_s).value(),
            u"正 题 名:\n责 任 者:著者1\n分 类 号:I247\n入库日期:2003-01-02\n    ISBN:7-1"_s);
        QVERIFY(!ShowTitleDetail(m->session, u"99"_s));
    }

    void addingIsAllOrNothing()
    {
        GridModel found;
        GridModel list;
        list.setFormatString(u"控制ID|索书号|正题名|ISBN"_s);
        list.setRows(2);
        find(found, 1, 5);
        QCOMPARE(addRecommended(m->prompt, found, {2, 3}, list), 2);
        QCOMPARE(addRecommended(m->prompt, found, {5, 5}, list), 1);
        m->prompt.expect(u"选择的图书中的某些图书已经加入到好书列表！\n请重新选择图书！"_s)
            .titled(OperationTitle)
            .icon(Icon::Information);
        QCOMPARE(addRecommended(m->prompt, found, {1, 2}, list), 0);
        QCOMPARE(columnOf(list, 0), u"2 3 5"_s);
        QCOMPARE(list.TextMatrix(1, 3), u"7-1"_s);

        const auto remove = [&](int row, Answer answer) {
            m->prompt.expect(u"确实要清除当前选定的图书吗？"_s).titled(OperationTitle).answer(answer);
            return removeRecommended(m->prompt, list, row);
        };
        QVERIFY(!remove(2, Answer::No));
        for (int row : {2, 2, 1})
            QVERIFY(remove(row, Answer::Yes));
        QCOMPARE(list.Rows(), 2);
        QVERIFY(!removeRecommended(m->prompt, list, 1));
    }

    void printing_data() { cases<int>({{"two", {2}}, {"more than an engine nests", {3000}}}); }
    void printing()
    {
        const auto [count] = given<int>();
        const QString question = u"确实要确实要打印添加的好书列表吗？"_s;
        const QString paper = u"请将打印机设置为【A4--横向(宽行)打印】\n设置正确后点击确定按钮！"_s;
        GridModel list;
        list.setFormatString(u"控制ID|索书号|正题名|ISBN"_s);
        list.setRows(2);
        ReportDouble report({u"ssh"_s, u"isbn"_s});
        m->prompt.expect(u"请先添加好书列表！"_s).titled(OperationTitle).icon(Icon::Information);
        printRecommended(m->session, report, list);
        find(list, 1, count);
        m->prompt.expect(question).titled(OperationTitle).answer(Answer::No);
        printRecommended(m->session, report, list);
        m->prompt.expect(question).answer(Answer::Yes);
        m->prompt.expect(paper).titled(OperationTitle);
        m->prompt.expect(u"没有符合条件的图书！"_s);
        printRecommended(m->session, report, list);
        QCOMPARE(report.shown, QStringList());

        title(u"甲"_s, u"TP311"_s, u"12"_s, u"b"_s);
        title(u"乙"_s, u"K2"_s, u"null"_s, {});
        m->prompt.expect(question).answer(Answer::Yes);
        m->prompt.expect(paper);
        printRecommended(m->session, report, list);
        QCOMPARE(report.shown.join(u'|'), u"printGoodBook|TP311/12b|7-1||7-1"_s);
        m->failAt(u"fzqfh as ssh"_s);
        m->prompt.expect(question).answer(Answer::Yes);
        m->prompt.expect(paper);
        m->prompt.expect(u"出现异常错误！错误原因如下：\n语句失败：fzqfh as ssh"_s).titled(OperationTitle);
        printRecommended(m->session, report, list);
    }

private:
    void title(const QString& name, const QString& classcode, const QString& zch, const QString& mark)
    {
        m->insert(u"zsk"_s,
            {{u"bookname"_s, name}, {u"classcode"_s, classcode}, {u"zch"_s, zch}, {u"fzqfh"_s, mark},
                {u"isbn"_s, u"7-1"_s}});
    }
};

QTEST_GUILESS_MAIN(TestTitleSearch)
#include "test_title_search.moc"
