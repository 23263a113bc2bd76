#include "setup/demo_ops.h"

#include "database/library_schema.h"
#include "database/new_library.h"
#include "platform/core/error.h"
#include "platform/core/text.h"
#include "platform/db/connection_text.h"
#include "platform/db/embedded.h"
#include "setup/library_file_ops.h"

#include <QFileInfo>

namespace quilla {

namespace {

bool isDemo(const QString& file)
{
    bool found = false;
    try {
        readEmbedded(file, librarySchema(), SystemClock(), [&](Connection& connection) {
            const QString select = u"select username from LibUse where username='%1'"_s;
            found = !connection.open(select.arg(DemoOperator)).eof();
        });
    } catch (const Error&) {
        return false; // whatever it is, it is nothing to try
    }
    return found;
}

} // namespace

Target demoTarget()
{
    const QString own = embeddedDatabaseFile();
    const QString beside = QFileInfo(own).path() + u"/demo.db"_s;
    for (const QString& file : {own, beside})
        if (QFileInfo::exists(file) && isDemo(file)) return fileTarget(file);
    return fileTarget(freeFile(beside));
}

void makeDemo(const Target& target)
{
    if (target.exists()) return;
    makeLibrary(target, u"admin"_s, [](Connection& connection) {
        DemoOptions options;
        options.today = QDate::currentDate();
        fillDemoLibrary(connection, options);
    });
}

} // namespace quilla
