#pragma once

#include "holdings/book_record.h"
#include "platform/db/connection.h"

#include <QHash>
#include <QSet>

namespace quilla {

/// What stands for a text in a large set: 128 bits of it, so that a million take little room and no two are
/// ever the same.
struct Digest {
    quint64 first = 0;
    quint64 second = 0;
    bool operator==(const Digest&) const = default;
};
size_t qHash(const Digest& digest, size_t seed = 0) noexcept;

/// Of a barcode as the database compares it.
Digest barcodeDigest(const QString& barcode);
/// What makes two records one title: ISBN, whichever of its forms, and title; without an ISBN everything that
/// tells editions apart.
Digest titleDigest(const TitleValues& title);

/// What the library holds already, as far as an import has to know.
struct HoldingsLists {
    QDate today; ///< the server's
    QSet<Digest> barcodes;
    QHash<Digest, qint64> titles; ///< `zskid`
    QHash<QString, int> lastNumbers; ///< the highest `zch` by comparable class
};
HoldingsLists readHoldings(Connection& connection);

} // namespace quilla
