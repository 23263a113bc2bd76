#include "database/demo/words.h"

#include "database/resource_text.h"
#include "platform/core/text.h"

namespace quilla::demo {

namespace {

QStringList linesOf(const QString& name)
{
    QStringList lines;
    for (const QString& line : resourceText(u"demo/"_s + name).split(u'\n', Qt::SkipEmptyParts))
        if (!line.startsWith(u'#')) lines += line;
    return lines;
}

QStringList trimmedParts(QStringView line)
{
    QStringList parts;
    for (const QStringView part : line.split(u'|'))
        parts += part.trimmed().toString();
    return parts;
}

void addNames(Words& words, const QString& section, const QStringList& names)
{
    if (section == u"[men]"_s) {
        words.men += names;
    } else if (section == u"[women]"_s) {
        words.women += names;
    } else if (section == u"[surnames]"_s) {
        for (const QString& name : names)
            words.surnames.push_back({name.chopped(1), name.back()});
    } else {
        words.foreigners.push_back(
            {section.mid(1).section(u' ', 0, 0), section.chopped(1).section(u' ', 1), names});
    }
}

void readNames(Words& words)
{
    QString section;
    for (const QString& line : linesOf(u"names.txt"_s)) {
        if (line.startsWith(u'['))
            section = line;
        else
            addNames(words, section, line.split(u' ', Qt::SkipEmptyParts));
    }
}

void readPublishers(Words& words)
{
    for (const QString& line : linesOf(u"publishers.txt"_s)) {
        const QStringList parts = line.split(u'\t');
        words.publishers.insert(parts[0], {parts[0], parts[1], parts[2]});
    }
}

void readSubjects(Words& words)
{
    for (const QString& line : linesOf(u"subjects.txt"_s)) {
        const QStringList parts = trimmedParts(QStringView(line).sliced(1));
        if (line.startsWith(u'@')) {
            words.blocks.push_back({int(parts[0].toDouble() * 10 + 0.5), parts[1], parts[2].split(u' '),
                parts.size() > 3 && parts[3] == u"once"_s, {}, {}});
        } else if (line.startsWith(u'-')) {
            words.blocks.back().patterns.push_back({parts[0], parts[1], parts[2]});
        } else {
            words.blocks.back().subjects.push_back({line.section(u' ', 0, 0), line.section(u' ', 1)});
        }
    }
}

void readClassics(Words& words)
{
    for (const QString& line : linesOf(u"classics.txt"_s)) {
        const QStringList parts = line.split(u'\t');
        words.classics.push_back({parts[0], parts[1], parts[2], parts[3], parts[4].toInt(), parts[5],
            parts.size() > 6 ? parts[6] : u"汉语"_s});
    }
}

} // namespace

Words readWords()
{
    Words words;
    readNames(words);
    readPublishers(words);
    readSubjects(words);
    readClassics(words);
    return words;
}

} // namespace quilla::demo
