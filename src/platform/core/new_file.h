#pragma once

#include "platform/core/private_files.h"

#include <QLockFile>
#include <QStringList>

#include <optional>

namespace quilla {

/// Waits until the disk has the file, or the names in a folder. False when it has not.
bool isSaved(const QString& path);

/// A new file of private data. It appears under its name only when it is complete and on the disk. Until then
/// it is written as `part()` in the same folder, which is removed when the work does not finish.
class NewFile {
public:
    /// `companions`: endings of the files that a program keeps beside the file. One that stands beside `path`
    /// already would be taken for the new file's own. `group`: who else may read and write; empty for nobody.
    /// Throws `Error` that names the file when it or a companion is there, when another program is making
    /// it, or when it can't be made.
    explicit NewFile(const QString& path, const QStringList& companions = {}, const QString& group = {});
    ~NewFile();
    Q_DISABLE_COPY_MOVE(NewFile)

    /// An empty file to begin with; keeps its mode when it is written.
    const QString& part() const { return m_part; }
    /// Everything must be written and closed. Throws `Error` when the file is not on the disk for good.
    void finish();

private:
    void refuseStanding() const;
    void makeFolder();
    void claim();
    void makePart();
    void removePart();
    [[noreturn]] void fail(const QString& what) const;

    QString m_path;
    QString m_part;
    QStringList m_companions;
    std::optional<UserGroup> m_group;
    QLockFile m_maker;
};

} // namespace quilla
