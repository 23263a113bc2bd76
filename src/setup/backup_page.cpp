#include "setup/backup_page.h"

#include "platform/core/dates.h"
#include "platform/ui/form/file_dialog.h"
#include "setup/stored_connection_ops.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

namespace quilla {

namespace {

/// "2026-11-25  星期三  4.6 MB"
QString lineFor(const Backup& backup)
{
    const QLocale chinese(QLocale::Chinese, QLocale::China);
    return u"%1  %2  %3"_s.arg(isoDate(backup.day), chinese.dayName(backup.day.dayOfWeek()),
        QLocale::c().formattedDataSize(QFileInfo(backup.file).size(), 1, QLocale::DataSizeTraditionalFormat));
}

} // namespace

BackupPage::BackupPage(SetupPlace& place, SetupPlan& plan)
    : SetupPage(u"备份"_s, place, plan)
{
    QUILLA_NAMES(List, txtFolder, cmdBrowse);
    List.setAccessibleName(u"恢复哪一天的备份"_s);
    build(*this,
        column(note(u"恢复哪一天的备份？现在的数据库改名以后保留。"_s), Piece(List).grow(), room(8),
            fields(1, {{u"每天的备份放在(&D)："_s, row(Piece(txtFolder).grow(), cmdBrowse)}}),
            note(u"保留最近 7 天、4 周、12 个月的。最好放在另一个磁盘上，这个磁盘坏了还有备份。"_s)));
    connect(&List, &QListWidget::itemActivated, this, [this] { goOn(); });
    onEnter(txtFolder, [this] { goOn(); });
    onClick(cmdBrowse, [this] { browse(); });
}

void BackupPage::open()
{
    m_library = storedFile(m_place.settings);
    m_folder = m_library ? backupFolder(m_place.settings, *m_library) : QString();
    txtFolder.setText(m_plan.backupFolder.isEmpty() ? m_folder : m_plan.backupFolder);
    fillList(m_library.value_or(QString()));
    List.setFocus();
}

void BackupPage::fillList(const QString& library)
{
    const int row = List.currentRow();
    m_backups = library.isEmpty() ? std::vector<Backup>() : backupsOf(m_place.settings, library);
    List.clear();
    List.addItem(m_backups.empty() ? u"还没有备份"_s : u"不恢复"_s);
    for (const Backup& backup : m_backups)
        List.addItem(lineFor(backup));
    List.setCurrentRow(row > 0 && row < List.count() ? row : 0);
}

void BackupPage::browse()
{
    const QString folder = FileDialog(this, u"备份的文件夹"_s, {}).openFolder(txtFolder.text());
    if (!folder.isEmpty()) txtFolder.setText(folder);
    txtFolder.setFocus();
}

std::optional<Refusal> BackupPage::refusal() const
{
    if (!m_library)
        return Refusal {.text = u"流通台打开的是数据库服务器，它的备份由管理员在服务器上做。"_s, .box = 0};
    if (List.currentRow() == 0 && !changesFolder())
        return Refusal {.text = u"请选择要恢复的备份，或者换一个文件夹。"_s, .box = 0};
    if (changesFolder() && QDir::isRelativePath(txtFolder.text()))
        return Refusal {.text = u"请填写文件夹完整的位置，以“/”开头，或者按“浏览”选择。"_s, .box = 1};
    return {};
}

void BackupPage::goOn()
{
    if (const auto refused = refusal()) return tellFault(*refused, {&List, &txtFolder});
    m_plan.target = fileTarget(*m_library);
    m_plan.backup = List.currentRow() > 0 ? m_backups[std::size_t(List.currentRow() - 1)].file : QString();
    m_plan.backupFolder = changesFolder() ? txtFolder.text() : QString();
    Q_EMIT passed();
}

} // namespace quilla
