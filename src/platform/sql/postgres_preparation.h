#pragma once

#include "platform/sql/schema.h"

#include <QString>

#include <vector>

namespace quilla::sql {

/// The version of a library on PostgreSQL that this program reads and writes.
///   1  texts in the order of code points
///   2  texts by pinyin
///   3  every table numbers its rows; LIKE passes over width; the base notes its version
constexpr int PostgresSchemaVersion = 3;

/// What brings the order of texts, the types and the functions into an empty database. `schema` says which
/// widths of texts are needed.
std::vector<QString> postgresPreparation(const Schema& schema);

/// What brings a library of version 2 to this version, and one of version 3 whose collation was made anew.
std::vector<QString> postgresRenewal(const Schema& schema);

} // namespace quilla::sql
