#pragma once

#include <QStringView>

namespace quilla::sql {

/// The long form of a date part, "day" for "dd", "d" or "day"; empty for a word that is none.
QStringView datePartOf(QStringView word);

} // namespace quilla::sql
