#include "frame/manual_ops.h"

#include "platform/core/built_in_file.h"
#include "platform/core/text.h"

#include <QRegularExpression>

/// A static library's resources are not linked unless something asks for them by name; the macro takes no
/// namespace.
static void linkManual()
{
    Q_INIT_RESOURCE(manual);
}

namespace quilla {

namespace {

std::vector<ManualSection> readChapters()
{
    linkManual();
    std::vector<ManualSection> all;
    for (const QStringView chapter :
        {u"1-desk", u"2-readers", u"3-books", u"4-exceptions", u"5-statistics", u"6-system"})
        for (ManualSection& section :
            readManual(QString::fromUtf8(builtInFile(u":/manual/%1.md"_s.arg(chapter)))))
            all.push_back(std::move(section));
    return all;
}

ManualSection begunBy(const QRegularExpressionMatch& heading)
{
    static const QRegularExpression between(u"[#\\s]+"_s);
    return {heading.captured(2), heading.captured(3).split(between, Qt::SkipEmptyParts), {},
        heading.captured(1).size() == 1};
}

} // namespace

const std::vector<ManualSection>& manual()
{
    static const std::vector<ManualSection> sections = readChapters();
    return sections;
}

std::optional<std::size_t> findSection(const QString& name)
{
    const auto found = std::ranges::find_if(
        manual(), [&](const ManualSection& section) { return section.names.contains(name); });
    if (found == manual().end()) return {};
    return std::size_t(found - manual().begin());
}

std::vector<ManualSection> readManual(const QString& markdown)
{
    static const QRegularExpression headingLine(u"^(##?) (.*?)(?: \\{([^}]*)\\})?$"_s);
    std::vector<ManualSection> sections;
    for (const QString& line : markdown.split(u'\n')) {
        const auto heading = headingLine.match(line);
        if (heading.hasMatch())
            sections.push_back(begunBy(heading));
        else if (!sections.empty())
            sections.back().text += line + u'\n';
    }
    return sections;
}

} // namespace quilla
