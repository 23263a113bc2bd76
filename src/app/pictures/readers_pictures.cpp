#include "app/gallery_ops.h"
#include "app/pictures/pictures.h"
#include "platform/ui/look/icons.h"
#include "readers/batch_unit_form.h"
#include "readers/holiday_editor.h"
#include "readers/holiday_form.h"
#include "readers/parameter_editor.h"
#include "readers/parameter_form.h"
#include "readers/reader_card_form.h"
#include "readers/reader_list_form.h"
#include "readers/reader_name_editor.h"
#include "readers/reader_register_form.h"

#include <QTemporaryDir>

namespace quilla::Pictures {

void holidays(Album& album, const Workplace& place)
{
    holidayfrm list(place.session);
    album.add(list.objectName(), list);
    holidayaddFrm editor(place.session);
    album.add(editor.objectName() + u"-A"_s, editor);
    editor.edit(holidayOfLine(list.Grid1.current(0), list.Grid1.current(1)));
    album.add(editor.objectName() + u"-E"_s, editor);
}

void parameters(Album& album, const Workplace& place)
{
    JycsFrm list(place);
    album.add(list.objectName(), list);
    JycsAddFrm editor(place.session);
    album.add(editor.objectName() + u"-A"_s, editor);
    editor.edit(list.Grid1.current(0), true, false);
    album.add(editor.objectName() + u"-E"_s, editor);
}

void readerLists(Album& album, const Workplace& place)
{
    for (const ReaderListKind kind : {ReaderTypes, ReaderUnits}) {
        MadddzlxFrm list(place.session, kind);
        album.add(u"%1-%2"_s.arg(list.objectName(), QString::number(kind)), list);
        ReaderNameFrm editor(place.session, readerList(kind));
        album.add(editor.objectName(), editor);
    }
}

/// Each mode without and with the parameters.
void readerCard(Album& album, const Workplace& place)
{
    const QTemporaryDir photos;
    const QString photo = photos.filePath(u"photo.png"_s);
    applicationIcon().pixmap(200, 200).save(photo);
    for (const QString& mode : {u"A"_s, u"E"_s}) {
        DzaddFrm form(place.session, {});
        form.ManPic.setChooser([&](QWidget*, const QString&) { return photo; });
        form.SetEditMode(mode);
        form.LoadReader(mode == u"E" ? readerForPictures(place.session) : QString());
        if (mode == u"E") Q_EMIT form.ManPic.doubleClicked();
        album.add(form.objectName() + u'-' + mode, form);
        form.cmdXianShi.click();
        album.add(form.objectName() + u'-' + mode + u"-parameters"_s, form);
    }
}

/// Before the first search, and after one that was sorted by a caption.
void readerRegister(Album& album, const Workplace& place)
{
    DzglFrm list(place);
    album.add(list.objectName() + u"-0"_s, list);
    list.loadData({}, {});
    list.Grid1.setRow(1);
    list.Grid1.sortBy({ReaderOnLoan, Qt::DescendingOrder});
    album.add(list.objectName() + u"-1"_s, list);
    updateAll unit;
    unit.Text1.setText(u"计算机系"_s);
    album.add(unit.objectName(), unit);
}

} // namespace quilla::Pictures
