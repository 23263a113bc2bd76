#include "setup/background_work.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QThread>

namespace quilla {

/// Passes on to the window how far the work is.
class BackgroundWork::Report final : public StagedProgress {
public:
    explicit Report(BackgroundWork& work)
        : m_work(work)
    {
    }
    void beginStage(const QString& what) override
    {
        m_percent = -1;
        Q_EMIT m_work.stageBegun(what);
    }
    void begin() override { }
    void setTotal(qsizetype steps) override { m_total = steps; }
    void setDone(qsizetype steps) override
    {
        const int percent = m_total > 0 ? int(steps * 100 / m_total) : 0;
        if (percent != m_percent) Q_EMIT m_work.progressed(percent);
        m_percent = percent;
    }
    bool goOn() override { return !m_work.m_stopped; }
    void end() override { }

private:
    BackgroundWork& m_work;
    qsizetype m_total = 0;
    int m_percent = -1;
};

BackgroundWork::BackgroundWork(Work work, QObject* parent)
    : QObject(parent)
    , m_work(std::move(work))
    , m_thread(QThread::create([this] { run(); }))
{
    connect(m_thread.get(), &QThread::finished, this, [this] { Q_EMIT ended(m_failure); });
}

BackgroundWork::~BackgroundWork()
{
    stop();
    m_thread->wait();
}

void BackgroundWork::start()
{
    m_thread->start();
}

void BackgroundWork::abandon()
{
    disconnect(this, nullptr, nullptr, nullptr);
    connect(this, &BackgroundWork::ended, this, &QObject::deleteLater);
    stop();
}

void BackgroundWork::run()
{
    try {
        Report report(*this);
        m_work(report);
    } catch (const Error& error) {
        m_failure = error.text;
    } catch (const std::exception& error) {
        m_failure = u"工作没有做完：%1\n可能是内存或者磁盘不够，请退出其他程序再试一次。"_s.arg(
            QString::fromLocal8Bit(error.what()));
    }
}

} // namespace quilla
