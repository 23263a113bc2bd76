#include "db/error_of.h"
#include "output/report_designs.h"
#include "platform/report/chart_pages.h"
#include "platform/report/report_layout.h"
#include "report/pdf_text.h"
#include "support/library_test.h"

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

/// A number as it stands in a row's mark: four digits.
QString fourDigits(int number)
{
    return QString::number(number).rightJustified(4, u'0');
}

} // namespace

/// Reports as they come out on paper.
class TestReport : public LibraryTest {
    Q_OBJECT

    void fill() override { m_conn = m->factory.open(m->connectionText); }
    void finish() override { m_conn.close(); }

private Q_SLOTS:
    void pagesAreFilledToTheLine()
    {
        const ReportDesign design = designOf(u"FkDataReport"_s);
        const QStringList many = print(design, fines(100));
        const auto onFirst = int(marksIn(many[0]).size());
        const auto onOther = int(marksIn(many[1]).size());
        QVERIFY(onFirst > 15 && onOther > onFirst);
        const std::pair<int, int> fillings[] {{0, 1}, {onFirst - 1, 1},
            {onFirst, 2}, // the totals need a page
            {onFirst + 1, 2}, {onFirst + onOther - 1, 2}, {onFirst + onOther, 3}, {onFirst + onOther + 1, 3}};
        for (const auto& [count, pages] : fillings) {
            const QStringList texts = print(design, fines(count));
            QCOMPARE(int(texts.size()), pages);
            QStringList marks;
            for (int page = 0; page < pages; ++page) {
                const QString& text = texts[page];
                marks += marksIn(text);
                QCOMPARE(text.count(u"罚款统计一览表"), page == 0 ? 1 : 0);
                QCOMPARE(text.count(u"实罚金额"), 1);
                const QString foot = u"报表日期：2026年3月9日 第%1页 共%2页"_s.arg(page + 1).arg(pages);
                QVERIFY2(text.endsWith(foot), qPrintable(text));
                QCOMPARE(text.count(u"合计："), page + 1 == pages ? 1 : 0);
            }
            QStringList expected;
            for (int row = 1; row <= count; ++row)
                expected.append(u'R' + fourDigits(row));
            QCOMPARE(marks, expected);
            QVERIFY(texts.back().contains(u"合计： %1 "_s.arg(count / 10.0, 0, 'f', 2)));
        }
    }

    void sumsAreExact()
    {
        const std::pair<QStringList, QString> sums[] {{QStringList(10, u"0.10"_s), u"1.00"_s},
            {{u"2.50"_s, u"null"_s}, u"2.50"_s}, {{u"-0.30"_s, u"0.10"_s, u"0.20"_s}, u"0.00"_s},
            {{u"-100.01"_s, u"0.02"_s}, u"-99.99"_s},
            {{u"9999999999.99"_s, u"9999999999.99"_s, u"0.01"_s}, u"19999999999.99"_s}}; // beyond a double
        for (const auto& [amounts, sum] : sums) {
            m->send(u"delete from fkk"_s);
            for (const QString& amount : amounts)
                m->insert(u"fkk"_s, {{u"sfmoney"_s, amount}});
            Recordset all = rows(u"select * from fkk"_s);
            QCOMPARE(ReportData(designOf(u"FkDataReport"_s), all).totals(), QStringList {sum});
        }
    }

    /// A field that the rows lack is an error; a total over such a field stays blank, and its line is left
    /// out.
    void fieldsThatAreMissing()
    {
        const std::pair<QString, QString> missing[] {
            {u"select name,sex,readercode,readerclass,paperdate,term from dzk"_s,
                u"报表“读者资料一览表”需要的字段 readunit 不在查询结果中。"_s},
            {{}, u"报表“读者资料一览表”需要的字段 name 不在查询结果中。"_s}}; // a result that failed
        for (const auto& [select, told] : missing) {
            Recordset result = select.isEmpty() ? Recordset() : rows(select);
            QCOMPARE(errorText([&] { ReportData(designOf(u"readerPrint"_s), result); }), told);
        }
        const QString loans = u"select NAME,barcode,bookname,orderdate,yhdate,readunit from JhskV"_s;
        QVERIFY(!print(designOf(u"ZqDataReport"_s), rows(loans)).join(u' ').contains(u"合计"));
        Recordset counts
            = rows(u"select 'a' as ItemKey,3 as JsCount,null as HsCount union all select 'b',4,2"_s);
        QCOMPARE(ReportData(designOf(u"LtTjReport"_s), counts).totals().join(u'|'), u"|7|2"_s);
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
        // What cataloguing calls a date of publication is any text.
        Recordset books = rows(u"select 'I1/1' as ssh,'' as bookname,'' as author,'' as publisher,"
                               "'' as pubplace,'2003-5-1' as pubdate,'' as isbn"_s);
        QCOMPARE(ReportData(designOf(u"printGoodBook"_s), books).cell(0, 5), u"2003-5-1"_s);
    }

