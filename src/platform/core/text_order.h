#pragma once

#include <QByteArray>
#include <QString>

#include <string_view>

namespace quilla {

/// `compareText` for UTF-8, without an allocation. Bytes that are no UTF-8 count as U+FFFD.
int compareUtf8(std::string_view left, std::string_view right);

/// Keys compare byte by byte as `compareText` compares their texts: equal keys are the same text to the
/// database. For sorting and looking up many texts.
QByteArray orderKey(QStringView text);

/// The version of the order. It changes with the tables of a later ICU; an index that was made in another
/// version must be made anew before it is used.
const QString& orderVersion();

} // namespace quilla
