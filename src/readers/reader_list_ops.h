#pragma once

#include "frame/refusal.h"
#include "frame/session.h"

namespace quilla {

/// One entry of the lists from which a card takes its type and unit.
struct ReaderListEntry {
    QString id; ///< empty for none
    QString name;
};

/// The editor's box after a refusal. It has the focus then.
namespace NameBox {
enum {
    Kept, ///< the text stays for correction
    Emptied ///< for another text
};
}

/// Which of the editor's two buttons was pressed.
enum class NameButton { SaveAndAdd, SaveAndLeave };

/// Where the list of reader types and that of units differ. Every step goes on after a failing statement and
/// does not report it.
struct ReaderList {
    QString caption; ///< of the column
    QString select; ///< the number, which stays hidden, and the name
    QString editorName;
    QString editorTitle;
    int width; ///< the longest name
    /// Nullopt when the name was entered.
    std::optional<Refusal> (*add)(Session&, const QString& name, NameButton);
    /// Renames the entry; cards keep the old name.
    void (*change)(Session&, const ReaderListEntry& entry, const QString& name);
    void (*remove)(Session&, const ReaderListEntry& entry);
};

enum ReaderListKind { ReaderTypes, ReaderUnits };
const ReaderList& readerList(ReaderListKind kind);

/// The entries of the list. Nullopt when no connection can be had.
std::optional<Recordset> readList(Session& session, const ReaderList& list);

} // namespace quilla
