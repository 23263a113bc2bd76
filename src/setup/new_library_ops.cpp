#include "setup/new_library_ops.h"

#include "database/check.h"
#include "database/library_name.h"
#include "database/new_library.h"
#include "database/opened_library.h"
#include "holdings/import_books_ops.h"
#include "holdings/operators_ops.h"
#include "holdings/refused_books.h"
#include "holdings/starter_ops.h"
#include "readers/refused_readers.h"
#include "setup/library_file_ops.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace quilla {

namespace {

Refusal refusal(const QString& text, int box)
{
    return {.text = text, .box = box};
}

std::optional<Refusal> checkPlace(const Target& place)
{
    if (!place.file) return {};
    if (const auto refused = checkLibraryPath(*place.file)) return refusal(refused->text, PlaceBox);
    if (place.exists())
        return refusal(
            u"文件已经存在，不会覆盖：%1\n请换一个文件名；要使用这个文件，请返回第一页选择“打开已有的数据库文件”。"_s
                .arg(*place.file),
            PlaceBox);
    return {};
}

/// The words of what `check` throws.
template <typename Check> QString objection(Check&& check)
{
    try {
        check();
        return {};
    } catch (const Error& error) {
        return error.text;
    }
}

std::optional<Refusal> checkName(const QString& name)
{
    if (isBlank(name)) return refusal(u"请填写图书馆的名称。"_s, NameBox);
    if (name.size() <= LibraryNameWidth) return {};
    return refusal(u"图书馆的名称太长，最多 %1 个字。"_s.arg(LibraryNameWidth), NameBox);
}

/// Beside the file that is imported, or in a folder of the operator's where nothing can be written there.
QString refusedFileFor(const QString& imported)
{
    const QFileInfo file(imported);
    QString folder = QDir::homePath();
    for (const QString& better :
        {QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation), file.absolutePath()})
        if (const QFileInfo place(better); place.isDir() && place.isWritable()) folder = better;
    return freeFile(u"%1/%2-未导入.csv"_s.arg(folder, file.completeBaseName()));
}

QString tellRefused(int count, QStringView unit, bool written, const QStringList& files, QStringView command)
{
    if (count == 0) return {};
    const QString rest = written ? u"其余的已经导入。"_s : u"这个文件什么也没有导入。"_s;
    return u"\n有 %1 %2没有导入，%3请按“%4”里的原因改正，再运行：quilla-db %5 改正后的文件"_s.arg(count).arg(
        unit, rest, files.join(u"”“"_s), command);
}

QString tellLeftOut(const QStringList& headings)
{
    return headings.isEmpty() ? QString() : u"\n不认识的列，没有导入：“%1”"_s.arg(headings.join(u"”、“"_s));
}

ImportOutcome failed(const QString& what, const Error& error, QStringView command)
{
    return {u"%1没有导入：%2\n图书馆已经建立。处理好以后可以再运行：quilla-db %3 文件"_s.arg(
                what, error.text, command),
        false};
}

ImportOutcome importBooksOnce(const NewLibrary& library, Progress& progress)
{
    BookImportOptions options;
    options.skipRefused = library.skipRefused;
    options.fields = BookFields::builtIn();
    RefusedBooks refused(refusedFileFor(library.booksFile));
    OpenedLibrary place(library.place);
    const BookImportReport report = importBooks(
        place.connection, place.schema, library.booksFile, options,
        [&](const BookRecord& book, const QString& reason) { refused.add(book, reason); }, progress);
    if (report.stopped)
        return {u"图书的导入已取消，没有写入图书。以后可以运行：quilla-db import-books 文件"_s, false, true};
    const int titles = report.written ? report.titles : 0;
    const int copies = report.written ? report.copies : 0;
    const QStringList files = report.refused > 0 ? refused.finish() : QStringList();
    return {u"已导入图书 %1 种 %2 册。"_s.arg(titles).arg(copies)
            + tellRefused(
                report.refused, report.byLines ? u"行" : u"条", report.written, files, u"import-books")
            + tellLeftOut(report.unknownHeadings),
        report.refused == 0};
}

ImportOutcome importReadersOnce(const NewLibrary& library)
{
    const QByteArray content = contentOf(library.readersFile);
    const QString file = refusedFileFor(library.readersFile);
    RefusedReaders refused(file);
    OpenedLibrary place(library.place);
    const ImportReport report = importReaders(
        place.connection, place.schema, content, {.skipRefused = library.skipRefused, .addUnits = true});
    refused.write(report);
    const int count = int(report.refused.size());
    return {u"已导入读者 %1 位。"_s.arg(report.readers)
            + tellRefused(count, u"行", library.skipRefused, {file}, u"import-readers")
            + tellLeftOut(report.unknownHeadings),
        count == 0};
}

} // namespace

std::optional<Refusal> checkNewLibrary(const NewLibrary& library, const QString& repeatedPassword)
{
    if (const auto refused = checkName(library.name)) return refused;
    if (const auto refused = checkPlace(library.place)) return refused;
    const QString name = objection([&] { checkOperatorName(library.operatorName); });
    if (!name.isEmpty()) return refusal(name, OperatorBox);
    if (library.password.isEmpty()) return refusal(u"请设置密码，登录流通台时使用。"_s, PasswordBox);
    const QString password = objection([&] { checkPassword(library.password); });
    if (!password.isEmpty()) return refusal(password, PasswordBox);
    if (library.password != repeatedPassword)
        return refusal(u"两次输入的密码不一样，请重新输入。"_s, RepeatedBox);
    return {};
}

std::optional<Refusal> checkImportFiles(const NewLibrary& library)
{
    const QString files[] {library.booksFile, library.readersFile};
    for (int box = 0; box < 2; ++box) {
        const QFileInfo file(files[box]);
        const bool usable = files[box].isEmpty() || (file.isFile() && file.isReadable());
        if (!usable)
            return refusal(
                u"没有这个文件，或者不能读取：%1\n请检查文件名，或者按“浏览”选择；不导入就留空。"_s.arg(
                    files[box]),
                box);
    }
    return {};
}

void beginLibrary(const NewLibrary& library)
{
    makeLibrary(library.place, library.operatorName, [&](Connection& connection) {
        setPassword(connection, library.operatorName, library.password);
        enterLibraryName(connection, library.name);
        if (library.starter) enterStarter(connection);
        if (library.guards) guardNewLibrary(connection);
    });
}

ImportOutcome importFirstBooks(const NewLibrary& library, Progress& progress)
{
    try {
        return importBooksOnce(library, progress);
    } catch (const Error& error) {
        return failed(u"图书"_s, error, u"import-books");
    }
}

ImportOutcome importFirstReaders(const NewLibrary& library)
{
    try {
        return importReadersOnce(library);
    } catch (const Error& error) {
        return failed(u"读者"_s, error, u"import-readers");
    }
}

} // namespace quilla
