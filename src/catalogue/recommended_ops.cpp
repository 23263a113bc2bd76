#include "catalogue/recommended_ops.h"

#include "catalogue/title_search_ops.h"

#include <QSet>

namespace quilla {

namespace {

constexpr int KeptColumns = TitleIsbn + 1;

QSet<QString> listedTitles(const GridModel& list)
{
    QSet<QString> titles;
    for (int row = 1; row < list.Rows(); ++row)
        titles.insert(list.TextMatrix(row, TitleId));
    return titles;
}

bool isAnyListed(const GridModel& found, const LineRange& lines, const GridModel& list)
{
    const QSet<QString> listed = listedTitles(list);
    for (int row = lines.first; row <= lines.last; ++row)
        if (listed.contains(found.TextMatrix(row, TitleId))) return true;
    return false;
}

void append(const GridModel& found, const LineRange& lines, GridModel& list)
{
    const GridModel::Filling filling(list);
    for (int row = lines.first; row <= lines.last; ++row) {
        QStringList cells;
        for (int col = 0; col < KeptColumns; ++col)
            cells.append(found.TextMatrix(row, col));
        list.addRow(cells);
    }
}

/// The statement as the server gets it, one comparison a title.
QString conditionOf(const GridModel& list)
{
    QString condition;
    for (int row = 1; row < list.Rows(); ++row)
        condition += (row == 1 ? u" zskid="_s : u" or zskid="_s) + list.TextMatrix(row, TitleId);
    return condition;
}

void showListed(Session& session, ReportViewer& reports, const GridModel& list)
{
    // Here the call number has its distinguishing mark, so that the book is found on the shelf.
    const QString statement
        = u"select classcode + '/' +convert(varchar,zch)+fzqfh as ssh,bookname,author,publisher,pubplace,pubdate,isbn from zsk where %1"_s
              .arg(conditionOf(list));
    auto rows = handled(
        session, Opened::Asking, [&](StrictWork& work) { return work.open(statement); },
        [&](const Error& error) {
            session.prompt.inform(u"出现异常错误！错误原因如下：\n"_s + error.text, OperationTitle);
        });
    if (!rows) return;
    if (rows->eof()) return session.prompt.inform(u"没有符合条件的图书！"_s, OperationTitle);
    reports.showReport(u"printGoodBook"_s, *rows);
}

} // namespace

int addRecommended(Prompt& prompt, const GridModel& found, const LineRange& lines, GridModel& list)
{
    if (isAnyListed(found, lines, list)) {
        prompt.inform(u"选择的图书中的某些图书已经加入到好书列表！\n请重新选择图书！"_s, OperationTitle);
        return 0;
    }
    try {
        append(found, lines, list);
    } catch (const std::exception& failure) {
        prompt.inform(u"出现错误！错误原因如下：\n"_s + QString::fromUtf8(failure.what()), OperationTitle);
        return 0;
    }
    return lines.last - lines.first + 1;
}

bool removeRecommended(Prompt& prompt, GridModel& list, int row)
{
    if (list.TextMatrix(row, TitleId).isEmpty()) return false;
    if (!prompt.ask(u"确实要清除当前选定的图书吗？"_s, OperationTitle)) return false;
    list.removeRow(row);
    return true;
}

bool confirmEmptying(Prompt& prompt)
{
    return prompt.ask(u"确实要清除好书列表吗？"_s, OperationTitle);
}

void printRecommended(Session& session, ReportViewer& reports, const GridModel& list)
{
    if (list.isEmptyList()) return session.prompt.inform(u"请先添加好书列表！"_s, OperationTitle);
    // Operators know the doubled word; it stays.
    if (!session.prompt.ask(u"确实要确实要打印添加的好书列表吗？"_s, OperationTitle)) return;
    session.prompt.inform(
        u"请将打印机设置为【A4--横向(宽行)打印】\n设置正确后点击确定按钮！"_s, OperationTitle);
    showListed(session, reports, list);
}

} // namespace quilla
