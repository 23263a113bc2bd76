#include "setup/last_pages.h"

#include "platform/ui/look/theme.h"

namespace quilla {

ConfirmPage::ConfirmPage(SetupPlace& place, SetupPlan& plan)
    : SetupPage(u"将要做的"_s, place, plan)
{
    QUILLA_NAMES(labSteps);
    labSteps.setWordWrap(true);
    build(*this, column(labSteps, room(8), note(u"还没有改变任何东西。按“开始”以后才做。"_s), stretch()));
}

void ConfirmPage::open()
{
    labSteps.setText(u"• "_s + plannedSteps(m_plan, m_place.settings).join(u"\n• "_s));
}

void ConfirmPage::goOn()
{
    try {
        if (m_place.desk.claim()) return Q_EMIT passed();
        m_place.prompt.inform(
            u"流通台或者另一个设置窗口正在运行。请先退出它，再按“开始”。"_s, OperationTitle);
    } catch (const Error& error) {
        m_place.prompt.stop(error.text, OperationTitle);
    }
}

RunPage::RunPage(SetupPlace& place, SetupPlan& plan)
    : SetupPage(u"设置图书馆"_s, place, plan)
{
    QUILLA_NAMES(labStage, showBar, txtOutcome, chkStart);
    layOut();
    chkStart.setChecked(true);
}

void RunPage::layOut()
{
    labStage.setWordWrap(true);
    txtOutcome.setReadOnly(true);
    txtOutcome.setAccessibleName(u"结果"_s);
    showBar.setAccessibleName(u"进度"_s);
    build(*this, column(labStage, showBar, Piece(txtOutcome).grow(100), chkStart, stretch()));
}

void RunPage::open()
{
    m_done = false;
    labStage.setText(u"正在准备……"_s);
    setTone(labStage, Tone::Plain);
    showBar.show();
    txtOutcome.hide();
    chkStart.hide();
    const auto outcome = std::make_shared<SetupOutcome>();
    workOn([this, outcome](
               StagedProgress& progress) { *outcome = carryOut(m_plan, m_place.settings, progress); },
        [this, outcome](const QString& failure) { take(failure, *outcome); });
    follow();
}

void RunPage::follow()
{
    setEnabled(true); // it has no box to close, and a disabled bar looks as if it stood still
    showBar.setRange(0, 0);
    connect(work(), &BackgroundWork::stageBegun, this, [this](const QString& what) {
        labStage.setText(what);
        showBar.setRange(0, 0); // not known yet how far the work is
    });
    connect(work(), &BackgroundWork::progressed, this, [this](int percent) {
        showBar.setRange(0, 100);
        showBar.setValue(percent);
    });
}

void RunPage::stop()
{
    if (!work()) return;
    labStage.setText(u"正在停止……"_s);
    work()->stop();
}

void RunPage::take(const QString& failure, const SetupOutcome& outcome)
{
    m_done = failure.isEmpty();
    showBar.hide();
    chkStart.setVisible(m_done);
    txtOutcome.show();
    txtOutcome.setPlainText(
        m_done ? outcome.lines.join(u"\n\n"_s) : failure + u"\n\n处理好以后，可以按“上一步”再试一次。"_s);
    const bool whole = m_done && outcome.whole;
    setTone(labStage, whole ? Tone::Ok : m_done ? Tone::Warning : Tone::Error);
    labStage.setText(whole ? u"设置完成。"_s
            : m_done       ? u"设置完成，但是有的没有导入："_s
                           : u"没有完成，连接的设置没有改变："_s);
    Q_EMIT finished(m_done);
}

} // namespace quilla
