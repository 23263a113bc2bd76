#include "quilla-db/import_command.h"

#include "database/opened_library.h"
#include "platform/core/new_file.h"
#include "platform/core/text.h"
#include "readers/export_readers_ops.h"
#include "readers/refused_readers.h"

#include <QFile>

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(5, u"quilla-db"_s, text);
}

/// The file has them all; nobody reads thousands on a screen.
void tellRefused(const Arguments& arguments, const ImportReport& report, QTextStream& out)
{
    constexpr std::size_t most = 100;
    const std::size_t shown = std::min(report.refused.size(), most);
    for (std::size_t i = 0; i < shown; ++i)
        out << u"第 "_s << report.refused[i].record.line << u" 行："_s << report.refused[i].reason << u'\n';
    if (shown < report.refused.size())
        out << u"……其余 "_s << report.refused.size() - shown
            << u" 行没有列出，用 --refused 可以得到全部。\n"_s;
    if (!report.refused.empty() && !arguments.refusedFile.isEmpty())
        out << u"被拒绝的行在："_s << arguments.refusedFile << u'\n';
}

QString changed(const ImportReport& report)
{
    return report.changed ? u"，修改 %1 位"_s.arg(report.changed) : QString();
}

void tellOutcome(const Arguments& arguments, const ImportReport& report, QTextStream& out)
{
    if (!report.unknownHeadings.isEmpty())
        out << u"不认识的列，没有导入：“"_s << report.unknownHeadings.join(u"”、“"_s) << u"”\n"_s;
    if (!report.newUnits.isEmpty()) out << u"新的读者单位："_s << report.newUnits.join(u"、"_s) << u'\n';
    out << u"共 "_s << report.lines << u" 行，拒绝 "_s << report.refused.size() << u" 行，"_s;
    const bool stopped = !report.refused.empty() && !arguments.readers.skipRefused;
    if (stopped)
        out << u"没有写入任何读者。请改正后再导入，或用 --skip-refused 导入其余的行。\n"_s;
    else if (arguments.readers.dryRun)
        out << u"可以导入 "_s << report.readers << u" 位读者"_s << changed(report)
            << u"（试运行，没有写入）。\n"_s;
    else
        out << u"已导入 "_s << report.readers << u" 位读者"_s << changed(report) << u"。\n"_s;
}

} // namespace

Outcome importReadersOf(const Arguments& arguments, QTextStream& out)
{
    const QByteArray content = contentOf(arguments.file);
    RefusedReaders refused(arguments.refusedFile);
    OpenedLibrary place(arguments.target);
    const ImportReport report = importReaders(place.connection, place.schema, content, arguments.readers);
    tellRefused(arguments, report, out);
    tellOutcome(arguments, report, out);
    refused.write(report);
    return report.refused.empty() ? Outcome::Done : Outcome::Findings;
}

Outcome exportReadersOf(const Arguments& arguments, QTextStream& out)
{
    OpenedLibrary place(arguments.target);
    NewFile whole(arguments.file);
    QFile file(whole.part());
    if (!file.open(QIODevice::WriteOnly))
        throw fault(u"无法写入文件 %1：%2"_s.arg(arguments.file, file.errorString()));
    const int readers = exportReaders(place.connection, file);
    if (!file.flush()) throw fault(u"无法写入文件 %1：%2"_s.arg(arguments.file, file.errorString()));
    file.close();
    whole.finish();
    out << u"已导出 "_s << readers << u" 位读者："_s << arguments.file << u'\n';
    return Outcome::Done;
}

} // namespace quilla