    void groupsHavePagesOfTheirOwn()
    {
        QStringList parts;
        for (int row = 1; row <= 60; ++row)
            parts.append(u"select '%1班 超期图书如下:' as GroupKey,'书' as bookname,'R%2' as barcode,"
                         "'' as readercode,null as orderdate,null as yhdate,'乙' as itital"_s.arg(
                             row == 2 ? u"二"_s : u"一"_s, fourDigits(row)));
        const ReportDesign design = designOf(u"JHSKCQRpt"_s);
        const QStringList texts = print(design, shaped(parts.join(u" union all "_s)), {u"读者姓名"_s, {}});
        QCOMPARE(texts.size(), 3);
        for (int page = 0; page < 3; ++page) {
            const QString head
                = u"2026年3月9日 %1班 超期图书如下: 书 名 条形码 读者号 借书日期 应还日期 读者姓名 "_s;
            QVERIFY2(
                texts[page].startsWith(head.arg(page == 2 ? u"二"_s : u"一"_s)), qPrintable(texts[page]));
            QVERIFY(texts[page].endsWith(u"第%1页 共3页"_s.arg(page + 1)));
        }
        QCOMPARE(marksIn(texts[2]), QStringList {u"R0002"_s});
        QCOMPARE(marksIn(texts[0]).size() + marksIn(texts[1]).size(), 59);
        // nobody: one page with captions
        QCOMPARE(print(design, shaped(parts[0] + u" where 1=0"_s)).size(), 1);
    }

    void labelsAndPlaceholders()
    {
        const ReportDesign design = designOf(u"jylsRpt"_s);
        const QString empty
            = u"select '' as 标志,barcode,readercode,orderdate,yhdate as backdate,operater from jhsk"_s;
        const ReportTexts full {
            u"%P"_s, {{ReportLabels::Kind, u"图书"_s}, {ReportLabels::Code, u"50%P%D"_s}}};
        const QString text = print(design, rows(empty), full)[0]; // captions to the letter
        QVERIFY2(text.startsWith(u"借阅历史统计表 图书 50%P%D 标志 图书条码"), qPrintable(text));
        const ReportTexts unknown {{}, {{u"labNo"_s, u"x"_s}}};
        QCOMPARE(errorText([&] { layOut(design, rows(empty), unknown); }),
            u"报表“借阅历史统计表”没有标签 labNo。"_s);
        for (const QString& price : {u"12.5"_s, u"30"_s})
            m->send(u"insert into BookOut(bookname,price) values('甲',%1)"_s.arg(price));
        const QString ledger
            = print(designOf(u"PrintBookOut"_s), rows(u"select * from BookOut"_s), {u"2026年度"_s, {}})[0];
        QVERIFY2(ledger.startsWith(u"2026年度藏书注销帐 书 名 ") && ledger.contains(u"合计： 42.50"),
            qPrintable(ledger));
    }

    void designsOfTheCatalogue()
    {
        for (const QString& name :
            u"ZqDataReport FkDataReport DsDataReport JHLSDataReport PrintBookOut LtTjReport JHSKReport "
            "JHSKCQRpt JHSKcqReport ydztjRtp JhphbDataReport ndztjrpt printYuYueOk printGoodBook dzjyphbRpt "
            "jylsRpt readerPrint ltcsPrint"_s.split(u' '))
            QCOMPARE(designOf(name).name, name);
    }

