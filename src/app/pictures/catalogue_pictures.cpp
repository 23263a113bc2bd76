#include "app/pictures/pictures.h"
#include "catalogue/classification_form.h"
#include "catalogue/find_book_form.h"
#include "catalogue/good_book_form.h"

namespace quilla::Pictures {

void classification(Album& album, const Workplace& place)
{
    fenleihelp form(place.session);
    form.Grid1.setRow(3);
    album.add(form.objectName(), form);
}

/// Before a search, and after one.
void findBook(Album& album, const Workplace& place)
{
    frmFindBook form(place.session);
    album.add(form.objectName() + u"-0"_s, form);
    form.Text1.setText(u"中国古代"_s);
    form.cmdQuery.click();
    album.add(form.objectName() + u"-1"_s, form);
}

void goodBook(Album& album, const Workplace& place)
{
    frmGoodBook form(place);
    form.Text1.setText(u"中国古代"_s);
    form.cmdQuery.click();
    form.cmdAdd[0].click();
    album.add(form.objectName(), form);
}

} // namespace quilla::Pictures
