#include "app/pictures/pictures.h"
#include "statistics/query_form.h"

namespace quilla::Pictures {

namespace {

class Nobody final : public QueryReceiver {
    void loadData(const QString&, const QString&) override { }
};

} // namespace

/// Half filled in, as an operator leaves it in the middle of the work.
void query(Album& album, const Workplace& place)
{
    Nobody nobody;
    QueryFrm form(place.session.prompt, nobody);
    form.LoadCombo(u"barcode,bookname,readunit,readercode,name,orderdate,yhdate,cqday"_s,
        u"条形码,书名,读者单位,读者证号,读者姓名,借书日期,应还日期,超期天数"_s,
        u"字符,字符,字符,字符,字符,日期,日期,数字"_s);
    form.lSql.setText(u"B1"_s);
    form.Command3.click();
    form.Command1[0].click();
    form.cOrderby.setCurrentIndex(3);
    form.Label3[0].click();
    form.LFields.setCurrentRow(6);
    form.cFuhao.setCurrentIndex(3);
    form.lSql.setText(u"2004-05"_s);
    form.Command3.click();
    form.lSql.setText(u"2004"_s);
    album.add(form.objectName(), form);
}

} // namespace quilla::Pictures
