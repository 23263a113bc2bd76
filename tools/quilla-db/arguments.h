#pragma once

#include "database/demo_library.h"
#include "database/scale.h"
#include "database/target.h"
#include "holdings/export_books_ops.h"
#include "holdings/import_books_ops.h"
#include "readers/import_readers_ops.h"

#include <QStringList>

namespace quilla {

/// The command line of quilla-db, read.
struct Arguments {
    QString command;
    QString file; ///< what stands after the command: a file, a folder or an operator's name
    Target target;
    Target copyTarget; ///< of `copy`: where to
    bool script = false; ///< `create` only prints what it would send
    bool reallyDoes = false; ///< `repair` changes what it otherwise only shows
    bool removes = false; ///< `guard` takes the guards away
    QString operatorName;
    DemoOptions demo;
    ScaleOptions scale;
    ImportOptions readers;
    BookImportOptions books;
    BookExportOptions bookExport;
    QString fieldsFile; ///< the mapping of an import of books; empty for the built-in one
    QString refusedFile; ///< where the refused lines of an import go; empty for nowhere
};

QString helpText();

/// The command is "help" for --help. Throws `Error` that says what is wrong with the command line.
Arguments readArguments(const QStringList& line);

} // namespace quilla
