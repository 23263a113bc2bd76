#include "db/error_of.h"
#include "readers/export_readers_ops.h"
#include "readers/import_readers_ops.h"
#include "support/library_test.h"

#include <QBuffer>
#include <QStringEncoder>

using namespace quilla;

/// Readers from a delimited file.
class TestImportReaders : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        for (const QString& type : {u"学生"_s, u"教师"_s})
            m->insert(u"dzlx"_s, {{u"readerclass"_s, type}});
        m->insert(u"jycs"_s,
            {{u"readerclass"_s, u"学生"_s}, {u"bookcount"_s, u"5"_s}, {u"daycount"_s, u"30"_s},
                {u"fine"_s, u"0.125"_s}, {u"wuzheng"_s, u"1"_s}});
        m->insert(u"dzdw"_s, {{u"readunit"_s, u"一班"_s}});
        m->reader(u"OLD1"_s);
    }
    void finish() override { QCOMPARE(m->broken(), QString()); }

private Q_SLOTS:
    void readsText()
    {
        const std::pair<QString, QString> texts[] {// line:field|field
            {u"a,b;c\r\nd,,e"_s, u"1:a|b;c 2:d||e"_s}, {u"a;b\nc,d;e\n"_s, u"1:a|b 2:c,d|e"_s},
            {u"a\tb,c\t\rd\te"_s, u"1:a|b,c| 2:d|e"_s},
            {u"\"a,\"\"x\"\"\",b\n\"\",\"c\"d"_s, u"1:a,\"x\"|b 2:|cd"_s},
            {u"\"a;;;\r\nb\",c\n\n , \nd,e"_s, u"1:a;;;\nb|c 5:d|e"_s},
            {u"\"a\rb\r\n\",c\rd"_s, u"1:a\nb\n|c 4:d"_s}};
        for (const auto& [text, records] : texts) {
            QStringList read;
            for (const TextRecord& record : readDelimited(text).records)
                read.append(u"%1:%2"_s.arg(record.line).arg(record.fields.join(u'|')));
            QCOMPARE(read.join(u' '), records);
        }
    }

    void encodings()
    {
        const std::pair<QByteArray, const char*> encodings[] {
            {{}, "UTF-8"}, {"\xef\xbb\xbf", "UTF-8"}, {"\xff\xfe", "UTF-16LE"}, {{}, "GB18030"}};
        for (const auto& [mark, encoding] : encodings) {
            QStringEncoder encoder(encoding);
            QCOMPARE(
                import(mark + QByteArray(encoder(u"读者证号,姓名,读者类型\nR1,王𠮷,学生"_s))).readers, 1);
            QCOMPARE(m->value(u"select name from dzk where readercode='R1'"_s), u"王𠮷"_s);
            m->send(u"delete from dzk where readercode='R1'"_s);
        }
    }

    void newCardHasTheDefaults()
    {
        m->insert(u"dzkx"_s, {{u"readercode"_s, u"r1"_s}, {u"email"_s, u"another's"_s}});
        const ImportReport report = importText(u"姓名,读者证号,读者类型\nO'Hara, R1 ,学生 \n"_s);
        QCOMPARE(report.readers, 1);
        QCOMPARE(m->value(u"select readercode,name,readerclass,readunit,bookcount,daycount,orderbook,"
                          "yordercshu,wuzheng,readstatus,paperdate,term from dzk where fine=0.125"_s),
            u"R1|O'Hara|学生||5|30|0|0|True|有效|2026-03-10|2027-03-10"_s);
        QCOMPARE(m->value(u"select count(*) from dzkx"_s), u"0"_s);
    }

    void everyColumn()
    {
        importText(
            u"Email;家庭住址;证件号码;证件类型;出生日期;无证借书;可借天数(天);bookcount;超期罚款（元/天）;"
            "有效状态;有效期限;办证日期;备注;单位名称;性别;读者类型;姓名;读者证号\n"
            "a@b;\"甲\n乙\";11;身份证;1990/2/3;否;7;20.00;.5;挂失;2020年1月2日;20190102;\"x;y\";一班;女;"
            "教师;张三;R2"_s);
        QCOMPARE(m->value(u"select sex,readerclass,readunit,daycount,bookcount,wuzheng,readstatus,term,"
                          "paperdate,memo from dzk where readercode='R2' and fine=0.5"_s),
            u"女|教师|一班|7|20|False|挂失|2020-01-02|2019-01-02|x;y"_s);
        QCOMPARE(m->value(u"select readercode,zhenghaolx,zhenghao,dizhi,birthday,email from dzkx"_s),
            u"R2|身份证|11|甲\n乙|1990-02-03|a@b"_s);
    }

    void refuses_data()
    {
        // code, name, type, unit, term, state, copies, no card
        cases<QString, QString>({
            {"no code", {u",甲,学生"_s, u"读者证号是空的"_s}},
            {"type without rules",
                {u"R1,甲,教师,,,,3"_s, u"可借天数不能是 0；请填写，或先设置该读者类型的流通参数"_s}},
            {"unknown unit", {u"R1,甲,学生,二班"_s, u"没有这个读者单位：二班（可用 --add-units 建立）"_s}},
            {"in the base", {u"old1 ,甲,学生"_s, u"读者证号已经存在"_s}},
            {"in the file", {u"r0,甲,学生"_s, u"读者证号与第 2 行重复"_s}},
            {"short year", {u"R1,甲,学生,,1-2-26"_s, u"有效期限应该是日期(例如:2003-01-01)：1-2-26"_s}},
            {"state", {u"R1,甲,学生,,,好"_s, u"有效状态应该是有效、超期、挂失、无效之一：好"_s}},
            {"too large", {u"R1,甲,学生,,,,2147483648"_s, u"可借册数应该是不小于 0 的整数：2147483648"_s}},
            {"bit", {u"R1,甲,学生,,,,,可"_s, u"可以无证借书应该是“是”或“否”：可"_s}},
            {"too long", {QString(51, u'1') + u",甲,学生"_s, u"读者证号太长，最多 50 个字"_s}},
            {"line break", {u"\"R\n1\",甲,学生"_s, u"读者证号里有换行"_s}},
            {"control character", {u"R1,甲\u0007,学生"_s, u"姓名里有看不见的字符"_s}},
            {"no width", {u"\u200bR1,甲\t乙,学生"_s, u"读者证号里有看不见的字符"_s}},
            {"too many", {u"R1,甲,学生,,,,,,好"_s, u"比列标题多出的内容：好"_s}},
            {"wide digits", {u"Ｒ１,甲,学生"_s, u"读者证号里有全角字符，请改成半角：Ｒ１"_s}},
            {"all at once", {u"OLD1, ,外来"_s, u"读者证号已经存在；姓名是空的；没有这个读者类型：外来"_s}},
        });
    }
    void refuses()
    {
        const auto [line, reason] = given<QString, QString>();
        const QString text = Headings + u"R0,乙,学生\n"_s + line + u"\nR9,丙,学生\n"_s;
        const ImportReport report = importText(text);
        QCOMPARE(report.refused.size(), std::size_t(1));
        QCOMPARE(report.refused[0].reason, reason);
        QCOMPARE(report.refused[0].record.line, 3);
        QCOMPARE(codes(), u"OLD1"_s);
        QCOMPARE(importText(text, {.skipRefused = true}).readers, 2);
        QCOMPARE(codes(), u"OLD1 R0 R9"_s);
    }

    void unlikelyDetails()
    {
        const ImportReport report = importText(u"读者证号,姓名,读者类型,性别,证件号码,电话,读者 类型2\n"
                                               "2.00301E+11,甲,学生,男,,,\nR2,乙,学生,,1.10101E+17,,\n"
                                               "R3,丙,学生,雄,1E,,\nR4,丁,学生,女,11010119900101001X,1,2\n"_s,
            {.skipRefused = true});
        QStringList reasons;
        for (const RefusedLine& line : report.refused)
            reasons.append(line.reason.section(u"。"_s, 0, 0));
        QCOMPARE(reasons.join(u'\n'),
            u"读者证号被表格软件写成了科学计数法，位数已经丢失：2.00301E+11\n"
            "证件号码被表格软件写成了科学计数法，位数已经丢失：1.10101E+17\n性别应该是男或女，或者不填：雄"_s);
        QCOMPARE(report.unknownHeadings.join(u'|'), u"电话|读者 类型2"_s);
        QCOMPARE(codes(), u"OLD1 R4"_s);
    }

    void refusedLinesComeAgain()
    {
        const ImportReport first
            = importText(u"读者证号\t姓名\t原因\t读者类型\nR1\t\"甲\t\"\"乙\"\"\"\told\t外来\n"_s);
        const QString again = decodedText(refusedFile(first));
        QCOMPARE(again,
            u"原因\t读者证号\t姓名\t读者类型\r\n没有这个读者类型：外来\tR1\t\"甲\t\"\"乙\"\"\"\t外来\r\n"_s);
        QCOMPARE(importText(QString(again).replace(u"\t外来"_s, u"\t学生"_s)).readers, 1);
        QCOMPARE(m->value(u"select name from dzk where readercode='R1'"_s), u"甲\t\"乙\""_s);
    }

    void newUnits()
    {
        const ImportReport report = importText(
            Headings + u"R1,甲,学生,New\nR2,乙,学生,new\nR3,丙,学生,一班\n"_s, {.addUnits = true});
        QCOMPARE(report.newUnits.join(u' '), u"New"_s);
        QCOMPARE(m->rows(u"select readunit from dzdw order by dzdwid"_s).join(u' '), u"一班 New"_s);
        QCOMPARE(m->rows(u"select readunit from dzk where readunit='New'"_s).join(u' '), u"New New"_s);
    }

    void stateFollowsTheTerm()
    {
        importText(Headings
            + u"R1,甲,学生,,2026-03-09\nR2,乙,学生,,2026-03-10,超期\nR3,丙,学生,,2026-03-09,无效\n"_s);
        QCOMPARE(
            m->rows(u"select readstatus from dzk where readercode<>'OLD1' order by readercode"_s).join(u' '),
            u"超期 有效 无效"_s);
    }

    void aFailingStatementUndoesAll()
    {
        const QString before = m->everything();
        m->failAt(u"'R2'"_s);
        const QString fault = faultOf((Headings + u"R1,甲,学生\nR2,乙,学生\n"_s).toUtf8());
        QVERIFY2(fault.startsWith(u"读者证号 R2："_s), qPrintable(fault));
        m->failAt({});
        QCOMPARE(m->everything(), before);
    }

    void exportedComesBack()
    {
        importText(
            u"读者证号,姓名,读者类型,读者单位,备注,超期罚款,可以无证借书,Email,家庭住址,出生日期,可借天数\n"
            "007,\"甲,\"\"乙\"\"\",学生,一班,\"a\n;b\",0.125,否,a@b,𠮷路 1 号,1990-02-03,7\nR1,丙,学生\n"_s);
        m->send(u"update dzk set paperdate=null,term=null,bookcount=0 where readercode='OLD1'"_s);
        const QByteArray exported = exportAll();
        m->send(u"delete from dzk"_s);
        m->send(u"delete from dzkx"_s);
        QCOMPARE(import(exported).readers, 3);
        QCOMPARE(exportAll(), exported);
        const QString before = m->everything();
        QCOMPARE(import(exported, {.update = true}).changed, 3);
        QCOMPARE(m->everything(), before);
    }

    /// What a line leaves open stays; a new type brings its rules; a new code is a new card.
    void updates()
    {
        importText(u"读者证号,姓名,读者类型,可借册数,可借天数,备注,Email\nR1,甲,教师,3,9,note,a@b\n"_s);
        const ImportReport report = importText(
            u"Email,读者证号,读者类型,姓名\n,r1,学生,\nc@d,OLD1,,丁\n,R2,学生,戊\n"_s, {.update = true});
        QCOMPARE(report.changed, 2);
        QCOMPARE(report.readers, 1);
        QCOMPARE(m->rows(u"select d.readercode,name,readerclass,bookcount,daycount,memo,email from dzk d "
                         "left join dzkx x on d.readercode=x.readercode order by d.readercode"_s)
                     .join(u' '),
            u"OLD1|丁|学生|5|20||c@d R1|甲|学生|5|30|note|a@b R2|戊|学生|5|30||null"_s);
        const ImportReport refused = importText(u"读者证号,姓名\nR1,己\nR1,庚\nR9,辛\n"_s, {.update = true});
        QCOMPARE(
            refused.refused.size(), std::size_t(2)); // a code that comes twice, and a new one without a type
        QCOMPARE(m->value(u"select name from dzk where readercode='R1'"_s), u"甲"_s);
    }

    void unreadableFiles()
    {
        const std::pair<QByteArray, QString> files[] {{"\n \n", u"文件是空的。"_s},
            {"\xff\xff\x80", u"文件的编码不是"_s}, {"a,b\n\"c,d\ne", u"第 2 行的引号没有结束。"_s},
            {"PK\3\4workbook", u"这是电子表格的工作簿"_s}, {"\xd0\xcf\x11\xe0", u"这是电子表格的工作簿"_s},
            {"读者证号,姓名,读者类型,readercode", u"列标题“readercode”与另一列是同一项内容，请只留一列。"_s},
            {"读者证号,姓名", u"缺少列标题“读者类型”。\n可用的列标题：读者证号、"_s}};
        for (const auto& [file, fault] : files)
            QVERIFY2(faultOf(file).startsWith(fault), qPrintable(fault));
    }

private:
    ImportReport import(const QByteArray& file, const ImportOptions& options = {})
    {
        Connection connection = m->factory.open(m->connectionText);
        return importReaders(connection, m->schema, file, options);
    }
    ImportReport importText(const QString& text, const ImportOptions& options = {})
    {
        return import(text.toUtf8(), options);
    }
    QByteArray exportAll()
    {
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        Connection connection = m->factory.open(m->connectionText);
        exportReaders(connection, file);
        return file.data();
    }
    QString faultOf(const QByteArray& file)
    {
        return errorText([&] { import(file); });
    }
    QString codes() { return m->rows(u"select readercode from dzk order by readercode"_s).join(u' '); }

    const QString Headings = u"读者证号,姓名,读者类型,读者单位,有效期限,有效状态,可借册数,无证借书\n"_s;
};

QTEST_GUILESS_MAIN(TestImportReaders)
#include "test_import_readers.moc"
