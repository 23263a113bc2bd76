#pragma once

#include "platform/core/new_file.h"
#include "readers/import_readers_ops.h"

namespace quilla {

/// All bytes of a file. Throws `Error` that says why it can't be read.
QByteArray contentOf(const QString& name);

/// The file for the refused lines of an import. It is begun before the import: what can't be written then
/// must not be found out when the other lines are in the library already.
class RefusedReaders {
public:
    /// An empty name keeps nothing. Throws `Error` when the file can't be written or is there already.
    explicit RefusedReaders(const QString& name);

    /// Puts the file under its name when there are refused lines.
    void write(const ImportReport& report);

private:
    void writePart(const QByteArray& lines) const;

    std::optional<NewFile> m_file;
};

} // namespace quilla
