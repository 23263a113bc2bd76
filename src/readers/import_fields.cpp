#include "readers/import_fields.h"

#include "platform/core/error.h"

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(5, u"ImportReaders"_s, text);
}

/// A heading without blanks and without the unit in brackets after it: "可借天数(天)" is "可借天数".
QString plainHeading(const QString& heading)
{
    QString plain = heading;
    plain.remove(u' ').remove(u'\u3000');
    const auto bracket
        = std::find_if(plain.begin(), plain.end(), [](QChar c) { return c == u'(' || c == u'（'; });
    plain.truncate(bracket - plain.begin());
    return plain.trimmed();
}

std::optional<int> fieldOf(const QString& heading)
{
    const QString plain = plainHeading(heading);
    if (plain == ReasonCaption) return NoField;
    for (int field = 0; field < ImportField::Count; ++field) {
        const ImportFieldInfo& info = importField(field);
        if (plain.compare(info.column, Qt::CaseInsensitive) == 0
            || info.captions.contains(plain, Qt::CaseInsensitive))
            return field;
    }
    return {};
}

QString knownHeadings()
{
    QStringList known;
    for (int field = 0; field < ImportField::Count; ++field)
        known.append(importField(field).captions.first());
    return known.join(u"、"_s);
}

void needAll(const std::vector<int>& fields, bool codeIsEnough)
{
    std::vector<int> all {ImportField::Code, ImportField::Name, ImportField::Type};
    if (codeIsEnough) all.resize(1);
    for (const int needed : all)
        if (std::count(fields.begin(), fields.end(), needed) == 0)
            throw fault(u"缺少列标题“%1”。\n可用的列标题：%2。"_s.arg(
                importField(needed).captions.first(), knownHeadings()));
}

} // namespace

const ImportFieldInfo& importField(int field)
{
    static const std::array<ImportFieldInfo, ImportField::Count> fields {{
        {u"readercode"_s, {u"读者证号"_s, u"读者号"_s, u"借书证号"_s}},
        {u"name"_s, {u"姓名"_s, u"读者姓名"_s}},
        {u"sex"_s, {u"性别"_s}},
        {u"readerclass"_s, {u"读者类型"_s}},
        {u"readunit"_s, {u"读者单位"_s, u"单位名称"_s, u"单位"_s}},
        {u"paperdate"_s, {u"办证日期"_s}},
        {u"term"_s, {u"有效期限"_s}},
        {u"readstatus"_s, {u"有效状态"_s}},
        {u"photo"_s, {u"照片"_s}},
        {u"memo"_s, {u"备注"_s}},
        {u"bookcount"_s, {u"可借册数"_s}},
        {u"daycount"_s, {u"可借天数"_s}},
        {u"fine"_s, {u"超期罚款"_s}},
        {u"defile"_s, {u"污损罚款"_s}},
        {u"lost"_s, {u"丢失罚款"_s}},
        {u"recount"_s, {u"可续借次数"_s, u"续借次数"_s}},
        {u"reday"_s, {u"可续借天数"_s, u"续借天数"_s}},
        {u"ifcanre"_s, {u"有过期书刊时还可以借书"_s, u"过期可借"_s}},
        {u"orderday"_s, {u"可预借天数"_s, u"预借天数"_s}},
        {u"ordercount"_s, {u"可预借册数"_s, u"预借册数"_s}},
        {u"Acount"_s, {u"文艺类可借册数"_s}},
        {u"Bcount"_s, {u"理科类可借册数"_s}},
        {u"wuzheng"_s, {u"可以无证借书"_s, u"无证借书"_s}},
        {u"zhenghaolx"_s, {u"证件类型"_s}},
        {u"zhenghao"_s, {u"证件号码"_s}},
        {u"dizhi"_s, {u"家庭住址"_s}},
        {u"birthday"_s, {u"出生日期"_s, u"出生年月"_s}},
        {u"email"_s, {u"Email"_s, u"电子邮件"_s}},
    }};
    return fields[std::size_t(field)];
}

const sql::Column& importColumn(const sql::Schema& schema, int field)
{
    return *schema.table(field < FirstDetail ? u"dzk" : u"dzkx")->column(importField(field).column);
}

QString shortened(const QString& text)
{
    constexpr qsizetype longest = 100;
    return text.size() <= longest ? text : text.first(longest) + u'…';
}

std::vector<int> fieldsOfHeadings(const QStringList& headings, bool codeIsEnough)
{
    std::vector<int> fields;
    for (const QString& heading : headings) {
        const int field = fieldOf(heading).value_or(NoField);
        if (field != NoField && std::count(fields.begin(), fields.end(), field) > 0)
            throw fault(u"列标题“%1”与另一列是同一项内容，请只留一列。"_s.arg(heading));
        fields.push_back(field);
    }
    needAll(fields, codeIsEnough);
    return fields;
}

QStringList unknownHeadings(const QStringList& headings)
{
    QStringList unknown;
    for (const QString& heading : headings)
        if (!fieldOf(heading)) unknown.append(shortened(heading));
    return unknown;
}

} // namespace quilla
