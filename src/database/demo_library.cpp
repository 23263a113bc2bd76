#include "database/demo_library.h"

#include "database/demo/calendar.h"
#include "database/demo/circulation.h"
#include "database/demo/readers.h"
#include "database/demo/titles.h"
#include "database/demo/write.h"
#include "platform/core/text.h"

namespace quilla {

namespace {

void refuseFilled(Connection& connection)
{
    for (const QStringView table : {u"zsk", u"sck", u"dzk", u"jycs"})
        if (!connection.open(u"select top 1 * from %1"_s.arg(table)).eof())
            throw Error(58, u"demo"_s, u"数据库中已有数据，不能再装入演示数据。"_s);
}

demo::Library inventLibrary(const DemoOptions& options)
{
    const demo::Words words = demo::readWords();
    demo::Random random(options.seed);
    demo::Library library;
    library.today = options.today;
    library.holidays = demo::makeHolidays(options.today);
    demo::makeCollection(library, words, random, options.titles, options.copies);
    demo::makeReaders(library, words, random, options.readers);
    demo::circulate(library, random);
    return library;
}

} // namespace

void fillDemoLibrary(Connection& connection, const DemoOptions& options)
{
    refuseFilled(connection);
    demo::writeLibrary(connection, inventLibrary(options));
}

} // namespace quilla
