#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace quilla {

/// What a control does beyond Qt: at Enter, when the focus comes and goes. One sits in each control that
/// was given such a step by the functions of form.h.
class ControlKeys final : public QObject {
    Q_OBJECT

public:
    /// The keys of a control, made at the first call.
    static ControlKeys& of(QWidget& control);
    /// Runs the leave steps in the control's window that are still waiting their turn.
    static void runWaitingLeaves(QWidget& control);

    std::function<void()> enter;
    std::function<void()> entered;
    std::function<void()> left;
    bool enterIsTab = false;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit ControlKeys(QWidget& control);
    bool takeEnter();
    void moveOn();
    void waitToLeave();

    QWidget& m_control;
};

} // namespace quilla
