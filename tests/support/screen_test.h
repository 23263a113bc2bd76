#pragma once

#include "support/library_test.h"
#include "support/workplace_double.h"

namespace quilla {

/// The same with a workplace for screens; spreadsheets go to the folder of the library.
class ScreenTest : public LibraryTest {
protected:
    void openLibrary() override
    {
        LibraryTest::openLibrary();
        m_work = std::make_unique<WorkplaceDouble>(m->session);
        m_work->sheets.place = m->folder.path();
    }

    std::unique_ptr<WorkplaceDouble> m_work;
};

} // namespace quilla
