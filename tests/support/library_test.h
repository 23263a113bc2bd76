#pragma once

#include "frame/refusal.h"
#include "support/cases.h"
#include "support/test_library.h"

namespace quilla {

/// A test whose functions each begin with a new library, and end with no box left over or unexpected.
class LibraryTest : public QObject {
    Q_OBJECT

protected:
    /// What is in the library when a function begins.
    virtual void fill() { }
    /// Drops what still holds the library, and looks at what must be true after every function.
    virtual void finish() { }
    virtual void openLibrary();
    /// Shows the refusal as an editor does. Returns the box that it names, -1 without a refusal.
    int toldBox(const std::optional<Refusal>& refusal);

    std::unique_ptr<TestLibrary> m;

protected Q_SLOTS:
    void init();
    virtual void cleanup();
};

} // namespace quilla
