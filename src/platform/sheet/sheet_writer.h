#pragma once

#include "platform/core/error.h"

#include <QDate>
#include <QStringList>

#include <memory>
#include <vector>

namespace quilla {

namespace ErrorNumber {
constexpr int CannotWriteSheet = 57; ///< the folder, the disk or the size of the sheet
}

/// Where a file is written until it is complete.
QString partialFile(const QString& file);

/// Writes a spreadsheet file (.xlsx) sheet by sheet and row by row, downward only: rows go to disk as they
/// are written, so that a long sheet needs no more memory than a short one. Rows and columns count from 0.
///
/// The file appears under its name when it is complete; until then, and after a failure, there is none.
/// Every call throws `Error` when it can't be done.
class SheetWriter {
public:
    explicit SheetWriter(const QString& file);
    ~SheetWriter();
    SheetWriter(const SheetWriter&) = delete;
    SheetWriter& operator=(const SheetWriter&) = delete;

    /// A further sheet, which is written from now on. `widths` in characters; 0 leaves the usual width.
    void addSheet(const QString& name, const std::vector<double>& widths);
    /// Goes on to a sheet added before, counted from 0.
    void selectSheet(int index);

    /// The title over the first two rows and `columns` columns: merged, centred, 宋体 14 bold.
    void title(const QString& text, int columns);
    /// Centred captions on a pale green ground.
    void captions(int row, const QStringList& captions);
    /// As it stands, whatever it begins with; an empty text leaves the cell empty. A cell holds 32,767
    /// characters, the rest is cut off.
    void text(int row, int col, const QString& text);
    void number(int row, int col, double number);
    void money(int row, int col, double amount); ///< shown as 0.00
    /// Shown as yyyy-mm-dd; a date before the spreadsheet's own calendar is written as that text.
    void date(int row, int col, const QDate& date);

    /// Completes the file.
    void save();

private:
    struct Book;
    std::unique_ptr<Book> m;
};

} // namespace quilla
