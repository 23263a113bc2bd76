#pragma once

#include <QHash>
#include <QString>

namespace quilla::demo {

/// Hands out book numbers of group 7 (China), each publisher's in order and with a valid check digit:
/// "7-02-000220-7" for books before 2007, "978-7-02-008023-1" from then on.
class IsbnCounter {
public:
    /// `publisher` is the publisher's part of the number, `step` (1 or more) how far its titles moved on.
    QString next(const QString& publisher, int year, int step);

private:
    QHash<QString, int> m_last;
};

/// The check digit of the first nine digits of an ISBN of ten: "0" to "9" or "X".
QChar isbn10CheckDigit(QStringView digits);
/// The check digit of the first twelve digits of an ISBN of thirteen.
QChar isbn13CheckDigit(QStringView digits);

} // namespace quilla::demo
