#include "holdings/holdings_lists_ops.h"

#include "database/demo/isbn.h"
#include "platform/core/text.h"
#include "readers/import_lists_ops.h"

#include <QCryptographicHash>

#include <cstring>

namespace quilla {

namespace {

Digest digestOf(const QString& text)
{
    const QByteArray hash = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Md5);
    Digest digest;
    std::memcpy(&digest.first, hash.constData(), sizeof digest.first);
    std::memcpy(&digest.second, hash.constData() + sizeof digest.first, sizeof digest.second);
    return digest;
}

/// Thirteen digits where it is an ISBN; ten of them are the same book's older number.
QString comparableIsbn(const QString& isbn)
{
    QString plain;
    for (const QChar c : isbn.toUpper())
        if ((c >= u'0' && c <= u'9') || c == u'X') plain += c;
    if (plain.size() != 10 || plain.first(9).contains(u'X')) return plain;
    const QString digits = u"978"_s + plain.first(9);
    return digits + demo::isbn13CheckDigit(digits);
}

constexpr int KeyFields[] {TitleField::Isbn, TitleField::Name, TitleField::Author, TitleField::Publisher,
    TitleField::Date, TitleField::Edition, TitleField::Class};

QString keyColumns()
{
    QStringList columns;
    for (const int field : KeyFields)
        columns.append(titleField(field).column);
    return columns.join(u',');
}

void readTitles(Connection& connection, HoldingsLists& lists)
{
    TitleValues title;
    Recordset row = connection.open(u"select zskid,%1 from zsk"_s.arg(keyColumns()), CursorType::Forward);
    for (; !row.eof(); row.next()) {
        for (int at = 0; at < int(std::size(KeyFields)); ++at)
            title[std::size_t(KeyFields[at])] = row.field(at + 1).text();
        lists.titles.insert(titleDigest(title), row.field(0).integer().value_or(0));
    }
}

} // namespace

size_t qHash(const Digest& digest, size_t seed) noexcept
{
    return size_t(digest.first) ^ seed;
}

Digest barcodeDigest(const QString& barcode)
{
    return digestOf(comparable(barcode));
}

Digest titleDigest(const TitleValues& title)
{
    const QString isbn = comparableIsbn(title[TitleField::Isbn]);
    QString key = isbn + u'\n' + comparable(title[TitleField::Name]);
    if (isbn.isEmpty())
        for (const int field : KeyFields)
            key += u'\n' + comparable(title[std::size_t(field)]);
    return digestOf(key);
}

HoldingsLists readHoldings(Connection& connection)
{
    HoldingsLists lists;
    lists.today = connection.open(u"select getdate()").field(0).moment()->date;
    readTitles(connection, lists);
    for (Recordset row = connection.open(u"select barcode from sck", CursorType::Forward); !row.eof();
         row.next())
        lists.barcodes.insert(barcodeDigest(row.field(0).text()));
    Recordset row = connection.open(u"select classcode,max(zch) from zsk group by classcode");
    for (; !row.eof(); row.next())
        lists.lastNumbers.insert(comparable(row.field(0).text()), int(row.field(1).integer().value_or(0)));
    return lists;
}

} // namespace quilla
