#pragma once

#include "frame/session.h"

#include <array>

namespace quilla {

/// What differs between the two reader pickers.
struct ReaderPicker {
    QString name; ///< of the screen
    QString title;
    QString statement; ///< lists its readers
    QString namePart; ///< after it when a part of a name is given, which stands for %1
    QString notice; ///< after the name when nobody was found
};

/// Readers that may borrow without their card.
ReaderPicker noCardPicker();
/// Every reader.
ReaderPicker everyReaderPicker();

/// The boxes of the details, by their index on the screen.
namespace ReaderDetail {
enum {
    Name,
    Sex,
    Birthday,
    Code,
    Class,
    Status,
    Issued,
    Term,
    Quota,
    OnLoan,
    Reserved,
    PaperKind,
    PaperNumber,
    Unit,
    Address,
    Email,
    Memo,
    Count
};
}

struct ReaderDetails {
    std::array<QString, ReaderDetail::Count> texts; ///< empty for a null
    QString photo; ///< path of the picture; empty when there is none
};

/// The picker's readers whose name contains `part`, all when it is empty: name and code. nullopt when there
/// is no connection, which has been reported; a select that fails counts as one without rows.
std::optional<Recordset> findReaders(Session& session, const ReaderPicker& picker, const QString& part);

/// The details of a reader. nullopt for a code that is gone and after a failure; both are reported.
std::optional<ReaderDetails> readReaderDetails(Session& session, const QString& readercode);

} // namespace quilla
