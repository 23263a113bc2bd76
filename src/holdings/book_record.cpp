#include "holdings/book_record.h"

#include "platform/core/text.h"

namespace quilla {

namespace {

template <typename Info> std::optional<int> findField(const QString& caption, int count, const Info& info)
{
    for (int field = 0; field < count; ++field)
        if (caption.compare(info(field).column, Qt::CaseInsensitive) == 0
            || info(field).captions.contains(caption, Qt::CaseInsensitive))
            return field;
    return {};
}

} // namespace

const BookFieldInfo& titleField(int field)
{
    static const std::array<BookFieldInfo, TitleField::Count> fields {{
        {u"bookname"_s, {u"正题名"_s, u"题名"_s, u"书名"_s}},
        {u"author"_s, {u"责任者"_s, u"作者"_s, u"著者"_s}},
        {u"isbn"_s, {u"ISBN"_s, u"ISBN号"_s}},
        {u"classcode"_s, {u"分类号"_s}},
        {u"zch"_s, {u"种次号"_s}},
        {u"fzqfh"_s, {u"辅助区分号"_s}},
        {u"publisher"_s, {u"出版者"_s, u"出版社"_s}},
        {u"pubplace"_s, {u"出版地"_s}},
        {u"pubdate"_s, {u"出版日期"_s, u"出版年"_s}},
        {u"edition"_s, {u"版本"_s, u"版次"_s}},
        {u"pages"_s, {u"页数"_s, u"页码"_s}},
        {u"measure"_s, {u"尺寸"_s, u"开本"_s}},
        {u"books"_s, {u"丛书名"_s, u"丛编"_s}},
        {u"booksauthor"_s, {u"丛书作者"_s}},
        {u"ztc"_s, {u"主题词"_s, u"主题"_s}},
        {u"lagclass"_s, {u"语种"_s}},
        {u"docclass"_s, {u"文献类型"_s}},
        {u"authorcode"_s, {u"作者号"_s}},
        {u"endnote"_s, {u"附注"_s}},
        {u"cataman"_s, {u"编目人"_s}},
        {u"catatime"_s, {u"入库日期"_s}},
    }};
    return fields[std::size_t(field)];
}

const BookFieldInfo& copyField(int field)
{
    static const std::array<BookFieldInfo, CopyField::Count> fields {{
        {u"barcode"_s, {u"条形码"_s, u"条码"_s, u"条码号"_s, u"登录号"_s}},
        {u"rollcode"_s, {u"卷次"_s, u"卷册"_s}},
        {u"bookplace"_s, {u"藏址"_s, u"馆藏地"_s, u"馆藏地点"_s}},
        {u"price"_s, {u"价格"_s, u"定价"_s, u"单价"_s}},
        {u"bookstatus"_s, {u"图书状态"_s, u"状态"_s}},
    }};
    return fields[std::size_t(field)];
}

std::optional<int> findTitleField(const QString& caption)
{
    return findField(caption, TitleField::Count, titleField);
}

std::optional<int> findCopyField(const QString& caption)
{
    return findField(caption, CopyField::Count, copyField);
}

QString BookRecord::place() const
{
    return (isLine ? u"第 %1 行"_s : u"第 %1 条"_s).arg(number);
}

} // namespace quilla
