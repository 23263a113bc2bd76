#include "app/gallery_ops.h"
#include "app/pictures/pictures.h"
#include "reservations/reservation_form.h"
#include "reservations/reservation_list_form.h"

namespace quilla::Pictures {

/// Before a search, and ready to reserve.
void reservation(Album& album, const Workplace& place)
{
    frmTushuYuYue form(place.session);
    album.add(form.objectName() + u"-0"_s, form);
    form.Text1.setText(u"中国古代"_s);
    form.cmdQuery.click();
    form.Reader.Text2[0].setText(readerForPictures(place.session));
    album.add(form.objectName() + u"-1"_s, form);
}

void reservationList(Album& album, const Workplace& place)
{
    frmTuShuYuyueList form(place.session);
    form.Reader.Text2[0].setText(reservingReaderForPictures(place.session));
    pressEnter(form.Reader.Text2[0]);
    album.add(form.objectName(), form);
}

} // namespace quilla::Pictures
