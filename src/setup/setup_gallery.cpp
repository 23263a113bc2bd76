#include "setup/setup_gallery.h"

#include "platform/ui/look/gallery.h"

#include <QDir>

namespace quilla {

bool drawSetup(SetupFrm& form, const QString& folder)
{
    if (!QDir().mkpath(folder)) return false;
    bool drawn = true;
    const std::pair<SetupPage*, QString> pages[] {{&form.Welcome, u"welcome"_s},
        {&form.Library, u"library"_s}, {&form.Files, u"files"_s}, {&form.Open, u"open"_s},
        {&form.Server, u"server"_s}, {&form.Confirm, u"confirm"_s}};
    for (const auto& [page, name] : pages) {
        form.showPage(*page);
        for (const int scale : {1, 2}) {
            const QString file = u"%1/setup-%2@%3.png"_s.arg(folder, name).arg(scale * 100);
            drawn = renderPng(form, file, scale) && drawn;
        }
    }
    return drawn;
}

} // namespace quilla
