#pragma once

#include "setup/backup_page.h"
#include "setup/files_page.h"
#include "setup/last_pages.h"
#include "setup/library_page.h"
#include "setup/open_page.h"
#include "setup/server_page.h"
#include "setup/welcome_page.h"

#include <QDialog>
#include <QPushButton>
#include <QStackedWidget>

namespace quilla {

/// The set-up before the first login, page by page. Nothing is stored or made before the last page; leaving
/// before that, also by Esc, asks nothing. The result is `Accepted` when the desk has a library to open.
class SetupFrm final : public QDialog {
    Q_OBJECT

public:
    /// What `place` refers to must outlive the form.
    explicit SetupFrm(const SetupPlace& place);

    /// Whether the operator wants the lending desk to come up now.
    bool startsDesk() const { return m_startsDesk; }
    SetupPage& page() const { return *m_path[m_at]; }
    /// A page out of its turn, for a picture.
    void showPage(SetupPage& page);
    /// Stops work that is under way; else leaves.
    void reject() override;

    QLabel labTitle;
    QStackedWidget Pages;
    QPushButton cmdBack {QStringLiteral("上一步(&B)")};
    QPushButton cmdNext;
    QPushButton cmdCancel;

private:
    SetupPlace m_place;
    SetupPlan m_plan;

public:
    WelcomePage Welcome {m_place, m_plan};
    LibraryPage Library {m_place, m_plan};
    FilesPage Files {m_place, m_plan};
    OpenPage Open {m_place, m_plan};
    ServerPage Server {m_place, m_plan};
    BackupPage Backups {m_place, m_plan};
    ConfirmPage Confirm {m_place, m_plan};
    RunPage Run {m_place, m_plan};

private:
    void layOut();
    void layPath();
    void goOn();
    void goBack();
    void finish();
    void show(std::size_t at);
    void showButtons();

    std::vector<SetupPage*> m_path {&Welcome}; ///< the pages of the way that was chosen
    std::size_t m_at = 0;
    bool m_startsDesk = false;
};

} // namespace quilla
