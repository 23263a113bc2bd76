#include "app/gallery_ops.h"
#include "app/pictures/pictures.h"
#include "desk/desk_form.h"
#include "desk/reader_picker_form.h"
#include "exceptions/desk_fine_dialog.h"
#include "exceptions/fine_form.h"

namespace quilla::Pictures {

namespace {

QString page(const QString& name, int index)
{
    return name + u'-' + QString::number(index);
}

} // namespace

void desk(Album& album, const Workplace& place)
{
    DeskFineDialog fines(place.session);
    TsjhFrm form(place, fines);
    form.setAttribute(Qt::WA_DontShowOnScreen);
    form.show(); // the session list gives its room away only where it is seen
    form.TxtReaderCode.setText(readerForPictures(place.session));
    pressEnter(form.TxtReaderCode);
    album.add(page(form.objectName(), 0), form);
    form.SSTab1.setCurrentIndex(1);
    album.add(page(form.objectName(), 1), form);
    form.SSTab1.setCurrentIndex(2);
    form.Query.Check2[0].click();
    form.Query.Text2[0].setText(u"王"_s);
    form.Query.CmdFind.click();
    album.add(page(form.objectName(), 2), form);
}

void noCardPicker(Album& album, const Workplace& place)
{
    ReaderPickerFrm form(place.session, quilla::noCardPicker());
    album.add(form.objectName(), form);
}

void readerPicker(Album& album, const Workplace& place)
{
    ReaderPickerFrm form(place.session, everyReaderPicker());
    form.Text1.setText(u"无此人"_s);
    form.Command1.click();
    album.add(form.objectName(), form);
}

void fines(Album& album, const Workplace& place)
{
    FKmangerFrm form(place.session, u"A"_s);
    form.Text1[FineBox::Barcode].setText(overdueCopyForPictures(place.session));
    form.Text1_LostFocus(FineBox::Barcode);
    form.Check1[int(FineKind::Defile)].setChecked(true);
    for (int index = 0; index < form.SSTab1.count(); ++index) {
        form.SSTab1.setCurrentIndex(index);
        album.add(page(form.objectName(), index), form);
    }
}

} // namespace quilla::Pictures
