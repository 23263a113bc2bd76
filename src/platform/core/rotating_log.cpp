#include "platform/core/rotating_log.h"

#include "platform/core/private_files.h"
#include "platform/core/text.h"

#include <QFile>
#include <QFileInfo>

namespace quilla {

namespace {

int linesIn(const QString& file)
{
    QFile stored(file);
    return stored.open(QIODevice::ReadOnly) ? int(stored.readAll().count('\n')) : 0;
}

} // namespace

RotatingLog::RotatingLog(QString file, int most)
    : m_file(std::move(file))
    , m_most(most)
{
}

bool RotatingLog::append(const QString& line)
{
    if (m_file.isEmpty() || !makePrivateFolder(QFileInfo(m_file).path())) return false;
    if (m_lines < 0) m_lines = linesIn(m_file);
    if (m_lines >= m_most) {
        QFile::remove(m_file + u".1"_s);
        QFile::rename(m_file, m_file + u".1"_s);
        m_lines = 0;
    }
    QFile target(m_file);
    if (!target.open(QIODevice::Append, OwnerOnly)) return false;
    tightenAccess(m_file);
    ++m_lines;
    const QByteArray bytes = line.simplified().toUtf8() + '\n';
    return target.write(bytes) == bytes.size();
}

} // namespace quilla
