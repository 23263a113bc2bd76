#pragma once

#include "database/demo_library.h"
#include "database/scale.h"
#include "quilla-db/target.h"

#include <QStringList>

namespace quilla {

/// The command line of quilla-db, read.
struct Arguments {
    QString command;
    QString file; ///< the second file of `backup` and `restore`
    Target target;
    Target copyTarget; ///< of `copy`: where to
    bool script = false; ///< `create` only prints what it would send
    QString operatorName;
    DemoOptions demo;
    ScaleOptions scale;
};

QString helpText();

/// The command is "help" for --help. Throws `Error` that says what is wrong with the command line.
Arguments readArguments(const QStringList& line);

} // namespace quilla
