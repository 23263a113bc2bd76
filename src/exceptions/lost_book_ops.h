#pragma once

#include "exceptions/loan_lookup_ops.h"
#include "frame/refusal.h"
#include "frame/search.h"

#include <QStringList>

namespace quilla {

/// The boxes of the editor of the register of losses, the first four as `LoanBox` has them.
namespace LostBox {
enum { ReaderCode, ReaderName, Barcode, Title, Amount, Date, Count };
}

/// The columns of the register's list.
namespace LostColumn {
enum { Barcode, Title, Unit, ReaderCode, ReaderName, Amount, Date };
}

/// What the list of the register shows before it is narrowed.
ListSearch lostBookList();

/// A date from a box as lists show it.
QString shownDate(const QString& text);

/// Asks whether the selected entries are to go.
bool confirmLostDeletion(Session& session);
/// Deletes the entries of these copies, those of other readers too. `gone` follows each of them, whatever
/// became of it.
void deleteLostEntries(Session& session, const QStringList& barcodes, const std::function<void()>& gone);

/// The copies that are out with a reader: barcode and title. nullopt when no connection can be had.
std::optional<Recordset> copiesOutWith(Session& session, const QString& readercode);

/// An entry of the register in the making: finds who has which book, and stores what was reported. Look-ups
/// go on after a failing statement, which counts as one without rows.
class LostEntry {
public:
    LostEntry(Session& session, BoxView& view);

    QString EntryMode; ///< "A" adds, "E" changes the date
    bool LookupDone = false; ///< the boxes have been looked up since they last changed

    /// The focus has left a box: a date is tested, a code, name or title looked up. False when a fault was
    /// reported.
    bool Text1_LostFocus(int index);
    /// Whether the boxes make an entry. Reports what is missing.
    bool ValidateLostEntry();
    /// Stores the entry and returns its line for the list; nullopt after a failure, which is reported. The
    /// unit is looked up here, and stays empty when that fails.
    std::optional<QStringList> SaveNewLostEntry();
    /// False after a failure, which is reported. An update that changes no row does not count as one.
    bool SaveLostEntryDate();

    /// A box other than the date holds another text now.
    void boxChanged() { LookupDone = false; }

private:
    QString box(int index) const { return m_view.box(index); }
    bool refuse(const QString& text, int box);
    void empty(int from, int to);
    bool checkDate(const QString& text);
    std::optional<Refusal> lookUp(ResumingWork& work, int index, const QString& text);
    bool isRegistered();
    void tellFailure();

    Session& m_session;
    BoxView& m_view;
};

} // namespace quilla
