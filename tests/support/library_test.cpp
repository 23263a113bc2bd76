#include "support/library_test.h"

#include <QTest>

namespace quilla {

void LibraryTest::openLibrary()
{
    m = std::make_unique<TestLibrary>();
}

void LibraryTest::init()
{
    openLibrary();
    fill();
}

void LibraryTest::cleanup()
{
    finish();
    QCOMPARE(m->prompt.takeComplaints(), QString());
}

} // namespace quilla