    /// Each cell of what the statistics deliver stands on paper, in its order.
    void statisticsOnPaper()
    {
        m->insert(u"dzlx"_s, {{u"readerclass"_s, u"学生"_s}});
        m->reader(u"R1"_s, {{u"readunit"_s, u"一班"_s}});
        for (const QString& barcode : {u"B1"_s, u"B2"_s}) {
            m->copy(barcode);
            m->send(u"insert into jhslsk(readercode,barcode,orderdate,yhdate,backdate,operater) "
                    "values('R1','%1','2026-03-07','2026-04-07','2026-03-09','王馆员')"_s.arg(barcode));
        }
        m->send(u"update zsk set classcode='A81',zch=7"_s);
        m->loan(u"B1"_s, u"R1"_s, u"2026-04-01"_s);
        m->send(u"update jhsk set orderdate='2026-03-08',operater='李馆员'"_s);
        m->send(u"insert into fkk(readercode,name,barcode,bookname,cause,sfmoney,opratedate,oprater) "
                "values('R1','甲','B1','书','超期',0.5,'2026-03-09','王馆员')"_s);
        m->send(u"insert into BookOut(barcode,bookname,author,price,cause,outdate,operater) "
                "values('B9','旧书','某',12.5,'丢失','2026-03-02','李馆员')"_s);
        const QString counts
            = u"select readercode as ItemKey,count(*) as JsCount,count(*) as HsCount from jhslsk group by readercode"_s;
        const std::pair<QString, QString> prints[] {{u"ydztjRtp"_s, u"exec procydztj '2026','3'"_s},
            {u"ndztjrpt"_s, u"exec procndztj '2026','全部','全部'"_s},
            {u"JhphbDataReport"_s, u"exec procjhphb '全部','10','2026-01-01','2026-12-31','A' "_s},
            {u"dzjyphbRpt"_s, u"exec procdzjyphb  '全部','10','2026-01-01','2026-12-31'"_s},
            {u"jylsRpt"_s, u"exec procjylstj 17,'','R1'"_s}, {u"LtTjReport"_s, counts},
            {u"JHLSDataReport"_s, u"select * from JhslskV"_s}, {u"JHSKReport"_s, u"select * from JhskV"_s},
            {u"FkDataReport"_s, u"select * from FkkV"_s}, {u"DsDataReport"_s, u"select * from BookOut"_s}};
        for (const auto& [name, select] : prints) {
            const QString text = print(designOf(name), rows(select)).join(u' ');
            const QStringList cells = cellsOf(designOf(name), rows(select));
            QVERIFY2(!cells.isEmpty(), qPrintable(name));
            qsizetype at = 0;
            for (const QString& cell : cells) {
                at = text.indexOf(cell, at);
                QVERIFY2(at >= 0, qPrintable(name + u": "_s + cell + u" in "_s + text));
                at += cell.size();
            }
        }
    }

    /// The widest texts that a library may hold in every field, with every label full.
    void nothingOverlaps()
    {
        const QString text
            = u"长书名，与《副题名》（第2版）：An Unbreakable"_s + QString(60, u'x') + u" 终"_s;
        const QMap<Content, QString> widest {{Content::Count, u"1234567"_s},
            {Content::Money, u"12345678.90"_s}, {Content::Code, u"'9787302511234567890'"_s}};
        for (const ReportDesign& design : reportDesigns()) {
            QStringList fields {u"'%1' as GroupKey"_s.arg(text.repeated(2))};
            for (const ReportColumn& column : design.Section1)
                fields += widest.value(column.content, u'\'' + text + u'\'') + u" as "_s + column.field;
            const QString select = u"select "_s + fields.join(u',');
            ReportTexts texts {text, {}};
            for (const ReportLine& line : design.Section4)
                for (const ReportLabel& label : line.labels)
                    texts.captions.insert(label.name, text);
            const ReportLayout layout
                = layOut(design, design.group.empty() ? rows(select) : shaped(select), texts);
            const QRectF paper(QPointF(), paperSize(design.paper));
            std::vector<QRectF> boxes;
            for (const PlacedText& placed : layout.page(0).texts) {
                const double width = m_fonts->width(placed.text, placed.font) * placed.squeeze;
                const double height = placed.font.points * TwipsPerPoint;
                const QRectF box(placed.place.x(), placed.place.y() - height / 2, width, height);
                QVERIFY2(paper.adjusted(500, 500, -500, -500).contains(box),
                    qPrintable(design.name + placed.text));
                for (const QRectF& other : boxes)
                    QVERIFY2(
                        !other.adjusted(1, 1, -1, -1).intersects(box), qPrintable(design.name + placed.text));
                boxes.push_back(box);
            }
            const QString all = textsOf(layout, *m_fonts).join(u' ');
            for (const ReportColumn& column : design.Section1)
                if (column.content == Content::Count) QVERIFY(all.contains(u"1234567"));
        }
    }

