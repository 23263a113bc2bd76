#include "catalogue/classification_ops.h"

#include <QFile>
#include <QStringConverter>

namespace quilla {

namespace {

const QString MainClasses = u"[大类表]"_s;
const QString SecondLevel = u"[二级类目表]"_s;

/// UTF-8 with or without a mark, or GB18030, whichever the bytes are.
QString decoded(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    if (!utf8.hasError()) return text;
    QStringDecoder gb18030("GB18030");
    return gb18030(bytes);
}

QStringList linesOf(QString text)
{
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    if (text.endsWith(u'\n')) text.chop(1);
    return text.split(u'\n');
}

std::optional<QStringList> readLines(Prompt& prompt, const QString& path)
{
    QFile file(path);
    if (!file.exists()) {
        prompt.inform(u"配置文件【%1】丢失。"_s.arg(path), OperationTitle);
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        prompt.inform(u"配置文件【%1】无法读取：%2"_s.arg(path, file.errorString()), OperationTitle);
        return {};
    }
    return linesOf(decoded(file.readAll()));
}

/// A bracket around the whole line, whatever stands in it; blanks outside of it make it an ordinary line.
bool endsSection(const QString& line)
{
    return line.startsWith(u'[') && line.endsWith(u']');
}

/// The lines between the header and what ends its section, or the end of the file.
std::optional<QStringList> readSection(Prompt& prompt, const QString& file, const QString& header)
{
    const auto lines = readLines(prompt, file);
    if (!lines) return {};
    const auto start = std::find_if(
        lines->begin(), lines->end(), [&](const QString& line) { return trimBlanks(line) == header; });
    if (start == lines->end()) return QStringList();
    return QStringList(start + 1, std::find_if(start + 1, lines->end(), endsSection));
}

} // namespace

QString classificationFile(const QString& folder)
{
    const QChar separator = u'/';
    return (folder.endsWith(separator) ? folder : folder + separator) + u"fenlei.Qjs"_s;
}

std::optional<QStringList> readMainClasses(Prompt& prompt, const QString& file)
{
    return readSection(prompt, file, MainClasses);
}

std::optional<QStringList> readSecondLevel(Prompt& prompt, const QString& file, QChar letter)
{
    auto lines = readSection(prompt, file, SecondLevel);
    if (!lines) return {};
    const auto isOther
        = [&](const QString& line) { return !line.startsWith(letter) && !line.startsWith(u"["_s + letter); };
    lines->removeIf(isOther);
    return lines;
}

} // namespace quilla
