#include "platform/sql/lexer.h"

#include "platform/sql/scan.h"
#include "platform/sql/statement_refusal.h"

#include <algorithm>

namespace quilla::sql {

namespace {

class Lexer {
public:
    explicit Lexer(QStringView text)
        : m_text(text)
    {
    }

    std::vector<Token> run()
    {
        for (passBlanks(); m_at < m_text.size(); passBlanks())
            m_tokens.push_back(next());
        m_tokens.push_back({Token::Form::End, {}, m_text.size(), -1, true});
        return std::move(m_tokens);
    }

private:
    char16_t here(qsizetype ahead = 0) const
    {
        return m_at + ahead < m_text.size() ? m_text[m_at + ahead].unicode() : u'\0';
    }

    void passBlanks()
    {
        while (m_at < m_text.size()) {
            if (m_text[m_at].isSpace()) {
                ++m_at;
                continue;
            }
            const qsizetype end = endOfComment(m_text, m_at);
            if (end == m_at) return;
            m_at = end;
        }
    }

    Token next()
    {
        const char16_t first = here();
        const bool national = (first == u'N' || first == u'n') && here(1) == u'\'';
        if (first == u'\'' || national) return quoted(national ? 1 : 0);
        if (first == u'[' || first == u'"') return name();
        if (isDigit(first) || (first == u'.' && isDigit(here(1)) && !followsName())) return number();
        if (startsWord(first)) return word();
        return sign();
    }

    Token take(Token::Form form, qsizetype end)
    {
        const Token token {form, m_text.sliced(m_at, end - m_at), m_at, -1, true};
        m_at = end;
        return token;
    }

    Token quoted(qsizetype prefix)
    {
        bool doubled = false;
        const qsizetype from = m_at + prefix;
        const qsizetype end = endOfQuoted(m_text, from, doubled);
        Token token = take(Token::Form::Quoted, end);
        token.text = m_text.sliced(from + 1, end - from - 2);
        if (token.text.contains(QChar(u'\0'))) refuse(token.place, u"控制字符"_s);
        token.literal = m_literals++;
        return token;
    }

    Token name()
    {
        bool doubled = false;
        const qsizetype end = endOfQuoted(m_text, m_at, doubled);
        Token token = take(Token::Form::Name, end);
        token.text = token.text.sliced(1, token.text.size() - 2);
        if (token.text.isEmpty()) refuse(token.place, u"空的名称"_s);
        if (std::ranges::any_of(token.text, [](QChar c) { return c < u' '; }))
            refuse(token.place, u"控制字符"_s);
        return token;
    }

    Token number()
    {
        bool whole = true;
        const qsizetype end = endOfNumber(m_text, m_at, whole);
        if (end < m_text.size() && continuesWord(m_text[end].unicode())) refuse(m_at, u"数字写法不对"_s);
        Token token = take(Token::Form::Number, end);
        token.literal = m_literals++;
        token.whole = whole;
        return token;
    }

    Token word()
    {
        qsizetype end = m_at + 1;
        while (end < m_text.size() && continuesWord(m_text[end].unicode()))
            ++end;
        return take(Token::Form::Word, end);
    }

    Token sign()
    {
        static constexpr QStringView Pairs[] = {u"<=", u">=", u"<>", u"!="};
        for (const QStringView pair : Pairs)
            if (m_text.sliced(m_at).startsWith(pair)) return take(Token::Form::Sign, m_at + 2);
        if (!QStringView(u"(),.;*+-/%=<>{}").contains(m_text[m_at])) refuse(m_at, u"不认识的符号"_s);
        return take(Token::Form::Sign, m_at + 1);
    }

    /// A point right after a name leads to a column, also when a digit follows.
    bool followsName() const
    {
        if (m_tokens.empty()) return false;
        const Token& last = m_tokens.back();
        const bool touches = m_at > 0 && !m_text[m_at - 1].isSpace() && m_text[m_at - 1] != u'/';
        return touches && (last.form == Token::Form::Word || last.form == Token::Form::Name);
    }

    QStringView m_text;
    qsizetype m_at = 0;
    int m_literals = 0;
    std::vector<Token> m_tokens;
};

} // namespace

std::vector<Token> lex(QStringView tsql)
{
    return Lexer(tsql).run();
}

} // namespace quilla::sql
