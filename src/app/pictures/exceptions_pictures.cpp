#include "app/gallery_ops.h"
#include "app/pictures/pictures.h"
#include "exceptions/ledger_editor.h"
#include "exceptions/ledger_form.h"
#include "exceptions/lost_editor.h"
#include "exceptions/lost_list_form.h"
#include "exceptions/notice_style_form.h"
#include "exceptions/overdue_filter_form.h"
#include "exceptions/overdue_form.h"
#include "exceptions/overdue_result_form.h"

namespace quilla::Pictures {

void overdueList(Album& album, const Workplace& place)
{
    ChaoQifrm list(place);
    album.add(list.objectName(), list);
}

void overdueFilter(Album& album, const Workplace& place)
{
    CqTjFrm form(place);
    form.Text1.setText(u"王"_s);
    for (QCheckBox& box : form.Check1)
        box.setChecked(true);
    form.Combo1.setCurrentIndex(0);
    album.add(form.objectName(), form);
}

void overdueResult(Album& album, const Workplace& place)
{
    CQListFrm list(place);
    album.add(list.objectName() + u"-0"_s, list);
    list.loadData({}, u"readunit"_s);
    album.add(list.objectName() + u"-1"_s, list);
}

void noticeStyle(Album& album, const Workplace&)
{
    QString groupField;
    ShowStyleFrm form(groupField);
    album.add(form.objectName(), form);
}

void lostBooks(Album& album, const Workplace& place)
{
    lostMangerfrm list(place);
    album.add(list.objectName(), list);
}

/// With a copy looked up, and with an entry whose date may be changed.
void lostEditor(Album& album, const Workplace& place)
{
    lostMangerAddfrm added(place.session, u"A"_s);
    added.Text1[LostBox::Barcode].setText(overdueCopyForPictures(place.session));
    LostEntry(place.session, added).Text1_LostFocus(LostBox::Barcode);
    album.add(added.objectName() + u"-A"_s, added);
    lostMangerfrm list(place);
    lostMangerAddfrm changed(place.session, u"E"_s);
    changed.LoadLostEntryFromGrid(list.Grid1);
    album.add(changed.objectName() + u"-E"_s, changed);
}

void ledger(Album& album, const Workplace& place)
{
    BookOutFrm list(place);
    list.Text1.setText(u"10"_s);
    album.add(list.objectName(), list);
}

void ledgerEditor(Album& album, const Workplace& place)
{
    BookOutFrm list(place);
    for (const QString& mode : {u"A"_s, u"E"_s}) {
        AddBookOutFrm form(place.session);
        form.SetDataMode(mode);
        form.InfoLoad(mode == u"E" ? list.Grid1.cells().RowData(1) : 0);
        album.add(form.objectName() + u'-' + mode, form);
    }
}

} // namespace quilla::Pictures
