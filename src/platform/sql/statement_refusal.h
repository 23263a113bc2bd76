#pragma once

#include "platform/core/error.h"
#include "platform/core/text.h"

namespace quilla::sql {

/// Why a statement is not understood, and where; inside the translator only.
struct Refusal {
    qsizetype place = 0; ///< in the statement's text
    QString reason;
};

[[noreturn]] void refuse(qsizetype place, const QString& reason);

/// The refusal as the program sees it, with line, column and the word that stands there.
Error errorOf(const Refusal& refusal, QStringView tsql, int firstLine = 1);

} // namespace quilla::sql
