#include "platform/core/error.h"

namespace quilla {

Error::Error(int number_, QString source_, QString text_)
    : number(number_)
    , source(std::move(source_))
    , text(std::move(text_))
    , m_utf8(text.toUtf8())
{
    Q_ASSERT(number != 0);
}

const char* Error::what() const noexcept
{
    return m_utf8.constData();
}

void LastError::keep(const Error& error)
{
    m_number = error.number;
    m_text = error.text;
    if (m_first.number == 0) m_first = {error.number, error.text};
}

void LastError::clear()
{
    m_number = 0;
    m_text.clear();
}

} // namespace quilla
