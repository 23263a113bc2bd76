#pragma once

#include <QFile>
#include <QTest>

namespace quilla {

inline void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

/// Overwrites two pages in the middle of a file.
inline void damageFile(const QString& path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(file.size() / 2));
    QCOMPARE(file.write(QByteArray(8192, 'x')), 8192);
}

} // namespace quilla
