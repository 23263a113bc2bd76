#include "quilla-db/book_commands.h"

#include "database/opened_library.h"
#include "holdings/built_in.h"
#include "holdings/refused_books.h"
#include "platform/core/text.h"
#include "quilla-db/console_progress.h"

#include <QFile>

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(5, u"quilla-db"_s, text);
}

BookFields fieldsOf(const Arguments& arguments)
{
    if (arguments.fieldsFile.isEmpty()) return BookFields::builtIn();
    QFile file(arguments.fieldsFile);
    if (!file.open(QIODevice::ReadOnly))
        throw fault(u"无法读取文件 %1：%2"_s.arg(arguments.fieldsFile, file.errorString()));
    return BookFields(QString::fromUtf8(file.readAll()));
}

/// A new file under its name when all of it is written.
void writeNew(const QString& name, const std::function<void(QFile&)>& fill)
{
    NewFile whole(name);
    QFile file(whole.part());
    if (!file.open(QIODevice::WriteOnly)) throw fault(u"无法写入文件 %1：%2"_s.arg(name, file.errorString()));
    fill(file);
    if (!file.flush()) throw fault(u"无法写入文件 %1：%2"_s.arg(name, file.errorString()));
    file.close();
    whole.finish();
}

/// Lists the first refused records, and keeps all of them in the file when there is one.
class Refusals {
public:
    Refusals(const QString& file, QTextStream& out)
        : m_out(out)
    {
        if (!file.isEmpty()) m_file.emplace(file);
    }

    void add(const BookRecord& book, const QString& reason)
    {
        constexpr int most = 100; // nobody reads thousands on a screen
        if (++m_count <= most) m_out << book.place() << u'：' << reason << u'\n';
        if (m_count == most + 1) m_out << u"……其余的没有列出，用 --refused 可以得到全部。\n"_s;
        if (m_file) m_file->add(book, reason);
    }

    void finish()
    {
        if (m_file && m_count > 0) m_out << u"被拒绝的记录在："_s << m_file->finish().join(u"、"_s) << u'\n';
    }

private:
    QTextStream& m_out;
    std::optional<RefusedBooks> m_file;
    int m_count = 0;
};

void tellParticulars(const BookImportReport& report, QTextStream& out)
{
    const std::pair<int, QStringView> counts[] {{report.repaired, u"%1 条记录的长度有误，已经修复。\n"},
        {report.joined, u"%1 条记录的书册并入了已有的书目。\n"},
        {report.numbered, u"%1 种书没有种次号，已经编上。\n"},
        {report.loansLeftOut, u"%1 册标为借出，作为库本导入；借书记录不在文件里。\n"},
        {report.goneCopies, u"%1 册标为丢失或注销，没有导入。\n"}};
    for (const auto& [count, text] : counts)
        if (count > 0) out << text.toString().arg(count);
    if (!report.unknownHeadings.isEmpty())
        out << u"不认识的列，没有导入：“"_s << report.unknownHeadings.join(u"”、“"_s) << u"”\n"_s;
}

void tellOutcome(const BookImportReport& report, const BookImportOptions& options, QTextStream& out)
{
    out << u"共 "_s << report.records << (report.byLines ? u" 行"_s : u" 条记录"_s) << u"，拒绝 "_s
        << report.refused << (report.byLines ? u" 行，"_s : u" 条，"_s);
    if (report.refused > 0 && !options.skipRefused)
        out << u"没有写入任何图书。请改正后再导入，或用 --skip-refused 导入其余的。\n"_s;
    else if (options.dryRun)
        out << u"可以导入 "_s << report.titles << u" 种、"_s << report.copies
            << u" 册（试运行，没有写入）。\n"_s;
    else
        out << u"已导入 "_s << report.titles << u" 种、"_s << report.copies << u" 册。\n"_s;
}

} // namespace

Outcome importBooksOf(const Arguments& arguments, QTextStream& out)
{
    BookImportOptions options = arguments.books;
    options.fields = fieldsOf(arguments);
    Refusals refusals(arguments.refusedFile, out);
    OpenedLibrary place(arguments.target);
    ConsoleProgress progress;
    const BookImportReport report = importBooks(
        place.connection, place.schema, arguments.file, options,
        [&](const BookRecord& book, const QString& reason) { refusals.add(book, reason); }, progress);
    refusals.finish();
    tellParticulars(report, out);
    tellOutcome(report, options, out);
    return report.refused == 0 ? Outcome::Done : Outcome::Findings;
}

Outcome exportBooksOf(const Arguments& arguments, QTextStream& out)
{
    OpenedLibrary place(arguments.target);
    ConsoleProgress progress;
    BookExportReport report;
    writeNew(arguments.file,
        [&](QFile& file) { report = exportBooks(place.connection, file, arguments.bookExport, progress); });
    out << u"已导出 "_s << report.titles << u" 种、"_s << report.copies << u" 册："_s << arguments.file
        << u'\n';
    return Outcome::Done;
}

Outcome writeBookFields(const Arguments& arguments, QTextStream& out)
{
    writeNew(arguments.file, [](QFile& file) { file.write(builtIn(u"fields.txt"_s)); });
    out << u"已写出字段对应表："_s << arguments.file << u"\n修改后用 import-books --fields 指定。\n"_s;
    return Outcome::Done;
}

} // namespace quilla
