#pragma once

#include "frame/session.h"
#include "platform/ui/form/text_box.h"

#include <QPushButton>

namespace quilla {

/// Code and name of a reader in two boxes, and the button that picks the reader by name. A form has it as a
/// member, lays out its controls, and says by `onReader` what it does with the reader.
class ReaderPair {
public:
    explicit ReaderPair(Session& session);

    /// What Enter does in either box, once the name has been looked up: also for an unknown code, whose name
    /// stays empty, but not after a look-up that failed. Without a code the focus goes to its box.
    void onReader(std::function<void()> step) { m_step = std::move(step); }
    /// The code without the blanks around it. Nothing but blanks counts as no code.
    QString code() const;

    TextBox Text2[2]; ///< code, name
    QPushButton cmdDuZhe;

private:
    void lookUp();
    void pick();

    Session& m_session;
    std::function<void()> m_step;
};

} // namespace quilla
