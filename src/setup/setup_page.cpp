#include "setup/setup_page.h"

#include "platform/ui/look/theme.h"

namespace quilla {

SetupPage::SetupPage(const QString& title, SetupPlace& place, SetupPlan& plan)
    : m_place(place)
    , m_plan(plan)
    , m_title(title)
{
}

void SetupPage::workOn(BackgroundWork::Work work, std::function<void(const QString&)> ended)
{
    m_work = new BackgroundWork(std::move(work), this);
    connect(m_work, &BackgroundWork::ended, this, [this, ended = std::move(ended)](const QString& failure) {
        endWork();
        ended(failure);
    });
    setEnabled(false);
    Q_EMIT busyChanged();
    // not before the page is connected to the signals of the work
    QMetaObject::invokeMethod(m_work, &BackgroundWork::start, Qt::QueuedConnection);
}

void SetupPage::stop()
{
    if (!m_work) return;
    m_work->abandon();
    m_work.clear();
    endWork();
}

void SetupPage::endWork()
{
    if (m_work) m_work->deleteLater();
    m_work.clear();
    setEnabled(true);
    Q_EMIT busyChanged();
}

void SetupPage::tellFault(const Refusal& refusal, const std::vector<QWidget*>& boxes)
{
    tell(m_place.prompt, refusal, [&](int box) { boxes[std::size_t(box)]->setFocus(); });
}

Piece note(const QString& text)
{
    Piece piece(text);
    auto* label = static_cast<QLabel*>(piece.control);
    label->setWordWrap(true);
    setTone(*label, Tone::Faded);
    return piece;
}

} // namespace quilla
