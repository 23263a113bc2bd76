#pragma once

#include "backup/backup_ops.h"
#include "platform/ui/form/text_box.h"
#include "setup/setup_page.h"

#include <QListWidget>
#include <QPushButton>

namespace quilla {

/// The backups of the library that the desk opens: one to be restored, and where the next ones go.
class BackupPage final : public SetupPage {
    Q_OBJECT

public:
    BackupPage(SetupPlace& place, SetupPlan& plan);
    void open() override;
    void goOn() override;

    QListWidget List; ///< the first line restores none
    TextBox txtFolder;
    QPushButton cmdBrowse {QStringLiteral("浏览(&L)…")};

private:
    void fillList(const QString& library);
    void browse();
    /// What is to be changed first; the box is 0 for the list, 1 for the folder.
    std::optional<Refusal> refusal() const;
    bool changesFolder() const { return txtFolder.text() != m_folder; }

    std::optional<QString> m_library; ///< nullopt on a server
    QString m_folder; ///< as it is set now
    std::vector<Backup> m_backups;
};

} // namespace quilla
