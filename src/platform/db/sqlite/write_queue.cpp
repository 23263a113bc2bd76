#include "platform/db/sqlite/write_queue.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace quilla {

namespace {

/// Open to whom the database is open, as the engine's own files beside it are.
void shareAs(const QByteArray& database, int file)
{
    struct stat owner { };
    if (::stat(database.constData(), &owner) != 0) return;
    // Only the owner of the file may do either, and he has done so already when another desk is refused.
    std::ignore = ::fchown(file, uid_t(-1), owner.st_gid);
    std::ignore = ::fchmod(file, owner.st_mode & 0666);
}

int openQueue(const QString& database)
{
    const QByteArray path = QFile::encodeName(database);
    const int file = ::open((path + "-queue").constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file >= 0) shareAs(path, file);
    return file;
}

} // namespace

WriteQueue::WriteQueue(const QString& database)
    : m_file(openQueue(database))
{
}

WriteQueue::~WriteQueue()
{
    if (m_file >= 0) ::close(m_file);
}

WriteQueue::Head::Head(const WriteQueue* queue, std::chrono::milliseconds patience)
    : m_file(queue ? queue->m_file : -1)
{
    using namespace std::chrono;
    if (m_file < 0 || ::flock(m_file, LOCK_EX | LOCK_NB) == 0) return;
    const auto until = steady_clock::now() + patience;
    for (microseconds pause {50}; ::flock(m_file, LOCK_EX | LOCK_NB) != 0;
         pause = std::min(pause * 2, microseconds(500))) {
        if (steady_clock::now() >= until) {
            m_file = -1;
            return;
        }
        std::this_thread::sleep_for(pause);
    }
}

WriteQueue::Head::~Head()
{
    if (m_file >= 0) ::flock(m_file, LOCK_UN);
}

} // namespace quilla
