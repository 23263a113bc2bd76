#include "platform/core/window_command_line.h"

#include "platform/core/text.h"

#include <QCommandLineParser>
#include <QTextStream>

namespace quilla {

namespace {

int print(FILE* where, const QString& text, int exitCode)
{
    QTextStream(where) << text;
    return exitCode;
}

QStringList textsOf(int argc, char** argv)
{
    QStringList texts;
    for (int i = 0; i < argc; ++i)
        texts.append(QString::fromLocal8Bit(argv[i]));
    return texts;
}

} // namespace

WindowCommandLine WindowCommandLine::read(int argc, char** argv, const QString& help, const QString& version)
{
    QCommandLineParser parser;
    parser.addOptions(
        {{u"help"_s, {}}, {u"version"_s, {}}, {u"dark"_s, {}}, {u"gallery"_s, {}, u"文件夹"_s}});
    const bool known = parser.parse(textsOf(argc, argv)) && parser.positionalArguments().isEmpty();
    WindowCommandLine line {parser.isSet(u"dark"_s), parser.value(u"gallery"_s)};
    constexpr int failed = 2;
    if (!known)
        line.ended = print(stderr, u"命令行有误。用 --help 查看用法。\n"_s, failed);
    else if (parser.isSet(u"help"_s))
        line.ended = print(stdout, help, 0);
    else if (parser.isSet(u"version"_s))
        line.ended = print(stdout, version + u'\n', 0);
    return line;
}

} // namespace quilla
