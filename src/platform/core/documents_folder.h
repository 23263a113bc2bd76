#pragma once

#include <QString>

namespace quilla {

/// The operator's folder for documents, made when it is missing, as it is for a user who has never had a
/// desktop; the home folder where the system names none.
QString documentsFolder();

} // namespace quilla
