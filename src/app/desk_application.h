#pragma once

#include "frame/odbc_form.h"
#include "frame/workplace.h"
#include "output/export_desk.h"
#include "platform/core/desktop_sounds.h"
#include "platform/core/settings.h"
#include "platform/db/pooled_factory.h"
#include "platform/report/form_print.h"
#include "platform/report/report_previews.h"

#include <QCoreApplication>

namespace quilla {

class DailyBackup;
class LtMainFrm;

/// The program put together: settings, database and message boxes, the session on them, the screens.
class DeskApplication {
public:
    /// `prompt` speaks to the operator.
    explicit DeskApplication(Prompt& prompt);

    Session& session() { return m_session; }
    const Outputs& outputs() const { return m_outputs; }
    ReportPreviews& reports() { return m_reports; }

    /// Start procedure, login, main window; the exit status.
    int run();

private:
    /// Tells why the backup before failed, and makes the day's.
    void keepBackup(DailyBackup& backup, LtMainFrm& window);

    FileSettings m_settings;
    SystemClock m_clock;
    sql::Schema m_schema;
    PooledFactory m_connections;
    DialogConnectionEditor m_editor;
    Session m_session;
    ReportPreviews m_reports;
    DesktopSpreadsheets m_spreadsheets;
    DefaultPrinter m_formPrinter;
    DesktopSounds m_sounds;
    Outputs m_outputs {m_reports, m_spreadsheets, m_formPrinter, m_sounds};
};

} // namespace quilla
