#pragma once

#include "frame/start_ops.h"
#include "platform/ui/form/form.h"
#include "setup/background_work.h"

#include <QLabel>
#include <QPointer>
#include <QWidget>

namespace quilla {

/// What the pages work with.
struct SetupPlace {
    SettingsStore& settings;
    Prompt& prompt;
    InstanceGuard& desk; ///< held by a lending desk that runs
};

/// A page of the set-up. It reads what is typed into the plan when the operator goes on.
class SetupPage : public QWidget {
    Q_OBJECT

public:
    SetupPage(const QString& title, SetupPlace& place, SetupPlan& plan);

    const QString& title() const { return m_title; }
    /// The caption of the button that goes on.
    virtual QString nextCaption() const { return QStringLiteral("下一步(&N)"); }
    /// Comes before the operator, with what was decided on the pages before.
    virtual void open() = 0;
    /// Checks what was typed; `passed` comes when it will do, at once or later.
    virtual void goOn() { Q_EMIT passed(); }
    bool isBusy() const { return m_work; }
    /// Ends work that is under way.
    virtual void stop();

Q_SIGNALS:
    void passed();
    void busyChanged();

protected:
    /// Runs the work in the background, the boxes closed meanwhile, then `ended` with the reason of a
    /// failure.
    void workOn(BackgroundWork::Work work, std::function<void(const QString& failure)> ended);
    BackgroundWork* work() { return m_work; }
    /// A box behind which the operator finds the fault.
    void tellFault(const Refusal& refusal, const std::vector<QWidget*>& boxes);

    SetupPlace& m_place;
    SetupPlan& m_plan;

private:
    void endWork();

    QString m_title;
    QPointer<BackgroundWork> m_work;
};

/// Words below a box or over a page, in as many lines as they need.
Piece note(const QString& text);

} // namespace quilla
