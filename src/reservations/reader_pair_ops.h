#pragma once

#include "frame/session.h"

namespace quilla {

/// The name of the reader with that code, empty when there is no such reader. nullopt after a failure, which
/// is reported.
std::optional<QString> findReaderName(Session& session, const QString& readercode);

} // namespace quilla
