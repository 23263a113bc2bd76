#include "quilla-db/arguments.h"

#include "platform/core/dates.h"
#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QCommandLineParser>
#include <QHash>

namespace quilla {

namespace {

constexpr QStringView Help = uR"(青简文库的数据库工具。
用法：quilla-db [选项] 命令 [文件]

命令：
  create        建立新的数据库：表、视图和第一个操作员（没有密码）
  demo          建立演示数据库，或装入空的数据库
  scale         建立测速用的大数据库，或装入空的数据库
  check         核对数据，不作修改
  repair        列出 check 发现的问题中可以自动改正的：读者的册数、书册的状态；加 --yes 才修改
  guard         数据核对无误后加保护索引：一册书只能有一条借书记录，读者证号和条形码不能重复
  copy          把内置数据库的全部数据复制到 --connection 的空数据库，或还没有的内置数据库；
                用 --from 从服务器复制到还没有的 --file，或到 --connection 的空数据库
  backup 文件   备份，使用中也可以：内置数据库，或用 pg_dump 备份 PostgreSQL；损坏的数据库不备份
  backup-folder [文件夹]
                设置或显示工作台每天的备份放在哪个文件夹；建议放在另一个磁盘上
  upgrade       把较早版本的数据库升级到本程序的版本；先在同一文件夹里保存核对过的副本
  restore [文件]
                从备份恢复，不指定文件时列出每天的备份供选择；已有的数据库换个名字保留；
                损坏的备份不恢复，有工作台在使用时不恢复；PostgreSQL 恢复到空的数据库
  import-books 文件
                导入图书：ISO 2709（CNMARC、MARC21；UTF-8、GB18030、MARC-8）或 CSV
  export-books 文件
                导出图书，格式与导入的相同
  import-readers 文件
                从 CSV 文件导入读者；第一行是列标题
  export-readers 文件
                把读者导出为 CSV 文件，可以再导入
  book-fields 文件
                写出图书导入的字段对应表，可以修改后用于 --fields
  list-operators
                列出操作员
  add-operator 用户名、set-password 用户名
                增加操作员、设置密码；密码在终端上输入两次，不显示，不写在命令行上；
                不在终端上时从标准输入读一行
  remove-operator 用户名
                删除操作员；可以使用流通台的最后一个不能删除
  load-starter [文件夹]
                装入读者类型和流通参数、读者单位、节假日；不指定文件夹时装入自带的
  write-starter 文件夹
                写出自带的这些文件，可以修改后装入
  first-start   还没有连接设置时：建立演示数据库并设为连接

选项：
  --file 文件        内置数据库的文件；不指定时是用户自己的数据库
  --connection 文本  数据库的连接文本
  --from 文本        copy：来源服务器的连接文本
  --group 用户组     create、demo、scale、copy、restore：新的内置数据库由这个用户组的成员共用；
                     不指定时只有自己能读写
  --operator 用户名  create：第一个操作员，默认 admin
  --engine sqlserver --script
                     create：不建立，只输出 SQL Server 的脚本
  --seed 数          demo：随机种子；相同的种子和日期得到相同的数据
  --today 日期       demo、scale：数据以哪一天为今天，默认是今天
  --readers 数       scale：读者数，默认 10000
  --copies 数        scale：书册数，默认 200000
  --history 数       scale：借还历史的行数，默认 100000
  --loans 数         scale：在借的册数，默认 20000
  --yes              repair：修改数据；所有工作台须先退出
  --remove           guard：取消保护索引
  --dry-run          导入：只试运行，不写入
  --skip-refused     导入：跳过被拒绝的行，导入其余的；不指定时有一行被拒绝就都不写入
  --refused 文件     导入：把被拒绝的行和原因写入新文件，改正后可以再导入；已有的文件不覆盖
  --add-units        import-readers：建立还没有的读者单位
  --update           import-readers：已有的读者证号按文件修改，文件没有的列不变；其余的新增
  --format 格式      import-books：cnmarc、marc21 或 csv，不指定时自动识别；
                     export-books：cnmarc、marc21、csv（默认）或 tsv
  --encoding 编码    import-books：utf-8、gb18030 或 marc-8，不指定时自动识别；
                     export-books：utf-8（默认）或 gb18030
  --fields 文件      import-books：字段对应表，见 book-fields

返回值：0 成功，1 核对时发现问题或导入时有被拒绝的行，2 失败。
)";

Error fault(const QString& text)
{
    return Error(5, u"quilla-db"_s, text);
}

int numberOf(const QCommandLineParser& parser, const QString& option)
{
    bool ok = false;
    const int number = parser.value(option).toInt(&ok);
    if (!ok || number < 0) throw fault(u"--%1 需要一个不小于 0 的整数。"_s.arg(option));
    return number;
}

QDate dayOf(const QCommandLineParser& parser)
{
    if (!parser.isSet(u"today"_s)) return QDate::currentDate();
    const auto day = readDate(parser.value(u"today"_s));
    if (!day) throw fault(u"--today 需要一个日期(例如:2003-01-01)。"_s);
    return day->date;
}

/// The first option that is unknown or lacks its value.
QString wrongOption(const QCommandLineParser& parser, const QStringList& line)
{
    const QStringList unknown = parser.unknownOptionNames();
    return unknown.isEmpty() ? line.last() : unknown.first();
}

/// `copy` names both: a file to copy from and the connection to copy to, or by `--from` a server to copy from
/// and what to copy to.
Target targetOf(const QCommandLineParser& parser, const QString& command)
{
    const bool copies = command == u"copy"_s;
    if (parser.isSet(u"from"_s)) {
        if (!copies) throw fault(u"--from 只用于 copy。"_s);
        return connectionTarget(parser.value(u"from"_s));
    }
    if (parser.isSet(u"file"_s) && parser.isSet(u"connection"_s) && !copies)
        throw fault(u"--file 和 --connection 只能用一个。"_s);
    if (parser.isSet(u"connection"_s) && !copies) return connectionTarget(parser.value(u"connection"_s));
    return parser.isSet(u"file"_s) ? fileTarget(parser.value(u"file"_s)) : ownTarget();
}

/// A copy of all the data is nobody else's, so `backup` has no group.
QString groupOf(const QCommandLineParser& parser, const QString& command)
{
    static const QStringList takesGroup {u"create"_s, u"demo"_s, u"scale"_s, u"copy"_s, u"restore"_s};
    if (parser.isSet(u"group"_s) && !takesGroup.contains(command))
        throw fault(u"--group 只用于 %1。"_s.arg(takesGroup.join(u"、"_s)));
    return parser.value(u"group"_s);
}

Target copyTargetOf(const QCommandLineParser& parser)
{
    const bool intoFile = parser.isSet(u"from"_s) && parser.isSet(u"file"_s);
    if (intoFile == parser.isSet(u"connection"_s))
        throw fault(u"copy 需要 --connection，或 --from 和 --file。"_s);
    if (intoFile) return fileTarget(parser.value(u"file"_s));
    return connectionTarget(parser.value(u"connection"_s));
}

/// The other engines are created on a connection, where the text is translated.
bool wantsScript(const QCommandLineParser& parser)
{
    if (parser.isSet(u"script"_s) != (parser.value(u"engine"_s) == u"sqlserver"_s))
        throw fault(u"脚本只有 SQL Server 的：--engine sqlserver --script。"_s);
    return parser.isSet(u"script"_s);
}

void addOptions(QCommandLineParser& parser)
{
    const ScaleOptions scale;
    parser.addOptions({
        {u"help"_s, {}},
        {u"file"_s, {}, u"文件"_s},
        {u"connection"_s, {}, u"文本"_s},
        {u"from"_s, {}, u"文本"_s},
        {u"group"_s, {}, u"用户组"_s},
        {u"operator"_s, {}, u"用户名"_s, u"admin"_s},
        {u"engine"_s, {}, u"种类"_s},
        {u"script"_s, {}},
        {u"seed"_s, {}, u"数"_s, u"1"_s},
        {u"today"_s, {}, u"日期"_s},
        {u"readers"_s, {}, u"数"_s, QString::number(scale.readers)},
        {u"copies"_s, {}, u"数"_s, QString::number(scale.copies)},
        {u"history"_s, {}, u"数"_s, QString::number(scale.history)},
        {u"loans"_s, {}, u"数"_s, QString::number(scale.loans)},
        {u"yes"_s, {}},
        {u"remove"_s, {}},
        {u"dry-run"_s, {}},
        {u"skip-refused"_s, {}},
        {u"add-units"_s, {}},
        {u"refused"_s, {}, u"文件"_s},
        {u"update"_s, {}},
        {u"format"_s, {}, u"格式"_s},
        {u"encoding"_s, {}, u"编码"_s},
        {u"fields"_s, {}, u"文件"_s},
    });
}

const QStringList TakesName {u"add-operator"_s, u"set-password"_s, u"remove-operator"_s};
const QStringList TakesFile = TakesName
    + QStringList {u"backup"_s, u"import-readers"_s, u"export-readers"_s, u"import-books"_s,
        u"export-books"_s, u"book-fields"_s, u"write-starter"_s};

const QStringList MayTakeFile {u"load-starter"_s, u"restore"_s, u"backup-folder"_s};

QString argumentOf(const QString& command)
{
    if (TakesName.contains(command)) return u"用户名"_s;
    return command == u"write-starter" ? u"文件夹"_s : u"文件名"_s;
}

void readPositions(const QCommandLineParser& parser, Arguments& arguments)
{
    const QStringList positions = parser.positionalArguments();
    if (positions.isEmpty()) throw fault(u"缺少命令。用 --help 查看用法。"_s);
    arguments.command = positions[0];
    const bool takesFile = TakesFile.contains(arguments.command);
    const bool mayTakeFile = takesFile || MayTakeFile.contains(arguments.command);
    if (takesFile && positions.size() < 2)
        throw fault(u"%1 需要一个%2。"_s.arg(arguments.command, argumentOf(arguments.command)));
    if (positions.size() > (mayTakeFile ? 2 : 1))
        throw fault(u"%1 之后的参数太多。"_s.arg(arguments.command));
    if (positions.size() == 2) arguments.file = positions[1];
}

template <typename Choice>
Choice chosen(const QCommandLineParser& parser, const QString& option, const QHash<QString, Choice>& choices)
{
    const QString name = parser.value(option).toLower();
    if (!choices.contains(name))
        throw fault(u"--%1 没有这个取值：%2。用 --help 查看用法。"_s.arg(option, name));
    return choices[name];
}

/// A format or a code page that is not named is recognised from the file.
void readBookOptions(const QCommandLineParser& parser, Arguments& arguments)
{
    static const QHash<QString, BookFormat> formats {{QString(), BookFormat::Unknown},
        {u"cnmarc"_s, BookFormat::Cnmarc}, {u"marc21"_s, BookFormat::Marc21}, {u"csv"_s, BookFormat::Csv},
        {u"tsv"_s, BookFormat::Tsv}};
    static const QHash<QString, CodePage> codePages {{QString(), CodePage::Unknown},
        {u"utf-8"_s, CodePage::Utf8}, {u"gb18030"_s, CodePage::Gb18030}, {u"marc-8"_s, CodePage::Marc8}};
    const BookFormat format = chosen(parser, u"format"_s, formats);
    const CodePage codePage = chosen(parser, u"encoding"_s, codePages);
    arguments.books
        = {parser.isSet(u"dry-run"_s), parser.isSet(u"skip-refused"_s), format, codePage, BookFields()};
    arguments.bookExport = {format, codePage};
    arguments.fieldsFile = parser.value(u"fields"_s);
}

ScaleOptions scaleOf(const QCommandLineParser& parser, const QDate& today)
{
    ScaleOptions scale;
    scale.today = today;
    scale.readers = numberOf(parser, u"readers"_s);
    scale.copies = numberOf(parser, u"copies"_s);
    scale.history = numberOf(parser, u"history"_s);
    scale.loans = numberOf(parser, u"loans"_s);
    return scale;
}

} // namespace

