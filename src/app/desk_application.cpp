#include "app/desk_application.h"

#include "app/screen_register.h"
#include "backup/daily_backup.h"
#include "database/library_schema.h"
#include "database/procedures.h"
#include "desk/scan_log.h"
#include "frame/help_key.h"
#include "frame/login_form.h"
#include "frame/main_form.h"
#include "frame/platform_panels.h"
#include "frame/start_ops.h"
#include "output/report_designs.h"
#include "platform/db/connection_text.h"

#include <QDir>
#include <QFileInfo>
#include <QScreen>

namespace quilla {

DeskApplication::DeskApplication(Prompt& prompt)
    : m_schema(librarySchema())
    , m_connections(m_schema, m_clock)
    , m_session {m_settings, prompt, m_clock, m_connections, m_editor}
    , m_reports(reportDesigns(), prompt, m_clock, [this] { return chosenPrinter(m_settings); })
    , m_formPrinter(
          [this] { return chosenPrinter(m_settings); }, [this] { return isChosenUpright(m_settings); })
    , m_sounds([this] { return soundsAreOn(m_settings); })
{
    m_editor.serve(m_session);
    installProcedures(m_connections);
}

namespace {

/// The window at its own size, or as much of it as a small screen has room for.
void showWithinScreen(QWidget& window)
{
    const QSize room = window.screen()->availableSize();
    const bool fits = window.width() < room.width() && window.height() < room.height();
    window.resize(window.size().boundedTo(room));
    fits ? window.show() : window.showMaximized();
}

} // namespace

void DeskApplication::keepBackup(DailyBackup& backup, LtMainFrm& window)
{
    QObject::connect(&backup, &DailyBackup::finished, &window, &LtMainFrm::tellBackup);
    backup.start(m_session.ConnectionText);
    window.tellBackup(backup.failureBefore());
    if (!backup.failureBefore().isEmpty()) m_session.prompt.warn(backup.failureBefore(), OperationTitle);
}

int DeskApplication::run()
{
    if (!prepareSettings(m_settings, m_session.prompt)) return 1;
    // Destroyed last, so that a backup still finishes after the windows have closed.
    DailyBackup backup(m_settings, m_clock);
    LockFileGuard guard(QFileInfo(embeddedDatabaseFile()).path());
    if (!prepareStart(m_session, guard)) return 0;
    m_session.scans
        = std::make_shared<ScanLog>(QFileInfo(embeddedDatabaseFile()).dir().filePath(u"desk-failures.log"_s));

    const HelpKey help(m_session, m_formPrinter);
    LtLoginFrm login(m_session);
    if (login.exec() != QDialog::Accepted) return 0;

    LtMainFrm window(m_outputs, m_session, allScreens(), allActions());
    showWithinScreen(window);
    keepBackup(backup, window);
    QMetaObject::invokeMethod(&window, &LtMainFrm::openUp, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

} // namespace quilla
