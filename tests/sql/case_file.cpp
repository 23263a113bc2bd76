#include "sql/case_file.h"

#include "platform/core/text.h"

#include <QFile>
#include <QFileInfo>

namespace quilla::test {

QString Case::place() const
{
    return QFileInfo(file).fileName() + u":"_s + QString::number(line);
}

QString readText(const QString& file)
{
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly)) qFatal("cannot read %s", qPrintable(file));
    return QString::fromUtf8(source.readAll());
}

std::vector<Case> readCases(const QString& file)
{
    static const QStringList Keys = {u"sqlite"_s, u"postgres"_s, u"params"_s, u"columns"_s, u"rows"_s,
        u"refused"_s, u"fails"_s, u"then"_s};
    std::vector<Case> cases;
    bool open = false;
    int number = 0;
    for (const QString& line : readText(file).split(u'\n')) {
        ++number;
        if (line.startsWith(u'#')) continue;
        if (line.trimmed().isEmpty()) {
            open = false;
            continue;
        }
        const QString key = line.section(u':', 0, 0);
        if (open && Keys.contains(key)) {
            cases.back().expected.insert(key, line.sliced(key.size() + 1).trimmed());
        } else if (open) {
            cases.back().statement += u'\n' + line;
        } else {
            cases.push_back({file, number, line, {}});
            open = true;
        }
    }
    return cases;
}

} // namespace quilla::test
