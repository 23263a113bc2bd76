#pragma once

#include <QString>

namespace quilla {

/// The operator's own program for spreadsheets.
class SpreadsheetProgram {
public:
    virtual ~SpreadsheetProgram() = default;
    /// Where its files go; an older one of the same name stays.
    virtual QString folder() const = 0;
    /// Shows the file. False when there is no such program.
    virtual bool show(const QString& file) = 0;
    /// Shows the folder that the file lies in.
    virtual void showFolder(const QString& file) = 0;
};

} // namespace quilla
