#pragma once

#include "exceptions/fine_lookup_ops.h"

namespace quilla {

/// The fine handling: finds the loan that cannot end as a plain discharge, works out what its reader owes,
/// and settles it. The look-ups and amounts go on after a failing statement; the settlement is all or
/// nothing.
class FineHandling {
public:
    /// `entryMode` is "E" when the desk opened the screen for a copy, else "A".
    FineHandling(Session& session, FineView& view, QString entryMode);

    const QString EntryMode;
    QString SavedFlag; ///< "yes" once a settlement was saved; a failed validation empties it
    FineLookup lookup;

    /// A save button: validates, then settles. Button 0 keeps the menu's screen open for the reader's next
    /// fine, button 1 closes it.
    void save(int index);
    /// One of the first four boxes holds another text now.
    void identityChanged() { lookup.LookupDone = false; }
    /// A kind was ticked or cleared, by the operator or by the program.
    void kindChanged(FineKind kind);

private:
    void focus(int box);
    void goToNextFine();

    Session& m_session;
    FineView& m_view;
};

} // namespace quilla
