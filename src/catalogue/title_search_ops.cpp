#include "catalogue/title_search_ops.h"

#include "frame/sublib.h"

namespace quilla {

namespace {

const QString TitleSelect
    = u"select zskid,classcode + '/'+ convert(varchar,zch) as shh, bookname,isbn,author,edition,pubplace,publisher,pages,books,docclass,lagclass  from zsk "_s;

/// The captions of the tip are the names of its fields.
const QString DetailSelect
    = u"Select bookname as [正 题 名],author as [责 任 者],publisher as [出 版 者],ztc as [主 题 词],classcode as [分 类 号],catatime as [入库日期],docclass as [文献类型],pubdate as [出版日期],books as [丛 书 名],booksauthor as [丛书作者],edition as [版    本],pubplace as [出 版 地],pages as [页    数],authorcode as [作 者 号],lagclass as [语    种],isbn as [    ISBN] From  ZSK  Where zskid=%1"_s;

QString detailText(const Recordset& title)
{
    const int last = title.fieldCount() - 1;
    QString text;
    for (int field = 0; field <= last; ++field) {
        if (field > 0 && title.field(field).isNull()) continue;
        text += title.fieldName(field) + u':' + title.field(field).text();
        if (field < last) text += u'\n';
    }
    return text;
}

} // namespace

ListSearch titlesLike(const QString& text)
{
    return {TitleSelect,
        u"(bookname like '%%1%') or (classcode +'/'+ convert(varchar,zch) like '%1%')"_s.arg(SqlText(text))};
}

ListSearch titlesBy(const QString& condition, const QString& order)
{
    return {TitleSelect, condition, order};
}

std::optional<Recordset> selectOrTell(Session& session, Opened opened, const QString& statement)
{
    return handled(
        session, opened, [&](StrictWork& work) { return work.open(statement); },
        [&](const Error& error) { session.prompt.inform(error.text, OperationTitle); });
}

std::optional<Recordset> findTitles(Session& session, const ListSearch& search)
{
    return selectOrTell(session, Opened::Asking, search.statement());
}

std::optional<Recordset> usableCopies(Session& session, Opened opened, const QString& zskid)
{
    QString statement
        = u"select zskid,barcode,bookplace,bookstatus from sck  where bookstatus<>'丢失' and  bookstatus<>'注销'"_s;
    if (!zskid.isEmpty()) statement += u" and zskid="_s + zskid;
    return selectOrTell(session, opened, statement);
}

std::optional<QString> ShowTitleDetail(Session& session, const QString& zskid)
{
    const auto title = selectOrTell(session, Opened::Directly, DetailSelect.arg(zskid));
    if (!title || title->eof()) return {};
    return detailText(*title);
}

} // namespace quilla
