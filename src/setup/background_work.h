#pragma once

#include "setup/setup_ops.h"

#include <QObject>

#include <atomic>
#include <memory>

class QThread;

namespace quilla {

/// One piece of work in a thread of its own, so that the window answers meanwhile.
class BackgroundWork final : public QObject {
    Q_OBJECT

public:
    using Work = std::function<void(StagedProgress&)>;

    /// What `work` throws is told by `ended`. It must not touch what this thread touches before `ended`.
    BackgroundWork(Work work, QObject* parent);
    /// Asks for the end and waits for it.
    ~BackgroundWork() override;

    void start();
    /// Asks the work to end. Work that does not look at its progress ends in its own time.
    void stop() { m_stopped = true; }
    /// Nobody waits for its end any more.
    void abandon();

Q_SIGNALS:
    void stageBegun(const QString& what);
    void progressed(int percent);
    /// Why it failed; empty when it did not. The last signal.
    void ended(const QString& failure);

private:
    class Report;
    void run();

    Work m_work;
    QString m_failure; ///< the thread's until it has ended
    std::atomic_bool m_stopped = false;
    std::unique_ptr<QThread> m_thread;
};

} // namespace quilla
