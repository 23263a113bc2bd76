#include "platform/core/lock_file.h"

#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QThread>

namespace quilla {

namespace {

bool isEmpty(const QLockFile& lock)
{
    const QFileInfo file(lock.fileName());
    return file.exists() && file.size() == 0;
}

/// Left by a program that was killed between making the file and writing its number into it, which nobody
/// could tell from one that is just about to write.
bool staysEmpty(const QLockFile& lock)
{
    if (!isEmpty(lock)) return false;
    constexpr unsigned long longerThanWriting = 200; // milliseconds
    QThread::msleep(longerThanWriting);
    return isEmpty(lock);
}

} // namespace

bool takeLock(QLockFile& lock, std::chrono::milliseconds longest)
{
    lock.setStaleLockTime(longest);
    if (lock.tryLock(0)) return true;
    if (lock.error() != QLockFile::LockFailedError || !staysEmpty(lock)) return false;
    QFile::remove(lock.fileName());
    return lock.tryLock(0);
}

} // namespace quilla
