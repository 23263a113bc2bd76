#include "db/server_base.h"
#include "support/cases.h"

#include <QRandomGenerator>

using namespace quilla;

/// Every engine orders and compares texts alike, and as the screens do.
class TestSameOrder : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        for (std::size_t left = 0; left < m_lines.size(); ++left)
            for (std::size_t right = left; right < m_lines.size(); ++right)
                for (const QString& a : m_lines[left])
                    for (const QString& b : m_lines[right])
                        QVERIFY2((compareText(a, b) <=> 0) == (left <=> right), qPrintable(a + u" / "_s + b));
    }

    void sorts_data() { cases<bool>({{"SQLite", {false}}, {"PostgreSQL", {true}}}); }

    void sorts()
    {
        const auto [onServer] = given<bool>();
        const std::unique_ptr<BookBase> base
            = onServer ? std::unique_ptr<BookBase>(std::make_unique<ServerBase>()) : std::make_unique<Base>();
        Connection connection = base->open();
        std::vector<std::pair<QString, int>> texts;
        for (std::size_t line = 0; line < m_lines.size(); ++line)
            for (const QString& text : m_lines[line])
                texts.emplace_back(text, int(line));
        std::shuffle(texts.begin(), texts.end(), *QRandomGenerator::global());
        for (const auto& [text, line] : texts)
            connection.execute(u"insert into book(code,price) values('%1',%2)"_s.arg(text).arg(line));

        int before = 0;
        for (Recordset row = connection.open(u"select code,price from book order by code"); !row.eof();
             row.next()) {
            const int line = row.field(1).text().toDouble();
            QVERIFY2(line >= before, qPrintable(row.field(0).text()));
            before = line;
        }
        QCOMPARE(before, int(m_lines.size()) - 1);
        for (const auto& [text, line] : texts)
            QCOMPARE(base->one(u"select count(*) from book where code='%1'"_s.arg(text)).toInt(),
                int(m_lines[std::size_t(line)].size()));
        QCOMPARE(base->one(u"select count(distinct code) from book").toInt(), int(m_lines.size()));
    }

private:
    /// In ascending order; the texts of one line are the same text.
    const std::vector<QStringList> m_lines {{u""_s, u"  "_s}, {u" a"_s, u"\u3000Ａ"_s}, {u"-1"_s, u"－１ "_s},
        {u"(老)李"_s, u"（老）李"_s}, {u"1"_s, u"１"_s, u"1  "_s}, {u"10"_s}, {u"1班"_s, u"１班 "_s},
        {u"2"_s}, {u"阿明"_s, u"阿明 "_s}, {u"啊哈"_s}, {u"重庆"_s}, {u"王 五"_s, u"王　五"_s}, {u"王五"_s},
        {u"张三"_s}, {u"A"_s, u"ａ"_s}, {u"a b"_s, u"Ａ　B "_s}, {u"A01"_s, u"a０1 "_s}, {u"ab"_s},
        {u"émile"_s, u"E\u0301mile "_s}, {u"emile"_s, u"ＥMILE"_s}, {u"Tp311"_s, u"TP３11"_s},
        {u"TP311/12"_s, u"tp311／12"_s}, {u"Zoe"_s}};
};

QTEST_GUILESS_MAIN(TestSameOrder)
#include "test_same_order.moc"
