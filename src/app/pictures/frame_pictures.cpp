#include "app/pictures/pictures.h"
#include "frame/about_form.h"
#include "frame/login_form.h"
#include "frame/manual_form.h"
#include "frame/odbc_form.h"
#include "frame/password_form.h"
#include "platform/ui/form/error_form.h"
#include "platform/ui/form/working_form.h"

namespace quilla::Pictures {

void connection(Album& album, const Workplace& place)
{
    frmODBC form(place.session);
    album.add(form.objectName(), form);
}

void login(Album& album, const Workplace& place)
{
    LtLoginFrm form(place.session);
    album.add(form.objectName(), form);
}

void password(Album& album, const Workplace& place)
{
    EditPassFrm form(place.session);
    album.add(form.objectName(), form);
}

void about(Album& album, const Workplace& place)
{
    AboutFrm form(place.session);
    album.add(form.objectName(), form);
}

void failure(Album& album, const Workplace&)
{
    errMessageFrm form;
    form.textErrMessage.setPlainText(failureText({}, u"数据库正被另一个程序占用。"_s));
    album.add(form.objectName(), form);
}

void manual(Album& album, const Workplace& place)
{
    ManualFrm form(place.session, place.formPrinter, nullptr);
    form.showSection(u"first-day"_s);
    album.add(form.objectName(), form);
}

void working(Album& album, const Workplace&)
{
    WorkingFrm form;
    album.add(form.objectName(), form);
}

} // namespace quilla::Pictures
