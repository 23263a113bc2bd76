#include "app/screens.h"

#include "desk/desk_form.h"
#include "desk/reader_picker_form.h"
#include "exceptions/desk_fine_dialog.h"
#include "exceptions/fine_form.h"
#include "frame/about_form.h"
#include "frame/password_form.h"

namespace quilla {

namespace {

/// The desk with the fine screen behind its discharge.
QWidget* makeDesk(Session& session, ScreenHost& host, const QString&, QWidget*)
{
    auto* fines = new DeskFineDialog(session);
    auto* desk = new TsjhFrm(session, host, *fines);
    fines->setParent(desk);
    return desk;
}

ScreenMaker readerPicker(ReaderPicker (*picker)())
{
    return [picker](Session& session, ScreenHost&, const QString&, QWidget* owner) {
        return new ReaderPickerFrm(session, picker(), owner);
    };
}

} // namespace

ScreenCatalog allScreens()
{
    return {
        {u"TsjhFrm"_s, makeDesk},
        {u"frmWuZhengJieShu"_s, readerPicker(noCardPicker)},
        {u"frmReaderSelect"_s, readerPicker(everyReaderPicker)},
        {u"FKmangerFrm"_s,
            [](Session& session, ScreenHost&, const QString& mode, QWidget* owner) {
                return new FKmangerFrm(session, mode, owner);
            }},
        {u"EditPassFrm"_s,
            [](Session& session, ScreenHost&, const QString&, QWidget*) { return new EditPassFrm(session); }},
        {u"AboutFrm"_s, [](Session&, ScreenHost&, const QString&, QWidget*) { return new AboutFrm; }},
    };
}

} // namespace quilla