QString helpText()
{
    return Help.toString();
}

Arguments readArguments(const QStringList& line)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(line))
        throw fault(u"命令行有误：%1。用 --help 查看用法。"_s.arg(wrongOption(parser, line)));
    Arguments arguments;
    if (parser.isSet(u"help"_s)) {
        arguments.command = u"help"_s;
        return arguments;
    }
    readPositions(parser, arguments);
    arguments.target = targetOf(parser, arguments.command);
    if (arguments.command == u"copy"_s) arguments.copyTarget = copyTargetOf(parser);
    arguments.target.group = arguments.copyTarget.group = groupOf(parser, arguments.command);
    arguments.script = wantsScript(parser);
    arguments.reallyDoes = parser.isSet(u"yes"_s);
    arguments.removes = parser.isSet(u"remove"_s);
    arguments.operatorName = parser.value(u"operator"_s);
    if (arguments.operatorName.trimmed().isEmpty()) throw fault(u"--operator 不能为空。"_s);
    arguments.demo.today = dayOf(parser);
    arguments.demo.seed = quint64(numberOf(parser, u"seed"_s));
    arguments.scale = scaleOf(parser, arguments.demo.today);
    arguments.readers = {parser.isSet(u"dry-run"_s), parser.isSet(u"skip-refused"_s),
        parser.isSet(u"add-units"_s), parser.isSet(u"update"_s)};
    readBookOptions(parser, arguments);
    arguments.refusedFile = parser.value(u"refused"_s);
    return arguments;
}

} // namespace quilla
