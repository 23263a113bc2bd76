#include "quilla-db/commands.h"

#include "database/check.h"
#include "database/copy_library.h"
#include "database/new_library.h"
#include "database/opened_library.h"
#include "frame/start_ops.h"
#include "platform/core/text.h"
#include "platform/db/embedded.h"
#include "quilla-db/backup_commands.h"
#include "quilla-db/book_commands.h"
#include "quilla-db/import_command.h"
#include "quilla-db/operator_commands.h"
#include "quilla-db/starter_commands.h"
#include "quilla-db/upgrade_command.h"
#include "setup/stored_connection_ops.h"

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(5, u"quilla-db"_s, text);
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
    makeLibrary(arguments.target, arguments.operatorName);
    out << u"已建立数据库："_s << arguments.target.name() << u"\n操作员 "_s << arguments.operatorName
        << u" 还没有密码，请登录后立即修改。\n"_s;
    return Outcome::Done;
}

Outcome loadDemo(const Arguments& arguments, QTextStream& out)
{
    loadLibrary(arguments.target, arguments.operatorName,
        [&](Connection& connection) { fillDemoLibrary(connection, arguments.demo); });
    out << u"已装入演示数据："_s << arguments.target.name() << u"\n操作员 "_s << DemoOperator << u"，密码 "_s
        << DemoPassword << u"\n"_s;
    return Outcome::Done;
}

Outcome loadScale(const Arguments& arguments, QTextStream& out)
{
    loadLibrary(arguments.target, arguments.operatorName,
        [&](Connection& connection) { fillScaleData(connection, arguments.scale); });
    out << u"已装入测速数据："_s << arguments.target.name() << u"\n"_s;
    return Outcome::Done;
}

void tell(QTextStream& out, const QString& what, const QStringList& rows)
{
    out << what << u"（"_s << rows.size() << u"）\n"_s;
    for (const QString& row : rows)
        out << u"    "_s << row << u"\n"_s;
}

void tell(QTextStream& out, const std::vector<Finding>& findings)
{
    for (const Finding& finding : findings)
        tell(out, finding.what, finding.texts());
}

/// Lists the damage of an embedded file. False when there is any.
bool isWhole(const Arguments& arguments, QTextStream& out)
{
    if (!arguments.target.file) return true;
    const QStringList faults = checkEmbedded(*arguments.target.file);
    if (!faults.isEmpty()) tell(out, u"数据库文件已损坏"_s, faults);
    return faults.isEmpty();
}

/// Also of a file that an earlier program made.
std::vector<Finding> findingsIn(const Target& target)
{
    if (!target.file) {
        OpenedLibrary place(target);
        return checkLibrary(place.connection);
    }
    std::vector<Finding> findings;
    readEmbedded(*target.file, librarySchema(), SystemClock(),
        [&](Connection& connection) { findings = checkLibrary(connection); });
    return findings;
}

Outcome check(const Arguments& arguments, QTextStream& out)
{
    const bool whole = isWhole(arguments, out);
    const std::vector<Finding> findings = findingsIn(arguments.target);
    tell(out, findings);
    if (!whole) out << u"请用 restore 恢复完好的备份。\n"_s;
    if (!findings.empty()) out << u"用 repair 可以看到哪些能自动改正。\n"_s;
    if (!whole || !findings.empty()) return Outcome::Findings;
    out << u"没有发现问题："_s << arguments.target.name() << u"\n"_s;
    return Outcome::Done;
}

/// What a repair would change, and what it leaves to a person. The number of changes.
qsizetype tellRepairs(QTextStream& out, const std::vector<Finding>& findings)
{
    qsizetype mends = 0;
    for (const Finding& finding : findings) {
        out << finding.what << u"（"_s << finding.rows.size() << u"）\n"_s;
        for (const FoundRow& row : finding.rows) {
            out << u"    "_s << row.text << u" → "_s << (row.mend ? row.mend->becomes : u"需要人工处理"_s)
                << u"\n"_s;
            mends += row.mend ? 1 : 0;
        }
    }
    return mends;
}

