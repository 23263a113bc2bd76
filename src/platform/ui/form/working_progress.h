#pragma once

#include "platform/core/progress.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/form/working_form.h"

#include <QPointer>

#include <optional>

namespace quilla {

/// An export, or other long work of a screen, as it stands before the operator: the hourglass, and the
/// progress form with its button. The rest of the desk goes on meanwhile; only that screen takes no input, so
/// that no run begins inside another. A screen that is closed ends its run, and must not touch itself after
/// that.
class WorkingProgress final : public Progress {
public:
    /// `title` says what the work is, when it is no export.
    explicit WorkingProgress(QWidget* owner, QString title = {})
        : m_owner(owner)
        , m_title(std::move(title))
    {
    }
    void begin() override;
    void setTotal(qsizetype rows) override;
    void setDone(qsizetype rows) override;
    bool goOn() override;
    void end() override;

private:
    QPointer<QWidget> m_owner;
    QString m_title;
    QPointer<QWidget> m_focus; ///< where the focus was in the owner
    QPointer<WorkingFrm> m_form; ///< goes with its owner
    std::optional<WaitCursor> m_hourglass;
};

} // namespace quilla
