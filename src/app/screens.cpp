#include "app/screens.h"

#include "desk/desk_form.h"
#include "frame/about_form.h"
#include "frame/password_form.h"

namespace quilla {

ScreenCatalog allScreens(FineDialog& fines)
{
    return {
        {u"TsjhFrm"_s,
            [&fines](Session& session, ScreenHost& host, const QString&, QWidget*) {
                return new TsjhFrm(session, host, fines);
            }},
        {u"EditPassFrm"_s,
            [](Session& session, ScreenHost&, const QString&, QWidget*) { return new EditPassFrm(session); }},
        {u"AboutFrm"_s, [](Session&, ScreenHost&, const QString&, QWidget*) { return new AboutFrm; }},
    };
}

} // namespace quilla
