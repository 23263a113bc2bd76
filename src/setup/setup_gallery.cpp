#include "setup/setup_gallery.h"

#include "platform/ui/look/gallery.h"

#include <QDir>

namespace quilla {

namespace {

bool draw(SetupFrm& form, const QString& folder, const QString& name)
{
    bool drawn = true;
    for (const int scale : {1, 2})
        drawn = renderPng(form, u"%1/setup-%2@%3.png"_s.arg(folder, name).arg(scale * 100), scale) && drawn;
    return drawn;
}

} // namespace

/// The page after the first one differs for each way; the import has none that leads to it alone.
bool drawSetup(SetupFrm& form, const QString& folder)
{
    if (!QDir().mkpath(folder)) return false;
    bool drawn = draw(form, folder, u"welcome"_s);
    const QStringList names {u"confirm"_s, u"library"_s, u"open"_s, u"server"_s, u"backups"_s};
    for (int way = 0; way < names.size(); ++way) {
        form.showPage(form.Welcome);
        form.Welcome.Option1[way].setChecked(true);
        form.cmdNext.click();
        drawn = draw(form, folder, names[way]) && drawn;
    }
    form.showPage(form.Files);
    return draw(form, folder, u"files"_s) && drawn;
}

} // namespace quilla
