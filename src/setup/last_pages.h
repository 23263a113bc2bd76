#pragma once

#include "platform/ui/form/result_label.h"
#include "setup/setup_page.h"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QProgressBar>

namespace quilla {

/// What will be done, before anything is.
class ConfirmPage final : public SetupPage {
    Q_OBJECT

public:
    ConfirmPage(SetupPlace& place, SetupPlan& plan);
    QString nextCaption() const override { return QStringLiteral("开始(&S)"); }
    void open() override;
    /// Refuses while a lending desk of this user runs, which would change to the other library in the middle
    /// of its work. From here on none can start.
    void goOn() override;

    QLabel labSteps;
};

/// Does it, and shows what came of it.
class RunPage final : public SetupPage {
    Q_OBJECT

public:
    RunPage(SetupPlace& place, SetupPlan& plan);
    QString nextCaption() const override { return QStringLiteral("完成(&F)"); }
    void open() override;
    /// The work ends as soon as it can; the page then shows what came of it.
    void stop() override;
    bool isDone() const { return m_done; }

    QLabel labStage;
    QProgressBar showBar;
    QPlainTextEdit txtOutcome;
    QCheckBox chkStart {QStringLiteral("现在打开流通台(&O)")};

Q_SIGNALS:
    /// The work has ended; false when there is no library to open.
    void finished(bool done);

private:
    void layOut();
    void follow();
    void take(const QString& failure, const SetupOutcome& outcome);

    bool m_done = false;
};

} // namespace quilla
