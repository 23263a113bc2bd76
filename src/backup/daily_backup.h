#pragma once

#include "backup/backup_ops.h"
#include "platform/core/dates.h"

#include <QObject>

#include <memory>

class QThread;

namespace quilla {

/// Makes the day's backup beside the desk's own work, in a thread that reads the file by a connection of its
/// own. The outcome is stored in the settings, so that a failure is also reported at the next login.
class DailyBackup final : public QObject {
    Q_OBJECT

public:
    /// Both must outlive the backup.
    DailyBackup(SettingsStore& settings, const Clock& clock);
    /// Waits for a backup that is being made.
    ~DailyBackup() override;

    /// Starts the backup when one is due; returns at once.
    void start(const QString& connectionText);

    /// What is to be told after `start`: why the backup before failed and what to do; empty when it did not.
    const QString& failureBefore() const { return m_failureBefore; }

Q_SIGNALS:
    /// Why the backup failed and what to do; empty when it was made.
    void finished(const QString& failure);

private:
    void end();
    void note(const QString& failure);

    SettingsStore& m_settings;
    const Clock& m_clock;
    QString m_failureBefore;
    QString m_failure; ///< the thread's until it has ended
    std::unique_ptr<QThread> m_thread;
};

} // namespace quilla
