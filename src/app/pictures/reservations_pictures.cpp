#include "app/gallery_ops.h"
#include "app/pictures/pictures.h"
#include "reservations/reservation_list_form.h"

namespace quilla::Pictures {

void reservationList(Album& album, const Workplace& place)
{
    frmTuShuYuyueList form(place.session);
    form.Reader.Text2[0].setText(reservingReaderForPictures(place.session));
    pressEnter(form.Reader.Text2[0]);
    album.add(form.objectName(), form);
}

} // namespace quilla::Pictures
