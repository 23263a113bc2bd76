#include "exceptions/loan_lookup_ops.h"

namespace quilla {

LookUp lookUpByCode()
{
    return {u"Select name From dzk Where readercode='%1'"_s, u"无效读者证号，取消该操作。"_s,
        {{u"name"_s, LoanBox::ReaderName}}};
}

LookUp lookUpByName()
{
    return {u"Select readercode From dzk Where name='%1'"_s, u"无效读者姓名，取消该操作。"_s,
        {{u"readercode"_s, LoanBox::ReaderCode}}};
}

std::optional<Recordset> lookUpBox(ResumingWork& work, BoxView& view, const LookUp& rule, const QString& text)
{
    Recordset row = work.select(rule.statement.arg(doubled(text)));
    if (row.eof()) return {};
    for (const auto& [field, box] : rule.found)
        view.setBox(box, row.field(field).text());
    return row;
}

bool isOutWithReader(ResumingWork& work, const BoxView& view)
{
    const QString barcode = view.box(LoanBox::Barcode);
    if (barcode.isEmpty()) return true;
    return !work.select(u"Select barcode From jhsk Where barcode='%1' And readercode='%2'"_s.arg(
                            doubled(barcode), doubled(view.box(LoanBox::ReaderCode))))
                .eof();
}

} // namespace quilla
