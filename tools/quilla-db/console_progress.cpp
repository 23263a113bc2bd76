#include "quilla-db/console_progress.h"

#include <cstdio>

#include <unistd.h>

namespace quilla {

ConsoleProgress::ConsoleProgress()
    : m_shown(isatty(STDERR_FILENO))
{
}

void ConsoleProgress::setDone(qsizetype rows)
{
    const int percent = m_total > 0 ? int(rows * 100 / m_total) : 0;
    if (!m_shown || percent == m_percent) return;
    m_percent = percent;
    std::fprintf(stderr, "\r已处理 %d%%", percent);
    std::fflush(stderr);
}

void ConsoleProgress::end()
{
    if (m_percent >= 0) std::fputs("\r\033[K", stderr);
}

} // namespace quilla
