#include "platform/sql/shape_statement.h"

#include "platform/core/text.h"
#include "platform/sql/scan.h"
#include "platform/sql/statement_refusal.h"

namespace quilla::sql {

namespace {

class ShapeReader {
public:
    explicit ShapeReader(QStringView text)
        : m_text(text)
    {
    }

    ShapeStatement read()
    {
        ShapeStatement result;
        word(u"shape");
        result.select = braces();
        word(u"as");
        result.child = name();
        word(u"compute");
        const qsizetype place = m_at;
        if (name().compare(result.child, Qt::CaseInsensitive) != 0)
            refuse(place, u"此处应为 "_s + result.child);
        word(u"by");
        do {
            result.groupBy.push_back(column());
        } while (sign(u','));
        if (m_at < m_text.size()) refuse(m_at, u"附近有语法错误"_s);
        return result;
    }

private:
    void skipBlanks()
    {
        while (m_at < m_text.size() && m_text[m_at].isSpace())
            ++m_at;
    }

    QString name()
    {
        skipBlanks();
        const qsizetype from = m_at;
        while (m_at < m_text.size() && continuesWord(m_text[m_at].unicode()))
            ++m_at;
        if (m_at == from) refuse(from, u"此处应为名称"_s);
        const QString result = m_text.sliced(from, m_at - from).toString();
        skipBlanks();
        return result;
    }

    void word(QStringView lower)
    {
        skipBlanks();
        const qsizetype place = m_at;
        if (name().compare(lower, Qt::CaseInsensitive) != 0) refuse(place, u"此处应为 "_s.append(lower));
    }

    bool sign(QChar sign)
    {
        if (m_at >= m_text.size() || m_text[m_at] != sign) return false;
        ++m_at;
        skipBlanks();
        return true;
    }

    /// The select; a brace inside quotes belongs to it.
    QString braces()
    {
        if (!sign(u'{')) refuse(m_at, u"此处应为 {"_s);
        const qsizetype from = m_at;
        while (m_at < m_text.size() && m_text[m_at] != u'}') {
            const bool quote = m_text[m_at] == u'\'' || m_text[m_at] == u'"' || m_text[m_at] == u'[';
            bool doubled = false;
            m_at = quote ? endOfQuoted(m_text, m_at, doubled) : m_at + 1;
        }
        if (m_at >= m_text.size()) refuse(m_at, u"此处应为 }"_s);
        const QString result = m_text.sliced(from, m_at - from).trimmed().toString();
        ++m_at;
        return result;
    }

    /// A name, in single quotes or bare.
    QString column()
    {
        if (m_at >= m_text.size() || m_text[m_at] != u'\'') return name();
        bool doubled = false;
        const qsizetype from = m_at + 1;
        m_at = endOfQuoted(m_text, m_at, doubled);
        const QString result = m_text.sliced(from, m_at - from - 1).toString();
        skipBlanks();
        return result;
    }

    QStringView m_text;
    qsizetype m_at = 0;
};

} // namespace

ShapeStatement readShape(QStringView text)
{
    try {
        return ShapeReader(text).read();
    } catch (const Refusal& refusal) {
        throw errorOf(refusal, text);
    }
}

} // namespace quilla::sql