    /// In a room of four Chinese characters, in three lines.
    /// A page a series; the axis ends in a round number, bars below 0 hang from it.
    void charts()
    {
        const std::pair<double, double> steps[] {
            {0, 1}, {5, 1}, {6, 2}, {43, 10}, {220, 50}, {1234.5, 500}, {2e6, 500'000}};
        for (const auto& [highest, step] : steps)
            QCOMPARE(chartStep(highest), step);
        const FontBook fonts;
        const ChartPages pages(
            {u"年报"_s,
                {{u"罚款"_s,
                     {{u"1"_s, 1234.5, u"1,234.50"_s}, {u"2"_s, 0, u"0.00"_s}, {u"3"_s, -20, u"-20.00"_s}}},
                    {u"借出"_s, {}}}},
            fonts);
        QCOMPARE(textsOf(pages, fonts)[0], u"年报 罚款 1500 1,234.50 1000 500 0 -20.00 -500 1 2 3"_s);
        QCOMPARE(pages.pageCount(), 2);
        const auto& bars = pages.page(0).bands;
        QCOMPARE(bars.size(), 2u);
        QCOMPARE(bars[0].area.bottom(), bars[1].area.top());
    }

    void linesBreakWhereTheyMay()
    {
        class Ruler final : public TextRuler {
            double width(QStringView text, const Typeface&) const override
            {
                const auto isWide = [](QChar c) { return c.unicode() > 0x2000; };
                return double(text.size() + std::count_if(text.begin(), text.end(), isWide));
            }
        } ruler;
        const std::pair<QString, QString> texts[] {{u"图书馆学"_s, u"图书馆学"_s},
            {u"图书馆学研究"_s, u"图书馆学|研究"_s},
            {u"一二三四，五"_s, u"一二三|四，五"_s}, // no mark begins a line
            {u"一二三（四"_s, u"一二三|（四"_s}, // no bracket ends one
            {u"of the wild"_s, u"of the|wild"_s}, {u"xxxxxxxxxx"_s, u"xxxxxxxx|xx"_s},
            {u"一二三四五六七八九十百千万"_s, u"一二三四|五六七八|九十百…"_s}};
        for (const auto& [text, lines] : texts) {
            QStringList broken;
            for (const FittedLine& line : fitLines(text, {}, 8, ruler, 3))
                broken.append(line.text);
            QCOMPARE(broken.join(u'|'), lines);
        }
    }

private:
    /// What a report shows of these rows, without the cells that stay empty.
    static QStringList cellsOf(const ReportDesign& design, Recordset all)
    {
        QStringList cells;
        for (; !all.eof(); all.next())
            for (const ReportColumn& column : design.Section1) {
                const Value& value = all.field(column.field);
                const auto day = column.content == Content::Date ? value.moment() : std::nullopt;
                QString text = day ? isoDate(day->date) : value.text();
                if (column.content == Content::Money) text = QString::number(text.toDouble(), 'f', 2);
                if (!text.isEmpty()) cells += text;
            }
        return cells;
    }

    Recordset rows(const QString& tsql) { return m_conn.open(tsql); }
    Recordset shaped(const QString& inner)
    {
        return m_conn.openShaped(u"SHAPE {%1} AS JHSKT COMPUTE JHSKT BY 'GroupKey'"_s.arg(inner));
    }
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
        m_conn.execute(u"delete from fkk");
        for (int row = 1; row <= count; ++row)
            m_conn.execute(u"insert into fkk(readercode,name,bookname,sfmoney,cause) "
                           "values('R%1','读者','书',0.1,'超期')"_s.arg(fourDigits(row)));
        m_conn.commit();
        return rows(u"select * from fkk order by readercode"_s);
    }

    const std::shared_ptr<FontBook> m_fonts = std::make_shared<FontBook>();
    Connection m_conn;
};

QTEST_MAIN(TestReport)
#include "test_report.moc"
