#pragma once

#include "platform/core/prompt.h"

#include <optional>

namespace quilla {

/// Why an operation does not go on: the message for the operator, and the box that gets the focus then. A
/// check shows nothing itself: it returns a refusal, or nullopt when it has no objection, and `tell` shows
/// it.
struct Refusal {
    static constexpr int NoBox = -1; ///< the focus stays

    QString text {}; ///< empty: no message is shown
    QString title = OperationTitle.toString(); ///< null for the application title
    Icon icon = Icon::Information;
    int box = NoBox; ///< an index that the screen knows
};

inline void tell(Prompt& prompt, const Refusal& refusal)
{
    if (!refusal.text.isEmpty()) prompt.show({refusal.text, refusal.title, refusal.icon});
}

/// Shows the refusal, then lets `focus` move to its box.
template <typename Focus> void tell(Prompt& prompt, const Refusal& refusal, Focus&& focus)
{
    tell(prompt, refusal);
    if (refusal.box != Refusal::NoBox) focus(refusal.box);
}

} // namespace quilla
