#include "platform/sql/scan.h"

#include "platform/sql/statement_refusal.h"

#include <array>

namespace quilla::sql {

namespace {

constexpr char16_t QuotedSign = 1;
constexpr char16_t WholeSign = 2;
constexpr char16_t FractionSign = 3;
constexpr char16_t LargeSign = 4;

/// A number of more digits may be beyond 64 bits and is reckoned as a decimal.
constexpr qsizetype MostWholeDigits = 18;

enum Class : quint8 { Plain, Word, Digit, Point, Quote, Name, Dash, Slash, Control };

constexpr std::array<Class, 128> makeClasses()
{
    std::array<Class, 128> classes {};
    for (int c = 0; c < 128; ++c) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        if (letter || c == '_' || c == '@' || c == '#' || c == '$') classes[c] = Word;
        if (c >= '0' && c <= '9') classes[c] = Digit;
        if (c < 32 && c != '\t' && c != '\n' && c != '\r') classes[c] = Control;
    }
    classes[127] = Control;
    classes['.'] = Point;
    classes['\''] = Quote;
    classes['['] = classes['"'] = Name;
    classes['-'] = Dash;
    classes['/'] = Slash;
    return classes;
}

constexpr std::array<Class, 128> Classes = makeClasses();

Class classOf(char16_t c)
{
    if (c < 128) return Classes[c];
    return QChar::isLetterOrNumber(c) ? Word : Plain;
}

/// `continuesWord` for the pass below, which asks it of every character of every statement.
inline bool insideWord(char16_t c)
{
    const Class kind = classOf(c);
    return kind == Word || kind == Digit;
}

} // namespace

bool startsWord(char16_t c)
{
    if (c < 128) return Classes[c] == Word && c != u'$';
    return QChar::isLetter(c);
}

bool continuesWord(char16_t c)
{
    return insideWord(c);
}

bool hasFraction(QStringView number)
{
    return number.contains(u'.') || number.contains(u'e', Qt::CaseInsensitive);
}

qsizetype endOfNumber(QStringView text, qsizetype from, bool& whole)
{
    const auto digitAt = [&](qsizetype at) { return at < text.size() && isDigit(text[at].unicode()); };
    const auto passDigits = [&](qsizetype at) {
        while (digitAt(at))
            ++at;
        return at;
    };
    qsizetype end = passDigits(from);
    whole = end - from <= MostWholeDigits;
    if (end < text.size() && text[end] == u'.') {
        whole = false;
        end = passDigits(end + 1);
    }
    if (end < text.size() && (text[end] == u'e' || text[end] == u'E')) {
        qsizetype exponent = end + 1;
        if (exponent < text.size() && (text[exponent] == u'+' || text[exponent] == u'-')) ++exponent;
        if (!digitAt(exponent)) return end;
        whole = false;
        end = passDigits(exponent);
    }
    return end;
}

qsizetype endOfQuoted(QStringView text, qsizetype from, bool& doubled)
{
    const QChar close = text[from] == u'[' ? QChar(u']') : text[from];
    doubled = false;
    qsizetype at = from + 1;
    for (;;) {
        at = text.indexOf(close, at);
        if (at < 0) refuse(from, u"引号或方括号没有结束"_s);
        if (at + 1 >= text.size() || text[at + 1] != close) return at + 1;
        doubled = true;
        at += 2;
    }
}

qsizetype endOfComment(QStringView text, qsizetype from)
{
    const QStringView rest = text.sliced(from);
    if (rest.startsWith(u"--")) {
        const qsizetype end = text.indexOf(u'\n', from);
        return end < 0 ? text.size() : end + 1;
    }
    if (!rest.startsWith(u"/*")) return from;
    const qsizetype end = text.indexOf(u"*/", from + 2);
    if (end < 0) refuse(from, u"注释没有结束"_s);
    return end + 2;
}

void Shape::read(QStringView tsql, std::vector<Literal>& literals)
{
    if (qsizetype(m_key.size()) < tsql.size()) m_key.resize(tsql.size() * 2);
    literals.clear();
    const qsizetype size = tsql.size();
    const char16_t* text = tsql.utf16();
    char16_t* key
        = m_key.data(); // never ahead of what was read: a literal is longer than its sign or as long
    const auto copyTo = [&](qsizetype from, qsizetype end) {
        key = std::copy(text + from, text + end, key);
        return end;
    };
    const auto takeLiteral = [&](char16_t sign, qsizetype from, qsizetype end, bool quoted, bool doubled) {
        *key++ = sign;
        literals.push_back({tsql.sliced(from, end - from), quoted, doubled});
    };
    bool inWord = false; // a digit after a point that follows a name is part of a name
    qsizetype at = 0;
    while (at < size) {
        Class kind = classOf(text[at]);
        if (kind == Point) kind = !inWord && at + 1 < size && isDigit(text[at + 1]) ? Digit : Plain;
        bool flag = false;
        switch (kind) {
        case Point:
        case Plain:
            do {
                *key++ = text[at++];
            } while (at < size && classOf(text[at]) == Plain);
            break;
        case Word:
            do {
                *key++ = text[at++];
            } while (at < size && insideWord(text[at]));
            break;
        case Digit: {
            const qsizetype end = endOfNumber(tsql, at, flag);
            const bool large = !flag && !hasFraction(tsql.sliced(at, end - at));
            takeLiteral(flag ? WholeSign : large ? LargeSign : FractionSign, at, end, false, false);
            at = end;
            break;
        }
        case Quote: {
            const qsizetype end = endOfQuoted(tsql, at, flag);
            takeLiteral(QuotedSign, at + 1, end - 1, true, flag);
            if (literals.back().text.contains(QChar(u'\0'))) refuse(at, u"控制字符"_s);
            at = end;
            break;
        }
        case Name:
            at = copyTo(at, endOfQuoted(tsql, at, flag));
            break;
        case Dash:
        case Slash: {
            const qsizetype end = endOfComment(tsql, at);
            at = copyTo(at, std::max(end, at + 1));
            break;
        }
        case Control:
            refuse(at, u"控制字符"_s);
        }
        inWord = kind == Word || kind == Name;
    }
    m_length = key - m_key.data();
}

} // namespace quilla::sql
