#include "database/demo_library.h"

#include "database/demo/calendar.h"
#include "database/demo/circulation.h"
#include "database/demo/readers.h"
#include "database/demo/titles.h"
#include "database/demo/write.h"
#include "database/library_schema.h"

namespace quilla {

namespace {

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
    refuseFilledLibrary(connection);
    demo::writeLibrary(connection, inventLibrary(options));
}

} // namespace quilla
