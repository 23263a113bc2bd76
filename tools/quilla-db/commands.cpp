#include "quilla-db/commands.h"

#include "database/check.h"
#include "database/copy_library.h"
#include "database/library_schema.h"
#include "platform/core/text.h"
#include "platform/db/embedded.h"
#include "platform/db/pooled_factory.h"
#include "quilla-db/first_start.h"
#include "quilla-db/import_command.h"

namespace quilla {

namespace {

using Fill = std::function<void(Connection&)>;

Error fault(const QString& text)
{
    return Error(5, u"quilla-db"_s, text);
}

void fillOpened(const Target& target, const sql::Schema& schema, const Fill& fill)
{
    const SystemClock clock;
    PooledFactory factory(schema, clock);
    Connection connection = factory.open(target.connectionText);
    connection.begin(OnFailure::EndTransaction);
    fill(connection);
    connection.commit();
}

/// A file that is not there yet, or an empty base of a server, with all that `fill` makes or nothing.
void makeNew(const Target& target, const sql::Schema& schema, const Fill& fill)
{
    if (target.file)
        createEmbedded(*target.file, schema, SystemClock(), fill, target.group);
    else
        fillOpened(target, schema, fill);
}

/// A new database with its first rows and what `fill` adds.
void makeLibrary(const Arguments& arguments, const Fill& fill)
{
    const Fill whole = [&](Connection& connection) {
        createLibrary(connection);
        insertInitialRows(connection, arguments.operatorName);
        if (fill) fill(connection);
    };
    makeNew(arguments.target, librarySchema(), whole);
}

/// Data for an empty library; a file that is not there is created with it.
void load(const Arguments& arguments, const Fill& fill)
{
    if (arguments.target.file && !arguments.target.exists())
        makeLibrary(arguments, fill);
    else
        fillOpened(arguments.target, librarySchema(), fill);
}

Outcome help(const Arguments&, QTextStream& out)
{
    out << helpText();
    return Outcome::Done;
}

Outcome create(const Arguments& arguments, QTextStream& out)
{
    if (arguments.script) {
        out << libraryScript(arguments.operatorName);
        return Outcome::Done;
    }
    makeLibrary(arguments, {});
    out << u"已建立数据库："_s << arguments.target.name() << u"\n操作员 "_s << arguments.operatorName
        << u" 还没有密码，请登录后立即修改。\n"_s;
    return Outcome::Done;
}

Outcome loadDemo(const Arguments& arguments, QTextStream& out)
{
    load(arguments, [&](Connection& connection) { fillDemoLibrary(connection, arguments.demo); });
    out << u"已装入演示数据："_s << arguments.target.name() << u"\n操作员 "_s << DemoOperator << u"，密码 "_s
        << DemoPassword << u"\n"_s;
    return Outcome::Done;
}

Outcome loadScale(const Arguments& arguments, QTextStream& out)
{
    load(arguments, [&](Connection& connection) { fillScaleData(connection, arguments.scale); });
    out << u"已装入测速数据："_s << arguments.target.name() << u"\n"_s;
    return Outcome::Done;
}

void tell(QTextStream& out, const QString& what, const QStringList& rows)
{
    out << what << u"（"_s << rows.size() << u"）\n"_s;
    for (const QString& row : rows)
        out << u"    "_s << row << u"\n"_s;
}

Outcome check(const Arguments& arguments, QTextStream& out)
{
    bool sound = true;
    if (arguments.target.file) {
        const QStringList faults = checkEmbedded(*arguments.target.file);
        if (!faults.isEmpty()) tell(out, u"数据库文件已损坏"_s, faults);
        sound = faults.isEmpty();
    }
    const SystemClock clock;
    const sql::Schema schema = librarySchema();
    PooledFactory factory(schema, clock);
    Connection connection = factory.open(arguments.target.connectionText);
    const std::vector<Finding> findings = checkLibrary(connection);
    for (const Finding& finding : findings)
        tell(out, finding.what, finding.rows);
    sound = sound && findings.empty();
    if (sound) out << u"没有发现问题："_s << arguments.target.name() << u"\n"_s;
    return sound ? Outcome::Done : Outcome::Findings;
}

/// All of it or nothing; the source stands still meanwhile.
Outcome copy(const Arguments& arguments, QTextStream& out)
{
    const SystemClock clock;
    const sql::Schema schema = librarySchema();
    PooledFactory factory(schema, clock);
    Connection from = factory.open(arguments.target.connectionText);
    from.begin();
    const auto told = [&](const QString& table, qint64 rows) {
        out << table << u": "_s << rows << u"\n"_s;
        out.flush();
    };
    makeNew(arguments.copyTarget, schema, [&](Connection& to) { copyLibrary(from, to, told); });
    out << u"已全部复制到："_s << arguments.copyTarget.name() << u"\n"_s;
    return Outcome::Done;
}

const QString& embeddedFile(const Arguments& arguments)
{
    if (!arguments.target.file) throw fault(u"数据库服务器请用它自己的备份工具。"_s);
    return *arguments.target.file;
}

Outcome backup(const Arguments& arguments, QTextStream& out)
{
    backupEmbedded(embeddedFile(arguments), arguments.file, librarySchema());
    out << u"已备份到："_s << arguments.file << u"\n"_s;
    return Outcome::Done;
}

Outcome restore(const Arguments& arguments, QTextStream& out)
{
    backupEmbedded(arguments.file, embeddedFile(arguments), librarySchema(), arguments.target.group);
    out << u"已恢复："_s << arguments.target.name() << u"\n"_s;
    return Outcome::Done;
}

/// For whoever starts the program without having set anything up. Touches nothing that is there already.
Outcome firstStart(const Arguments& arguments, QTextStream& out)
{
    FileSettings settings;
    if (hasStoredText(settings)) return Outcome::Done;
    if (!arguments.target.exists()) loadDemo(arguments, out);
    storeOwnDatabase(settings);
    out << u"已设置连接：内置数据库\n"_s;
    return Outcome::Done;
}

} // namespace

Outcome runCommand(const Arguments& arguments, QTextStream& out)
{
    static constexpr struct {
        QStringView name;
        Outcome (*run)(const Arguments&, QTextStream&);
    } Commands[] = {{u"help", help}, {u"create", create}, {u"demo", loadDemo}, {u"scale", loadScale},
        {u"check", check}, {u"copy", copy}, {u"backup", backup}, {u"restore", restore},
        {u"import-readers", importReadersOf}, {u"first-start", firstStart}};
    for (const auto& command : Commands)
        if (command.name == arguments.command) return command.run(arguments, out);
    throw fault(u"没有这个命令：%1。用 --help 查看用法。"_s.arg(arguments.command));
}

} // namespace quilla
