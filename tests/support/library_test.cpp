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

int LibraryTest::toldBox(const std::optional<Refusal>& refusal)
{
    int box = Refusal::NoBox;
    if (refusal) tell(m->prompt, *refusal, [&](int named) { box = named; });
    return box;
}

} // namespace quilla
