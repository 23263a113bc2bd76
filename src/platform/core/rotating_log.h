#pragma once

#include <QString>

namespace quilla {

/// A text file that keeps the latest lines, readable by its owner alone. When it is full it becomes
/// "<file>.1", in the place of an older one, and a new file begins: the two together always hold the last
/// `most` lines that were written.
class RotatingLog {
public:
    explicit RotatingLog(QString file, int most);

    /// Line breaks in `line` become blanks. False when the line could not be written. Nobody else learns of
    /// that, since a log must not get in the way of the work that it records.
    bool append(const QString& line);

private:
    QString m_file;
    int m_most;
    int m_lines = -1; ///< in the file; -1: not counted yet
};

} // namespace quilla
