#include "backup/daily_backup.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QThread>

namespace quilla {

namespace {

QString failureText(const QDate& day, const QString& why)
{
    return u"%1 的备份没有成功。\n%2\n\n程序下次启动时再备份。要换一个备份文件夹，请退出程序，打开“青简台设置”"
           "（quilla-setup），选“恢复备份，或者换备份的文件夹”。"_s.arg(isoDate(day), why.trimmed());
}

/// Why it failed; empty when it did not.
QString outcomeOf(const BackupJob& job)
{
    try {
        makeBackup(job);
        return {};
    } catch (const Error& error) {
        return failureText(job.today, error.text);
    } catch (const std::exception& error) {
        return failureText(job.today, QString::fromLocal8Bit(error.what()));
    }
}

} // namespace

DailyBackup::DailyBackup(SettingsStore& settings, const Clock& clock)
    : m_settings(settings)
    , m_clock(clock)
    , m_failureBefore(backupFailure(settings))
{
}

DailyBackup::~DailyBackup()
{
    if (!m_thread) return;
    if (m_thread->isRunning()) m_thread->setPriority(QThread::NormalPriority); // nobody works here any more
    m_thread->wait();
    end();
}

void DailyBackup::start(const QString& connectionText)
{
    const auto job = dueBackup(m_settings, connectionText, m_clock.now().date);
    if (!job) return note({});
    if (isBeingMade(*job)) return m_failureBefore.clear(); // whoever makes it notes how it ended
    // Stands until the backup is made: a machine that is switched off meanwhile leaves it for the next login.
    note(failureText(job->today, u"备份没有做完，程序就结束了。"_s));
    m_thread.reset(QThread::create([this, job = *job] { m_failure = outcomeOf(job); }));
    connect(m_thread.get(), &QThread::finished, this, &DailyBackup::end);
    m_thread->start(QThread::IdlePriority);
}

void DailyBackup::end()
{
    note(m_failure);
    Q_EMIT finished(m_failure);
}

/// The backup itself does not depend on whether its end can be noted.
void DailyBackup::note(const QString& failure)
{
    try {
        noteBackupFailure(m_settings, failure);
    } catch (const Error&) {
        return;
    }
}

} // namespace quilla
