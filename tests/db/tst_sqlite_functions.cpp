#include "platform/core/text.h"
#include "platform/db/sqlite/date_functions.h"
#include "platform/db/sqlite/like_pattern.h"
#include "platform/db/sqlite/text_collation.h"
#include "support/cases.h"

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

    void like_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("matches");
        const struct {
            const char16_t* pattern;
            const char16_t* text;
            bool matches;
        } rows[] {
            {u"", u"", true},
            {u"", u"a", false},
            {u"%", u"", true},
            {u"abc", u"ABC", true},
            {u"abc", u"abc  ", true},
            {u"abc ", u"abc", false},
            {u"abc ", u"abc ", true},
            {u"%书%", u"图书馆", true},
            {u"书%", u"图书馆", false},
            {u"_书_", u"图书馆", true},
            {u"_", u"𠀀", true},
            {u"__", u"𠀀", false},
            {u"2003/__/__", u"2003/05/17", true},
            {u"2003/05/__", u"2003/06/17", false},
            {u"%ab%ab", u"abxab", true},
            {u"%ab%ab", u"ab", false},
            {u"a%%b", u"ab", true},
            {u"%aab", u"aaab", true},
            {u"%c", u"abcab c  ", true},
            {u"[a-c]x", u"Bx", true},
            {u"[a-c]x", u"dx", false},
            {u"[^a-c]x", u"dx", true},
            {u"[^a-c]x", u"Bx", false},
            {u"[%]", u"%", true},
            {u"[%]", u"a", false},
            {u"[_]", u"_", true},
            {u"[[]", u"[", true},
            {u"[a-]", u"-", true},
            {u"[-a]", u"-", true},
            {u"[]", u"", false},
            {u"[abc", u"[abc", false},
            {u"a]", u"a]", true},
            {u"[一-龥]%", u"中", true},
            {u"\\%", u"\\x", true},
            {u"\\_", u"_", false},
            {u"É", u"é", true},
        };
        for (const auto& row : rows)
            QTest::newRow(qPrintable(u"%1 ~ %2"_s.arg(row.text, row.pattern)))
                << QStringView(row.pattern).toString() << QStringView(row.text).toString() << row.matches;
    }

    void like()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, text);
        const QByteArray patternBytes = pattern.toUtf8();
        const QByteArray textBytes = text.toUtf8();
        QTEST(LikePattern(view(patternBytes)).matches(view(textBytes)), "matches");
    }

    void likeIsNotExponential()
    {
        // Tried out step by step, each "%" on its own, this would not end in a lifetime.
        const QByteArray pattern = QByteArray("%a").repeated(40) + "%b";
        QVERIFY(!LikePattern(view(pattern)).matches(view(QByteArray("a").repeated(2000))));
    }

    void difference_data()
    {
        cases<QByteArray, QString, QString, qint64>({
            {"borders, not days", {QByteArray("day"), u"2004-03-01 23:59:59"_s, u"2004-03-02"_s, qint64(1)}},
            {"same day", {QByteArray("day"), u"2004-03-01"_s, u"2004-03-01 23:59:59"_s, qint64(0)}},
            {"backwards", {QByteArray("day"), u"2004-03-01"_s, u"2004-02-28"_s, qint64(-2)}},
            {"new year", {QByteArray("year"), u"2003-12-31"_s, u"2004-01-01"_s, qint64(1)}},
            {"months", {QByteArray("month"), u"2003-11-30"_s, u"2004-02-01"_s, qint64(3)}},
            {"quarter", {QByteArray("quarter"), u"2003-12-31"_s, u"2004-04-01"_s, qint64(2)}},
            {"saturday to sunday", {QByteArray("week"), u"2004-03-06"_s, u"2004-03-07"_s, qint64(1)}},
            {"sunday to saturday", {QByteArray("week"), u"2004-03-07"_s, u"2004-03-13"_s, qint64(0)}},
            {"hours", {QByteArray("hour"), u"2004-03-06 22:59:00"_s, u"2004-03-07 1:00:00"_s, qint64(3)}},
        });
    }

    void difference()
    {
        const auto [unit, from, to, difference] = given<QByteArray, QString, QString, qint64>();
        QCOMPARE(dateDifference(view(unit), *readMoment(from), *readMoment(to)), difference);
        QVERIFY(!dateDifference("dy", *readMoment(from), *readMoment(to)));
    }

    void add_data()
    {
        cases<QByteArray, qint64, QString, QString>({
            {"short month", {QByteArray("month"), qint64(1), u"2004-01-31"_s, u"2004-02-29"_s}},
            {"keeps the time",
                {QByteArray("year"), qint64(-1), u"2004-02-29 8:00:00"_s, u"2003-02-28 8:00:00"_s}},
            {"quarters", {QByteArray("quarter"), qint64(2), u"2003-08-31"_s, u"2004-02-29"_s}},
            {"days", {QByteArray("day"), qint64(-1), u"2004-03-01 8:00:00"_s, u"2004-02-29 8:00:00"_s}},
            {"over midnight", {QByteArray("minute"), qint64(-1), u"2004-03-01"_s, u"2004-02-29 23:59:00"_s}},
            {"too late", {QByteArray("year"), qint64(8000), u"2004-03-01"_s, {}}},
            {"far too late", {QByteArray("day"), Q_INT64_C(9'000'000'000'000'000), u"2004-03-01"_s, {}}},
            {"too early", {QByteArray("day"), qint64(-800'000), u"2004-03-01"_s, {}}},
        });
    }

    void add()
    {
        const auto [unit, number, from, to] = given<QByteArray, qint64, QString, QString>();
        QCOMPARE(dateAdd(view(unit), number, *readMoment(from)), readMoment(to));
    }

    void part_data()
    {
        QTest::addColumn<QByteArray>("unit");
        QTest::addColumn<int>("number");
        QTest::newRow("year") << QByteArray("year") << 2004;
        QTest::newRow("quarter") << QByteArray("quarter") << 4;
        QTest::newRow("month") << QByteArray("month") << 12;
        QTest::newRow("day") << QByteArray("day") << 26;
        QTest::newRow("day of the year") << QByteArray("dayofyear") << 361;
        QTest::newRow("sunday") << QByteArray("weekday") << 1;
        QTest::newRow("week") << QByteArray("week") << 53;
        QTest::newRow("hour") << QByteArray("hour") << 8;
    }

    void part()
    {
        QFETCH(QByteArray, unit);
        QFETCH(int, number);
        QCOMPARE(datePart(view(unit), *readMoment(u"2004-12-26 8:05:03"_s)), number);
    }

    void convert()
    {
        const Moment moment = *readMoment(u"2003-10-01 12:05:03"_s);
        QCOMPARE(convertDate(0, moment), QByteArray("Oct  1 2003 12:05PM"));
        QCOMPARE(convertDate(23, moment), QByteArray("2003-10-01"));
        QCOMPARE(convertDate(111, moment), QByteArray("2003/10/01"));
        QCOMPARE(convertDate(112, moment), QByteArray("20031001"));
        QCOMPARE(convertDate(120, moment), QByteArray("2003-10-01 12:05:03"));
        QCOMPARE(convertDate(120, *readMoment(u"2003-10-01"_s)), QByteArray("2003-10-01 00:00:00"));
        QCOMPARE(convertDate(0, *readMoment(u"2003-10-11"_s)), QByteArray("Oct 11 2003 12:00AM"));
        QVERIFY(!convertDate(7, moment));
    }
};

QTEST_GUILESS_MAIN(TestSqliteFunctions)
#include "tst_sqlite_functions.moc"