Outcome repair(const Arguments& arguments, QTextStream& out)
{
    if (!isWhole(arguments, out)) return Outcome::Findings;
    OpenedLibrary place(arguments.target);
    const std::vector<Finding> findings = checkLibrary(place.connection);
    const qsizetype mends = tellRepairs(out, findings);
    if (findings.empty()) out << u"没有发现问题，不需要修复。\n"_s;
    if (mends == 0) return findings.empty() ? Outcome::Done : Outcome::Findings;
    if (!arguments.reallyDoes) {
        out << u"以上 %1 处可以自动修复，还没有修改任何数据。请让所有工作台退出，再加 --yes 运行一次。\n"_s
                   .arg(mends);
        return Outcome::Findings;
    }
    repairLibrary(place.connection, findings);
    out << u"已修复 %1 处。\n"_s.arg(mends);
    return checkLibrary(place.connection).empty() ? Outcome::Done : Outcome::Findings;
}

Outcome guard(const Arguments& arguments, QTextStream& out)
{
    OpenedLibrary place(arguments.target);
    if (arguments.removes) {
        unguardLibrary(place.connection);
        out << u"已取消保护索引。\n"_s;
        return Outcome::Done;
    }
    const std::vector<Finding> findings = checkLibrary(place.connection);
    if (!findings.empty()) {
        tell(out, findings);
        out << u"数据有以上问题，没有加保护索引。请先用 repair 或人工改正。\n"_s;
        return Outcome::Findings;
    }
    guardLibrary(place.connection);
    out << u"已加保护索引：一册书只能有一条借书记录，读者证号和条形码不能重复。\n"_s;
    return Outcome::Done;
}

/// All of it or nothing; the source stands still meanwhile.
Outcome copy(const Arguments& arguments, QTextStream& out)
{
    OpenedLibrary place(arguments.target);
    Connection& from = place.connection;
    from.begin();
    const auto copied = [&](const QString& table, qint64 rows) {
        out << table << u": "_s << rows << u"\n"_s;
        out.flush();
    };
    makeNew(arguments.copyTarget, place.schema, [&](Connection& to) { copyLibrary(from, to, copied); });
    out << u"已全部复制到："_s << arguments.copyTarget.name() << u"\n"_s;
    return Outcome::Done;
}

/// For whoever starts the program without having set anything up. Of what is there already only the user's
/// own library of an earlier program is touched.
Outcome firstStart(const Arguments& arguments, QTextStream& out)
{
    const Target& own = arguments.target;
    if (own.exists() && isEarlierLibrary(*own.file)) upgrade(arguments, out);
    FileSettings settings;
    const QString mended = mendSettings(settings);
    if (!mended.isEmpty()) out << mended << u'\n';
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
        {u"check", check}, {u"repair", repair}, {u"guard", guard}, {u"copy", copy}, {u"backup", backupTo},
        {u"restore", restoreFrom}, {u"backup-folder", backupFolderOf}, {u"upgrade", upgrade},
        {u"import-readers", importReadersOf}, {u"export-readers", exportReadersOf},
        {u"import-books", importBooksOf}, {u"export-books", exportBooksOf}, {u"book-fields", writeBookFields},
        {u"list-operators", listOperatorsOf}, {u"add-operator", addOperatorOf},
        {u"set-password", setPasswordOf}, {u"remove-operator", removeOperatorOf},
        {u"load-starter", loadStarterOf}, {u"write-starter", writeStarterOf}, {u"first-start", firstStart}};
    for (const auto& command : Commands)
        if (command.name == arguments.command) return command.run(arguments, out);
    throw fault(u"没有这个命令：%1。用 --help 查看用法。"_s.arg(arguments.command));
}

} // namespace quilla
