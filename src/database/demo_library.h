#pragma once

#include "platform/db/connection.h"

#include <QDate>

namespace quilla {

/// Who signs in to look at the demo library: a name that any keyboard can type.
inline constexpr QStringView DemoOperator = u"demo";
inline constexpr QStringView DemoPassword = u"demo";

/// What the demo library is to look like.
struct DemoOptions {
    QDate today; ///< the last day of its history; all dates lie around it
    quint64 seed = 1; ///< the same seed and day give the same rows everywhere
    int titles = 3000; ///< about
    int copies = 6000;
    int readers = 500;
};

/// Fills a new library, which holds only its first rows, with the collection, readers and three years of
/// a college library's desk. Runs in the caller's transaction. Throws `Error` when titles or readers are
/// there already.
///
/// Operators: `DemoOperator`, "admin" without a password, "王芳" and "刘敏"; "编目" may not use the desk.
void fillDemoLibrary(Connection& connection, const DemoOptions& options);

} // namespace quilla
