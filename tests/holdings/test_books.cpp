#include "database/demo_library.h"
#include "holdings/export_books_ops.h"
#include "holdings/import_books_ops.h"
#include "holdings/marc_parser.h"
#include "support/library_test.h"
#include "support/progress_double.h"
#include "support/write_file.h"

#include <QBuffer>
#include <QProcess>
#include <QtTest>

using namespace quilla;

namespace {

const QString Titles
    = u"select bookname,author,publisher,pubplace,pubdate,isbn,classcode,zch,fzqfh,docclass,lagclass,edition,measure,pages,books,booksauthor,authorcode,ztc,endnote,cataman,catatime from zsk order by zskid"_s;
const QString Copies = u"select zskid,barcode,rollcode,bookplace,price from sck "
                       u"where bookstatus<>'丢失' and bookstatus<>'注销' order by sckid"_s;

} // namespace

/// Books from files and into files.
class TestBooks : public LibraryTest {
    Q_OBJECT

    void fill() override { refused.clear(); }
    void finish() override { QCOMPARE(m->broken(), QString()); }

private Q_SLOTS:
    void comeBackAsTheyWent_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<int>("codePage");
        for (const BookFormat format :
            {BookFormat::Csv, BookFormat::Tsv, BookFormat::Cnmarc, BookFormat::Marc21})
            for (const CodePage codePage : {CodePage::Utf8, CodePage::Gb18030})
                QTest::addRow("%d in %d", int(format), int(codePage)) << int(format) << int(codePage);
    }
    void comeBackAsTheyWent()
    {
        QFETCH(int, format);
        QFETCH(int, codePage);
        TestLibrary from;
        DemoOptions options;
        options.today = QDate(2026, 3, 10);
        Connection source = from.factory.open(from.connectionText);
        options.titles = 100;
        options.copies = 300;
        options.readers = 30;
        source.begin();
        fillDemoLibrary(source, options);
        source.commit();
        from.send(u"update zsk set zch=0,endnote='“一”,\"二\";三',fzqfh='-2',books='丛;书' where zskid=3"_s);
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        exportBooks(source, file, {BookFormat(format), CodePage(codePage)}, progress);
        QCOMPARE(import(file.data()).refused, 0);
        QCOMPARE(m->rows(Titles), from.rows(Titles));
        QCOMPARE(m->rows(Copies), from.rows(Copies));
    }

    void readsAnotherProgramsRecords_data()
    {
        QTest::addColumn<QString>("lines");
        QTest::addColumn<QString>("codePage");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("copies");
        const QString cnmarc
            = u"00000nam0 2200000   450 \n010    $a 978-7-02-000220-7 $d CNY25.25\n101 0  $a chi $a eng\n"
              u"200 1  $a 红楼梦 $h 上册 $f 曹雪芹著 $g 高鹗续\n205    $a 第2版\n210    $a 北京 $c 人民文学出版社 $d 1996\n"
              u"606 0  $a 长篇小说 $y 中国\n606 0  $a 古典文学\n690    $a I242.4\n"
              u"905    $a 总馆 $b B1 $b B2 $v 一 $v 二 $e 7-2\n\n"_s;
        const QString cnTitle
            = u"红楼梦. 上册|曹雪芹著 ; 高鹗续|人民文学出版社|北京|978-7-02-000220-7|I242.4|7|-2|汉语、英语|长篇小说--中国；古典文学"_s;
        const QString cnCopies = u"B1|一|总馆|25.25 B2|二|总馆|25.25"_s;
        const QString marc21
            = u"00000nam  2200000 a 4500\n020    $a 0141439513 (pbk.)\n041    $a eng\n084    $a K835\n"
              u"100 1  $a Brontë, Émile,\n245 10 $a Été à Zürich : $b a tale / $c by Émile Brontë.\n"
              u"264  1 $a Genève : $b Éditions, $c 1847.\n650  0 $a Cafés $z Genève\n"
              u"852    $b Main $p M1 $9 12.75\n\n"_s;
        const QString title
            = u"Été à Zürich : a tale|by Émile Brontë|Éditions|Genève|0141439513|K835|1||英语|Cafés--Genève"_s;
        for (const QString& codePage : {u"utf-8"_s, u"gb18030"_s})
            QTest::addRow("cnmarc %s", qPrintable(codePage)) << cnmarc << codePage << cnTitle << cnCopies;
        for (const QString& codePage : {u"utf-8"_s, u"marc8"_s})
            QTest::addRow("marc21 %s", qPrintable(codePage))
                << marc21 << codePage << title << u"M1||Main|12.75"_s;
    }
    void readsAnotherProgramsRecords()
    {
        QFETCH(QString, lines);
        QFETCH(QString, codePage);
        if (QStandardPaths::findExecutable(u"yaz-marcdump"_s).isEmpty()) QSKIP("needs yaz-marcdump");
        QProcess dump;
        const QString file = write(u"records.line"_s, lines.toUtf8());
        dump.start(u"yaz-marcdump"_s,
            {u"-i"_s, u"line"_s, u"-o"_s, u"marc"_s, u"-f"_s, u"utf-8"_s, u"-t"_s, codePage, file});
        QVERIFY(dump.waitForFinished());
        QCOMPARE(import(dump.readAllStandardOutput()).refused, 0);
        QTEST(
            m->value(
                u"select bookname,author,publisher,pubplace,isbn,classcode,zch,fzqfh,lagclass,ztc from zsk"_s),
            "title");
        QTEST(m->rows(u"select barcode,rollcode,bookplace,price from sck order by sckid"_s).join(u' '),
            "copies");
    }

    void repairsOrTellsDamage()
    {
        const QByteArray good = marcBytes("00000nam0 2200000   450 ",
            {{"200",
                 "1 \x1f"
                 "aTitle"},
                {"905",
                    "  \x1f"
                    "bX1"}});
        const QByteArray length = QByteArray(good).replace(0, 5, "99999");
        const QByteArray entry = QByteArray(good).replace(27, 9, "000300001").replace("X1", "X2");
        const QByteArray cut = good.first(40) + RecordEnd;
        const QByteArray letters = QByteArray(good).replace("X1", "\xff\xfe");
        const QByteArray huge = good.chopped(1) + QByteArray(10'000'000, 'x') + RecordEnd;
        const QByteArray empty = QByteArray(good).replace(24, 24, "") + good.first(24) + RecordEnd;
        const BookImportReport report = import(
            "\xef\xbb\xbf" + length + entry + cut + letters + huge + "\r\n" + empty + good.first(30), true);
        QCOMPARE(report.repaired, 2);
        QCOMPARE(report.refused, report.records - 2);
        QCOMPARE(m->rows(u"select barcode from sck order by sckid"_s), QStringList({u"X1"_s, u"X2"_s}));
    }

    void joinsTitlesAndNumbersThem()
    {
        m->insert(u"zsk"_s,
            {{u"bookname"_s, u"甲"_s}, {u"isbn"_s, u"7-02-000220-X"_s}, {u"classcode"_s, u"I1"_s},
                {u"zch"_s, u"5"_s}, {u"bookcount"_s, u"0"_s}});
        const BookImportReport report = importText(u"书名,ISBN,分类号,种次号,条码,定价\n"
                                                   u"乙,,i1,,\"B1;B2\",￥3.25\n甲,9787020002207,I1,,B3,\n"
                                                   u"丙,,I1,9,B4,\n乙,,I1,,B5,4元\n丁,,,,,\n"_s);
        QCOMPARE(report.refused, 0);
        QCOMPARE(m->rows(u"select bookname,zch,bookcount from zsk order by zskid"_s),
            QStringList({u"甲|5|1"_s, u"乙|10|3"_s, u"丙|9|1"_s, u"丁|0|0"_s}));
        QCOMPARE(m->value(u"select price from sck where barcode='B2'"_s), u"3.25"_s);
    }

    void refusesWholeLines()
    {
        m->copy(u"OLD"_s);
        const QString before = m->everything();
        const QString text = u"题名,条形码,价格,图书状态\n甲,A1,x,\n,A2,,\n乙,old,,\n丙,A3;A3,,\n丁,Ａ４,,\n"
                             u"戊,1.2E+15,,\n己,A5,,不明\n辛,A7,-1,\n壬,A8,1E+3,\n庚,A6,,借出\n"_s;
        QCOMPARE(importText(text).refused, 9);
        QCOMPARE(m->everything(), before);
        QCOMPARE(refused.size(), 9);
        QCOMPARE(importText(text, true).copies, 1);
    }

    /// A value of its own for each copy, or one for all; a list of another length would go to the wrong
    /// copies.
    void listsOfCopies()
    {
        QCOMPARE(importText(u"题名,条形码,价格,藏址,卷次\n"
                            u"甲,\"B1;B2;\",1;2,\"一楼, 东, 1\",上；\n乙,B3；B4,1;2;3,,\n"
                            u"丙,B5;B6;B7,3;;5;,,\n丁,\"B8、B9\",\"1,2\",,\n戊,B10,1;2,a;b,\n"_s,
                     true)
                     .refused,
            1);
        QVERIFY2(refused.value(0).contains(u"条形码有 2 个，价格应该一样多"_s), qPrintable(refused.value(0)));
        QCOMPARE(m->rows(u"select barcode,price,bookplace,rollcode from sck order by sckid"_s),
            QStringList({u"B1|1|一楼, 东, 1|上"_s, u"B2|2|一楼, 东, 1|"_s, u"B5|3||"_s, u"B6|null||"_s,
                u"B7|5||"_s, u"B8|1||"_s, u"B9|2||"_s, u"B10|1|a;b|"_s}));
    }

    void readsTheMappingOfALibrary()
    {
        const BookFields fields(u"[cnmarc]\n题名 = 200$a*\"+\"\" \" | 500$a\n条码 = 999$x\n"_s);
        MarcRecord record;
        record.fields = {{u"200"_s, {}, {{u'a', u"一"_s}, {u'a', u"二"_s}}},
            {u"200"_s, {}, {{u'a', u"三"_s}}}, {u"999"_s, {}, {{u'x', u"B1"_s}}}};
        BookRecord book;
        fields.apply(record, BookFormat::Cnmarc, book);
        QCOMPARE(book.title[TitleField::Name], u"一+二 三"_s);
        QCOMPARE(book.copies.at(0)[CopyField::Barcode], u"B1"_s);
        for (const QString& wrong : {u"[CNMARC]\n题名 = 2$a"_s, u"题名 = 200$a"_s, u"[MARC21]\n名 = 200$a"_s})
            QVERIFY_THROWS_EXCEPTION(Error, BookFields {wrong});
    }

private:
    QString write(const QString& name, const QByteArray& bytes)
    {
        writeFile(m->folder.filePath(name), bytes);
        return m->folder.filePath(name);
    }
    BookImportReport import(const QByteArray& bytes, bool skipRefused = false)
    {
        Connection connection = m->factory.open(m->connectionText);
        BookImportOptions options;
        options.skipRefused = skipRefused;
        options.fields = BookFields::builtIn();
        return importBooks(
            connection, m->schema, write(u"books"_s, bytes), options,
            [this](const BookRecord&, const QString& reason) { refused.append(reason); }, progress);
    }
    BookImportReport importText(const QString& text, bool skipRefused = false)
    {
        return import(text.toUtf8(), skipRefused);
    }

    CountedProgress progress;
    QStringList refused;
};

QTEST_GUILESS_MAIN(TestBooks)
#include "test_books.moc"
