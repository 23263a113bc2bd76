#include "setup/setup_ops.h"

#include "backup/backup_ops.h"
#include "platform/core/text.h"
#include "platform/db/connection_text.h"
#include "platform/db/embedded.h"
#include "setup/demo_ops.h"
#include "setup/stored_connection_ops.h"

namespace quilla {

namespace {

QString placeOf(const SetupPlan& plan)
{
    return placeInWords(plan.opened().connectionText);
}

QStringList plannedImports(const NewLibrary& library)
{
    QStringList steps;
    if (!library.booksFile.isEmpty()) steps.append(u"导入图书："_s + library.booksFile);
    if (!library.readersFile.isEmpty()) steps.append(u"导入读者："_s + library.readersFile);
    return steps;
}

QStringList plannedLibrary(const SetupPlan& plan)
{
    const NewLibrary& library = plan.library;
    QStringList steps {u"建立图书馆“%1”：%2"_s.arg(library.name, placeOf(plan)),
        u"增加操作员“%1”，可以使用流通台"_s.arg(library.operatorName)};
    if (library.starter) steps.append(u"装入读者类型和流通参数、读者单位、节假日，以后可以修改"_s);
    if (library.guards) steps.append(u"加保护索引：一册书只能有一条借书记录，读者证号和条形码不能重复"_s);
    return steps + plannedImports(library);
}

QStringList plannedUpgrade(const SetupPlan& plan)
{
    if (!plan.found.earlier) return {};
    if (plan.target.file)
        return {u"升级图书馆：先在同一文件夹里保存核对过的副本。升级时不能有工作台在使用它"_s};
    return {u"升级图书馆：请先让管理员备份。升级时不能有工作台在使用它"_s};
}

void makeOrUpgrade(const SetupPlan& plan, StagedProgress& progress, QStringList& lines)
{
    progress.beginStage(plan.found.earlier ? u"正在升级图书馆……"_s : u"正在建立图书馆……"_s);
    if (plan.way == SetupWay::Demo) return makeDemo(plan.target);
    if (plan.makesLibrary()) return beginLibrary(plan.library);
    if (plan.target.file) tightenEmbedded(*plan.target.file);
    if (!plan.found.earlier) return;
    if (!plan.target.file) return upgradeServerLibrary(plan.target.connectionText);
    const QString copy = upgradeLibraryFile(*plan.target.file, progress);
    if (!copy.isEmpty()) lines.append(u"升级以前的数据库保存在："_s + copy);
}

void storeOrTell(const SetupPlan& plan, SettingsStore& settings)
{
    try {
        storeConnection(settings, plan.opened());
    } catch (const Error& error) {
        throw Error(error.number, error.source,
            u"%1 可以使用，但是没有保存连接：\n%2\n处理好以后，请再运行一次设置，选择打开它。"_s.arg(
                placeOf(plan), error.text));
    }
}

void addOutcome(const ImportOutcome& import, SetupOutcome& outcome)
{
    outcome.lines.append(import.text);
    outcome.whole = outcome.whole && import.whole;
}

void importFiles(const NewLibrary& library, StagedProgress& progress, SetupOutcome& outcome)
{
    bool stopped = false;
    if (!library.booksFile.isEmpty()) {
        progress.beginStage(u"正在导入图书……"_s);
        const ImportOutcome books = importFirstBooks(library, progress);
        addOutcome(books, outcome);
        stopped = books.stopped;
    }
    if (library.readersFile.isEmpty()) return;
    if (stopped)
        return outcome.lines.append(u"也没有导入读者。以后可以运行：quilla-db import-readers 文件"_s);
    progress.beginStage(u"正在导入读者……"_s);
    addOutcome(importFirstReaders(library), outcome);
}

QString openedLine(const SetupPlan& plan)
{
    if (plan.way == SetupWay::Demo)
        return u"演示图书馆已经准备好。登录流通台时，用户名填 %1，密码填 %2。"_s.arg(
            DemoOperator, DemoPassword);
    if (!plan.makesLibrary()) return u"流通台以后打开这个图书馆。请用它的操作员和密码登录。"_s;
    return u"图书馆“%1”已经建立。请用操作员“%2”和刚才设置的密码登录流通台。"_s.arg(
        plan.library.name, plan.library.operatorName);
}

/// `quilla-db` works on the user's own file unless another one is named, and each desk has a login of its
/// own.
void addHints(const SetupPlan& plan, QStringList& lines)
{
    const auto file = plan.opened().file;
    if (plan.emptyServer)
        lines.append(
            u"别的工作台也运行一次设置，选择“连接数据库服务器”。它们的登录名要有读写全部表的权限，quilla-db 命令要加 --connection；做法都在管理手册里（/usr/share/doc/quilla/docs/administration.zh.md）。"_s);
    if (plan.way != SetupWay::Demo && file && *file != embeddedDatabaseFile())
        lines.append(u"以后对它备份、导入等，quilla-db 命令要加：--file %1"_s.arg(*file));
}

QStringList plannedBackups(const SetupPlan& plan)
{
    QStringList steps;
    if (!plan.backup.isEmpty())
        steps << u"恢复备份："_s + QDir::toNativeSeparators(plan.backup)
              << u"换下的数据库改名以后留在同一文件夹里：%1"_s.arg(placeOf(plan))
              << u"备份以后的借还不在备份里，恢复时不能有工作台在使用数据库"_s;
    if (!plan.backupFolder.isEmpty())
        steps << u"每天的备份以后保存在："_s + QDir::toNativeSeparators(plan.backupFolder);
    return steps;
}

SetupOutcome carryOutBackups(const SetupPlan& plan, SettingsStore& settings, StagedProgress& progress)
{
    SetupOutcome outcome;
    if (!plan.backupFolder.isEmpty()) {
        setBackupFolder(settings, plan.backupFolder);
        outcome.lines.append(u"每天的备份以后保存在："_s
            + QDir::toNativeSeparators(backupFolder(settings, *plan.target.file)));
    }
    if (plan.backup.isEmpty()) return outcome;
    progress.beginStage(u"正在恢复备份……"_s);
    const QString kept = restoreBackup(plan.backup, *plan.target.file);
    outcome.lines.append(u"已经恢复备份："_s + plan.backup);
    if (!kept.isEmpty())
        outcome.lines.append(u"换下的数据库保存在：%1\n确认恢复无误以后可以删除。"_s.arg(kept));
    return outcome;
}

} // namespace

bool SetupPlan::makesLibrary() const
{
    return way == SetupWay::NewLibrary || (way == SetupWay::JoinServer && emptyServer);
}

QStringList plannedSteps(const SetupPlan& plan, const SettingsStore& settings)
{
    if (plan.way == SetupWay::Backups) return plannedBackups(plan);
    QStringList steps;
    if (plan.makesLibrary())
        steps = plannedLibrary(plan);
    else if (plan.way == SetupWay::Demo)
        steps
            = {(plan.target.exists() ? u"使用已有的演示图书馆："_s : u"建立演示图书馆："_s) + placeOf(plan)};
    else
        steps = QStringList {u"打开："_s + placeOf(plan), plan.found.text()} + plannedUpgrade(plan);
    const QString before = storedPlace(settings);
    const bool changes = !before.isEmpty() && before != placeOf(plan);
    steps.append(changes ? u"流通台以后打开它，不再打开："_s + before : u"流通台以后打开它"_s);
    return steps;
}

SetupOutcome carryOut(const SetupPlan& plan, SettingsStore& settings, StagedProgress& progress)
{
    if (plan.way == SetupWay::Backups) return carryOutBackups(plan, settings, progress);
    SetupOutcome outcome;
    makeOrUpgrade(plan, progress, outcome.lines);
    storeOrTell(plan, settings);
    outcome.lines.prepend(openedLine(plan));
    if (plan.makesLibrary()) importFiles(plan.library, progress, outcome);
    addHints(plan, outcome.lines);
    return outcome;
}

} // namespace quilla
