#include "platform/core/text.h"
#include "platform/db/sqlite/date_functions.h"
#include "platform/db/sqlite/like_pattern.h"
#include "platform/db/sqlite/text_collation.h"

#include <QTest>

using namespace quilla;

namespace {

std::string_view view(const QByteArray& utf8)
{
    return {utf8.constData(), std::size_t(utf8.size())};
}

int sign(int order)
{
    return (order > 0) - (order < 0);
}

} // namespace

class TestSqliteFunctions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ordersAsCompareText()
    {
        // Every pair: letters of both cases, blanks, the full width forms against the second plane, letters
        // whose fold has another length in UTF-8, texts that part inside a character.
        const QStringList texts {u""_s, u" "_s, u"a"_s, u"A  "_s, u"a b"_s, u"AB"_s, u"ab\t"_s, u"b"_s,
            u"_"_s, u"有效"_s, u"有无"_s, u"有效 "_s, u"朋"_s, u"é"_s, u"É"_s, u"K"_s, u"k"_s, u"ß"_s, u"ſ"_s,
            u"s"_s, u"（"_s, u"𠀀"_s, u"𠀁"_s, u"𐐀"_s, u"𐐨"_s, u"B0001"_s, u"b0001"_s, u"B0002"_s, u"Ａ"_s,
            u"ａ"_s};
        for (const QString& left : texts)
            for (const QString& right : texts) {
                const QByteArray a = left.toUtf8();
                const QByteArray b = right.toUtf8();
                QVERIFY2(sign(compareUtf8(view(a), view(b))) == sign(compareText(left, right)),
                    qPrintable(left + u" / "_s + right));
            }
    }

    void brokenUtf8Ends()
    {
        // Must end, whatever it answers; equal bytes are equal.
        const QByteArrayList texts {
            "\xe4\xb8", "\xe4\xb9", "\xb8", "\xff", "\xfe", "a\xe4", "\xf0\x9f", "\xe4\xb8\xad"};
        for (const QByteArray& left : texts)
            for (const QByteArray& right : texts)
                QVERIFY(compareUtf8(view(left), view(right)) == 0 || left != right);
    }

    void like()
    {
        const struct {
            const char16_t* pattern;
            const char16_t* text;
            bool matches;
        } rows[] {{u"", u"", true}, {u"", u"a", false}, {u"%", u"", true}, {u"abc", u"ABC  ", true},
            {u"abc ", u"abc", false}, {u"%书%", u"图书馆", true}, {u"书%", u"图书馆", false},
            {u"_书_", u"图书馆", true}, {u"_", u"𠀀", true}, {u"__", u"𠀀", false},
            {u"2003/05/__", u"2003/06/17", false}, {u"%ab%ab", u"abxab", true}, {u"%ab%ab", u"ab", false},
            {u"a%%b", u"ab", true}, {u"%aab", u"aaab", true}, {u"%c", u"abcab c  ", true},
            {u"[a-c]x", u"Bx", true}, {u"[a-c]x", u"dx", false}, {u"[^a-c]x", u"dx", true},
            {u"[^a-c]x", u"Bx", false}, {u"[%]", u"a", false}, {u"[_]", u"_", true}, {u"[[]", u"[", true},
            {u"[a-]", u"-", true}, {u"[-a]", u"-", true}, {u"[]", u"", false}, {u"[abc", u"[abc", false},
            {u"a]", u"a]", true}, {u"[一-龥]%", u"中", true}, {u"\\%", u"\\x", true}, {u"\\_", u"_", false},
            {u"É", u"é", true}};
        for (const auto& [pattern, text, matches] : rows) {
            const QByteArray patternBytes = QStringView(pattern).toUtf8();
            const QByteArray textBytes = QStringView(text).toUtf8();
            QVERIFY2(LikePattern(view(patternBytes)).matches(view(textBytes)) == matches, patternBytes);
        }
    }

    void likeIsNotExponential()
    {
        // Tried out step by step, each "%" on its own, this would not end in a lifetime.
        const QByteArray pattern = QByteArray("%a").repeated(40) + "%b";
        QVERIFY(!LikePattern(view(pattern)).matches(view(QByteArray("a").repeated(2000))));
    }

    /// Where an ordinary step goes wrong; the parts, differences and styles stand in
    /// tests/sql/cases/dates.txt.
    void add()
    {
        const std::tuple<const char*, qint64, const char*, const char*> steps[] {
            {"year", -1, "2004-02-29 8:00:00", "2003-02-28 8:00:00"},
            {"quarter", 2, "2003-08-31", "2004-02-29"}, {"year", 8000, "2004-03-01", ""},
            {"day", Q_INT64_C(9'000'000'000'000'000), "2004-03-01", ""}, {"day", -800'000, "2004-03-01", ""}};
        for (const auto& [unit, number, from, to] : steps)
            QCOMPARE(
                dateAdd(unit, number, *readMoment(std::string_view(from))), readMoment(std::string_view(to)));
    }
};

QTEST_GUILESS_MAIN(TestSqliteFunctions)
#include "tst_sqlite_functions.moc"
