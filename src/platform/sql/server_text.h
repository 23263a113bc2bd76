#pragma once

#include "platform/sql/schema.h"
#include "platform/sql/translator.h"

namespace quilla::sql {

/// What SQL Server is given: the statement as it stands, its literals as parameters. The server converts
/// them by its own rules. A statement that the dialect does not know passes unchanged, with all its
/// literals in place; `pinned` receives the literals that stay.
Translation serverTranslation(
    QStringView tsql, const std::vector<Literal>& literals, const Schema& schema, std::vector<int>& pinned);

} // namespace quilla::sql
