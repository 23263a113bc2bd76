#include "output/report_designs.h"
#include "platform/core/error.h"
#include "platform/report/report_layout.h"
#include "report/pdf_text.h"
#include "support/cases.h"
#include "support/test_library.h"

#include <QTest>

using namespace quilla;

namespace {

const QRegularExpression RowMark(u"\\bR\\d{4}\\b"_s);

QStringList marksIn(const QString& text)
{
    QStringList marks;
    for (auto found = RowMark.globalMatch(text); found.hasNext();)
        marks.append(found.next().captured());
    return marks;
}

ReportDesign designOf(const QString& name)
{
    for (const ReportDesign& design : reportDesigns())
        if (design.name == name) return design;
    return {};
}

/// A select of one row without a table: "value as field" for each field of the design.
QString rowOf(const ReportDesign& design, const std::function<QString(const ReportColumn&)>& value)
{
    QStringList fields;
    for (const ReportColumn& column : design.Section1)
        fields.append(value(column) + u" as "_s + column.field);
    return u"select "_s + fields.join(u", "_s);
}

} // namespace

/// Reports as they come out on paper.
class TestReport : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_conn.close();
        m = std::make_unique<TestLibrary>();
        m_conn = m->factory.open(m->connectionText);
        m_fonts = std::make_shared<FontBook>();
    }

    void pagesAreFilledToTheLine_data()
    {
        // rows beyond what the first page holds (-1000: none at all), full pages behind it, pages that come
        cases<int, int, int>(
            {{"no rows", {-1000, 0, 1}}, {"one less", {-1, 0, 1}}, {"totals need a page", {0, 0, 2}},
                {"one more", {1, 0, 2}}, {"second page all but full", {-1, 1, 2}},
                {"second page full, totals alone", {0, 1, 3}}, {"a row on the third", {1, 1, 3}}});
    }

    void pagesAreFilledToTheLine()
    {
        const auto [ofFirst, pagesMore, pages] = given<int, int, int>();
        const ReportDesign design = designOf(u"FkDataReport"_s);
        const QStringList many = print(design, fines(100));
        const auto onFirst = int(marksIn(many[0]).size());
        const auto onOther = int(marksIn(many[1]).size());
        QVERIFY2(onFirst > 15 && onOther > onFirst, qPrintable(many[0].left(600)));
        m->send(u"delete from fkk"_s);

        const int count = std::max(0, onFirst + pagesMore * onOther + ofFirst);
        const QStringList texts = print(design, fines(count));
        QCOMPARE(int(texts.size()), pages);
        QStringList marks;
        for (int page = 0; page < pages; ++page) {
            const QString& text = texts[page];
            marks += marksIn(text);
            QCOMPARE(text.count(u"罚款统计一览表"), page == 0 ? 1 : 0);
            QCOMPARE(text.count(u"实罚金额"), 1);
            QVERIFY2(text.endsWith(u"报表日期：2026年3月9日 第%1页 共%2页"_s.arg(page + 1).arg(pages)),
                qPrintable(text));
            QCOMPARE(text.count(u"合计："), page + 1 == pages ? 1 : 0);
        }
        QStringList expected;
        for (int row = 1; row <= count; ++row)
            expected.append(u"R%1"_s.arg(row, 4, 10, QChar(u'0')));
        QCOMPARE(marks, expected);
        QVERIFY(texts.back().contains(
            u"合计： %1.%2 "_s.arg(count / 10).arg(count % 10 * 10, 2, 10, QChar(u'0'))));
    }

    void sumsAreExact_data()
    {
        cases<QStringList, QString>({{"tenths", {QStringList(10, u"0.10"_s), u"1.00"_s}},
            {"null is none", {QStringList {u"2.50"_s, u"null"_s}, u"2.50"_s}},
            {"to nothing", {QStringList {u"-0.30"_s, u"0.10"_s, u"0.20"_s}, u"0.00"_s}},
            {"below nothing", {QStringList {u"-100.01"_s, u"0.02"_s}, u"-99.99"_s}},
            {"beyond a double",
                {QStringList {u"9999999999.99"_s, u"9999999999.99"_s, u"0.01"_s}, u"19999999999.99"_s}}});
    }

    void sumsAreExact()
    {
        const auto [amounts, sum] = given<QStringList, QString>();
        for (const QString& amount : amounts)
            m->insert(u"fkk"_s, {{u"sfmoney"_s, amount}});
        Recordset all = rows(u"select * from fkk"_s);
        QCOMPARE(ReportData(designOf(u"FkDataReport"_s), all).totals(), QStringList {sum});
    }

    void fieldsThatAreMissing_data()
    {
        // "" when it prints
        cases<QString, QString, QString, QString>(
            {{"in the detail",
                 {u"readerPrint"_s, u"select name,sex,readercode,readerclass,paperdate,term from dzk"_s,
                     u"报表“读者资料一览表”需要的字段 readunit 不在查询结果中。"_s, QString()}},
                {"a result that failed",
                    {u"JHSKcqReport"_s, QString(),
                        u"报表“借书超期统计表”需要的字段 bookname 不在查询结果中。"_s, QString()}},
                {"of a total",
                    {u"ZqDataReport"_s,
                        u"select NAME,barcode,bookname,orderdate,yhdate,readunit from JhskV"_s, QString(),
                        QString()}},
                {"of the first of three totals",
                    {u"LtTjReport"_s,
                        u"select 'a' as ItemKey,3 as JsCount,null as HsCount union all select 'b',4,2"_s,
                        QString(), u"|7|2"_s}}});
    }

    void fieldsThatAreMissing()
    {
        const auto [name, select, told, totals] = given<QString, QString, QString, QString>();
        const ReportDesign design = designOf(name);
        QString text;
        try {
            Recordset result = select.isEmpty() ? Recordset() : rows(select);
            QCOMPARE(ReportData(design, result).totals().join(u'|'), totals);
            if (name == u"ZqDataReport") QVERIFY(!print(design, rows(select)).join(u' ').contains(u"合计"));
        } catch (const Error& error) {
            text = error.text;
        }
        QCOMPARE(text, told);
    }

    void valuesAsTexts()
    {
        m->reader(u"R1"_s,
            {{u"name"_s, u"a\tb "_s}, {u"sex"_s, u"null"_s}, {u"term"_s, u"2026-05-01"_s},
                {u"paperdate"_s, u"2025-01-02 10:20"_s}});
        const ReportDesign design = designOf(u"readerPrint"_s);
        Recordset readers = rows(u"select * from dzk"_s);
        readers.next(); // a screen has walked it
        const ReportData data(design, readers);
        QCOMPARE(data.rows(), 1);
        QCOMPARE(data.cell(0, 0), u"a b"_s);
        QCOMPARE(data.cell(0, 1), QString());
        QCOMPARE(data.cell(0, 4) + u' ' + data.cell(0, 6), u"2025-01-02 2026-05-01"_s);
    }

    void groupsHavePagesOfTheirOwn()
    {
        QStringList parts;
        for (int row = 1; row <= 60; ++row)
            parts.append(
                u"select '%1' as GroupKey,'书' as bookname,'R%2' as barcode,'' as readercode,null as "
                "orderdate,null as yhdate,'乙' as itital"_s
                    .arg(row == 2 ? u"二班 超期图书如下:"_s : u"一班 超期图书如下:"_s)
                    .arg(row, 4, 10, QChar(u'0')));
        const ReportDesign design = designOf(u"JHSKCQRpt"_s);
        const auto shaped = [&](const QString& inner) {
            return m_conn.openShaped(u"SHAPE {%1} AS JHSKT COMPUTE JHSKT BY 'GroupKey'"_s.arg(inner));
        };
        const QStringList texts = print(design, shaped(parts.join(u" union all "_s)), {u"读者姓名"_s, {}});
        QCOMPARE(texts.size(), 3);
        for (int page = 0; page < 3; ++page) {
            const bool second = page == 2;
            QVERIFY2(
                texts[page].startsWith(
                    u"2026年3月9日 %1 超期图书如下: 书 名 条形码 读者号 借书日期 应还日期 读者姓名 "_s.arg(
                        second ? u"二班"_s : u"一班"_s)),
                qPrintable(texts[page]));
            QVERIFY(texts[page].endsWith(u"第%1页 共3页"_s.arg(page + 1)));
        }
        QCOMPARE(marksIn(texts[2]), QStringList {u"R0002"_s});
        QCOMPARE(marksIn(texts[0]).size() + marksIn(texts[1]).size(), 59);
        QCOMPARE(marksIn(texts[1]).back(), u"R0060"_s);
        QCOMPARE(
            print(design, shaped(parts[0] + u" where 1=0"_s)).size(), 1); // nobody: one page with captions
    }

    void labelsAndPlaceholders()
    {
        const ReportDesign design = designOf(u"jylsRpt"_s);
        const QString empty
            = u"select '' as 标志,barcode,readercode,orderdate,yhdate as backdate,operater from jhsk"_s;
        const QString text = print(design, rows(empty),
            {u"%P"_s, {{ReportLabels::Kind, u"图书"_s}, {ReportLabels::Code, u"50%P%D"_s}}})
                                 .join(u' ');
        QVERIFY2(text.startsWith(u"借阅历史统计表 图书 50%P%D 标志 图书条码"),
            qPrintable(text)); // captions to the letter
        QString told;
        try {
            layOut(design, rows(empty), {{}, {{u"labNo"_s, u"x"_s}}});
        } catch (const Error& error) {
            told = error.text;
        }
        QCOMPARE(told, u"报表“借阅历史统计表”没有标签 labNo。"_s);
        const QString ledger
            = print(designOf(u"PrintBookOut"_s), rows(u"select * from BookOut"_s), {u"2026年度"_s, {}})[0];
        QVERIFY2(ledger.startsWith(u"2026年度藏书注销帐 书 名 "), qPrintable(ledger));
    }

    void designsOfTheCatalogue()
    {
        const QStringList names
            = u"ZqDataReport FkDataReport DsDataReport JHLSDataReport PrintBookOut LtTjReport JHSKReport "
              "JHSKCQRpt JHSKcqReport ydztjRtp JhphbDataReport ndztjrpt printYuYueOk printGoodBook "
              "dzjyphbRpt "
              "jylsRpt readerPrint ltcsPrint"_s.split(u' ');
        const ReportCatalog designs = reportDesigns();
        QCOMPARE(qsizetype(designs.size()), names.size());
        for (const QString& name : names)
            QCOMPARE(designOf(name).name, name);
        // What the procedures deliver is what the designs ask for.
        const std::pair<QString, QString> calls[] {{u"ydztjRtp"_s, u"exec procydztj '2026','3'"_s},
            {u"ndztjrpt"_s, u"exec procndztj '2026','全部','全部'"_s},
            {u"JhphbDataReport"_s, u"exec procjhphb '全部','10','2026-01-01','2026-12-31','A' "_s},
            {u"dzjyphbRpt"_s, u"exec procdzjyphb  '全部','10','2026-01-01','2026-12-31'"_s},
            {u"jylsRpt"_s, u"exec procjylstj 17,'','R1'"_s}};
        for (const auto& [name, call] : calls)
            layOut(designOf(name), rows(call));
    }

    void nothingOverlaps_data()
    {
        QTest::addColumn<QString>("name");
        for (const ReportDesign& design : reportDesigns())
            QTest::newRow(qPrintable(design.name)) << design.name;
    }

    /// The widest texts that a library may hold in every field, with every label full.
    void nothingOverlaps()
    {
        QFETCH(QString, name);
        const ReportDesign design = designOf(name);
        const QString text
            = u"长书名，与《副题名》（第2版）：An Unbreakable"_s + QString(60, u'x') + u" 终"_s;
        const auto value = [&](const ReportColumn& column) {
            if (column.content == Content::Count) return u"1234567"_s;
            if (column.content == Content::Money) return u"12345678.90"_s;
            return u'\'' + (column.content == Content::Code ? u"9787302511234567890"_s : text) + u'\'';
        };
        QString select = rowOf(design, value);
        if (!design.group.empty()) select += u", '%1' as GroupKey"_s.arg(text.repeated(2));
        ReportTexts texts {text, {}};
        for (const ReportLine& line : design.Section4)
            for (const ReportLabel& label : line.labels)
                texts.captions.insert(label.name, text);
        Recordset result = design.group.empty()
            ? rows(select)
            : m_conn.openShaped(u"SHAPE {%1} AS JHSKT COMPUTE JHSKT BY 'GroupKey'"_s.arg(select));
        const ReportPage page = layOut(design, std::move(result), texts).page(0);
        const QRectF paper(QPointF(), paperSize(design.paper));
        std::vector<QRectF> boxes;
        for (const PlacedText& placed : page.texts) {
            const double width = m_fonts->width(placed.text, placed.font) * placed.squeeze;
            const double height = placed.font.points * TwipsPerPoint;
            const QRectF box(placed.place.x(), placed.place.y() - height / 2, width, height);
            QVERIFY2(paper.adjusted(500, 500, -500, -500).contains(box), qPrintable(placed.text));
            for (const QRectF& other : boxes)
                QVERIFY2(!other.adjusted(1, 1, -1, -1).intersects(box), qPrintable(placed.text));
            boxes.push_back(box);
        }
        const QString all = print(design,
            design.group.empty() ? rows(select)
                                 : Recordset(m_conn.openShaped(
                                     u"SHAPE {%1} AS JHSKT COMPUTE JHSKT BY 'GroupKey'"_s.arg(select))),
            texts)
                                .join(u' ');
        for (const ReportColumn& column : design.Section1)
            if (column.content == Content::Count) QVERIFY(all.contains(u"1234567"));
    }

    void linesBreakWhereTheyMay_data()
    {
        // in a room of four Chinese characters, in three lines
        cases<QString, QString>(
            {{"fits", {u"图书馆学"_s, u"图书馆学"_s}}, {"Chinese", {u"图书馆学研究"_s, u"图书馆学|研究"_s}},
                {"no mark begins a line", {u"一二三四，五"_s, u"一二三|四，五"_s}},
                {"no bracket ends one", {u"一二三（四"_s, u"一二三|（四"_s}},
                {"words", {u"of the wild"_s, u"of the|wild"_s}},
                {"a word too wide", {u"xxxxxxxxxx"_s, u"xxxxxxxx|xx"_s}},
                {"cut", {u"一二三四五六七八九十百千万"_s, u"一二三四|五六七八|九十百…"_s}}});
    }

    void linesBreakWhereTheyMay()
    {
        class Ruler final : public TextRuler {
            double width(QStringView text, const Typeface&) const override
            {
                double width = 0;
                for (const QChar c : text)
                    width += c.unicode() > 0x2000 ? 2 : 1;
                return width;
            }
        } ruler;
        const auto [text, lines] = given<QString, QString>();
        QStringList broken;
        for (const FittedLine& line : fitLines(text, {}, 8, ruler, 3))
            broken.append(line.text);
        QCOMPARE(broken.join(u'|'), lines);
    }

private:
    Recordset rows(const QString& tsql) { return m_conn.open(tsql); }
    ReportLayout layOut(const ReportDesign& design, Recordset&& result, const ReportTexts& texts = {})
    {
        return {design, ReportData(design, result), {texts, QDate(2026, 3, 9)}, m_fonts};
    }
    QStringList print(const ReportDesign& design, Recordset&& result, const ReportTexts& texts = {})
    {
        return textsOf(layOut(design, std::move(result), texts), *m_fonts);
    }
    Recordset fines(int count)
    {
        m_conn.begin();
        for (int row = 1; row <= count; ++row)
            m_conn.execute(
                u"insert into fkk(readercode,name,bookname,sfmoney,cause) values('R%1','读者','书',0.1,'超期')"_s
                    .arg(row, 4, 10, QChar(u'0')));
        m_conn.commit();
        return rows(u"select * from fkk order by readercode"_s);
    }

    std::shared_ptr<FontBook> m_fonts;
    std::unique_ptr<TestLibrary> m;
    Connection m_conn;
};

QTEST_MAIN(TestReport)
#include "test_report.moc"
