#pragma once

#include "exceptions/fine_view.h"
#include "frame/session.h"

namespace quilla {

/// The fine handling: finds the loan that cannot end as a plain discharge, works out what its reader owes,
/// and settles it. The look-ups and amounts go on after a failing statement, which counts as one without
/// rows; the settlement is all or nothing.
class FineHandling {
public:
    /// `entryMode` is "E" when the desk opened the screen for a copy, else "A".
    FineHandling(Session& session, FineView& view, QString entryMode);

    const QString EntryMode;
    QString SavedFlag; ///< "yes" once a settlement was saved; a failed validation empties it
    bool LookupDone = false; ///< the first four boxes have been looked up since they last changed
    QString GridReader; ///< whose loans and fines the grids show

    /// The focus has left a box: an amount is put into its form, a code, name or title is looked up.
    void Text1_LostFocus(int index);
    /// The reader's open loans and fines into the grids, of one copy when a barcode is given.
    void ReloadReaderHistory(const QString& readercode, const QString& barcode);
    /// Ticks the overdue fine of a loan that was due before today, or before its copy was registered as
    /// lost; such a copy has its loss ticked too, with the amount of the register.
    void ComputeOverdueFine(const QString& readercode, const QString& barcode);
    void ComputeDefileFine(const QString& barcode);
    void ComputeLostFine(const QString& barcode);
    /// Whether the boxes make a settlement; tells what is missing.
    bool ValidateFine();
    /// Fines, end of the loan, state of the copy and its ledger row in one transaction. `index` is that of
    /// the button pressed: 0 keeps the screen open for the next fine, 1 closes it.
    void SaveFine(int index);

    /// A save button: validates, then saves.
    void save(int index);
    /// One of the first four boxes holds another text now.
    void identityChanged() { LookupDone = false; }
    /// A kind was ticked or cleared, by the operator or by a step of this class.
    void kindChanged(FineKind kind);

private:
    QString boxText(int index) const { return m_view.box(index); }
    void warn(const QString& text);
    void refuse(const QString& text, int box);
    void clearBoxes(int from);
    void clearKinds();
    void clearWorkings();

    void checkAmount(int index, const QString& text);
    void lookUp(int index, Connection& conn, const QString& text);
    void checkReader(Connection& conn);
    void checkBook();
    void resetScreen(int index);

    void showRegisteredLoss(const Recordset& loan, const Recordset& entry);
    void showOverdue(const Recordset& loan, const QString& days);
    void showMultiple(FineKind kind, const QString& barcode, const QString& factor);

    void sendSettlement(Connection& conn);
    void insertFine(Connection& conn, FineKind kind);
    void insertLedgerRow(Connection& conn);
    void offerToReservation(Connection& conn);
    void closeLoan(Connection& conn);
    void goOnAfterSaving(int index);

    Session& m_session;
    FineView& m_view;
};

inline constexpr FineKind FineKinds[] {FineKind::Overdue, FineKind::Defile, FineKind::Lost};

} // namespace quilla
