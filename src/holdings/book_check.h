#pragma once

#include "holdings/holdings_lists_ops.h"

namespace quilla {

/// Puts records into the form in which they are written, and says what is wrong with them.
class BookCheck {
public:
    /// Both must outlive it. `lists` takes up the barcodes of the records that pass.
    BookCheck(const sql::Schema& schema, HoldingsLists& lists);

    /// Why the record can't be taken, all that is wrong with it; empty when it can.
    QString check(BookRecord& book);
    int loansLeftOut() const { return m_loans; } ///< copies on loan that came as copies on the shelf
    int goneCopies() const { return m_gone; } ///< lost and withdrawn copies that were left out

private:
    void checkTitle(TitleValues& title);
    void checkWidths(const TitleValues& title);
    void checkNumber(TitleValues& title);
    void checkDate(TitleValues& title);
    void checkCopies(BookRecord& book);
    void checkBarcode(const QString& barcode);
    void checkPrice(QString& price);
    void leaveGoneOut(std::vector<CopyValues>& copies);
    void checkState(QString& state);
    void checkText(const QString& caption, const sql::Column& column, const QString& text);
    void refuse(const QString& reason);

    const sql::Table& m_titleTable;
    const sql::Table& m_copyTable;
    HoldingsLists& m_lists;
    std::vector<Digest> m_barcodes; ///< of this record
    QStringList m_reasons;
    int m_loans = 0;
    int m_gone = 0;
};

} // namespace quilla
