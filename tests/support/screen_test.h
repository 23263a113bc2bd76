#pragma once

#include "support/grid_text.h"
#include "support/library_test.h"
#include "support/window_steps.h"
#include "support/workplace_double.h"

namespace quilla {

/// The same with a workplace for screens, and with the screens and dialogs of a function; spreadsheets go to
/// the folder of the library.
class ScreenTest : public LibraryTest {
protected:
    void openLibrary() override
    {
        LibraryTest::openLibrary();
        m_work = std::make_unique<WorkplaceDouble>(m->session);
        m_work->sheets.place = m->folder.path();
    }

    /// A new screen. It goes when another of its class is made, or at the end of the function.
    template <typename Screen, typename... Needs> Screen& made(Needs&&... needs)
    {
        std::erase_if(m_screens, [](const auto& other) { return qobject_cast<Screen*>(other.get()); });
        auto screen = std::make_unique<Screen>(std::forward<Needs>(needs)...);
        Screen& there = *screen;
        m_screens.push_back(std::move(screen));
        return there;
    }

    /// The same, before the operator.
    template <typename Screen, typename... Needs> Screen& opened(Needs&&... needs)
    {
        Screen& screen = made<Screen>(std::forward<Needs>(needs)...);
        appear(screen);
        return screen;
    }

    /// Does the steps in the dialog that comes next and closes it. The function fails when it never comes.
    template <typename Dialog> void inDialog(std::function<void(Dialog&)> steps)
    {
        ++m_dialogs;
        whenShown<Dialog>([this, steps = std::move(steps)](Dialog& dialog) {
            steps(dialog);
            --m_dialogs;
            dialog.close();
        });
    }

    void cleanup() override
    {
        m_screens.clear();
        const int awaited = std::exchange(m_dialogs, 0);
        LibraryTest::cleanup();
        QCOMPARE(awaited, 0);
    }

    std::unique_ptr<WorkplaceDouble> m_work;
    std::vector<std::unique_ptr<QWidget>> m_screens;
    int m_dialogs = 0; ///< that have not come yet
};

} // namespace quilla
