#pragma once

#include "exceptions/fine_view.h"
#include "frame/session.h"

namespace quilla {

class ResumingWork;

/// Finds the loan by one of the first four boxes of the fine screen. Goes on after a failing statement, which
/// counts as one without rows.
class FineLookup {
public:
    FineLookup(Session& session, FineView& view);

    bool LookupDone = false; ///< the first four boxes have been looked up since they last changed
    QString GridReader; ///< whose loans and fines the grids show

    /// The focus has left a box: an amount is put into its form, a code, name or title is looked up.
    void Text1_LostFocus(int index);
    /// The reader's open loans and fines into the grids, of one copy when a barcode is given. False when a
    /// select failed.
    bool ReloadReaderHistory(const QString& readercode, const QString& barcode);

private:
    // False when the last statement failed: the look-up is then made again at the next occasion.
    bool lookUp(ResumingWork& work, int index, const QString& text);
    bool checkReader(ResumingWork& work);
    bool checkBook();

    void checkAmount(int index, const QString& text);
    void resetScreen(int index);
    void warn(const QString& text);

    Session& m_session;
    FineView& m_view;
};

} // namespace quilla
