#include "desk/slip_button.h"

#include "desk/slip_ops.h"
#include "platform/ui/form/wait_cursor.h"

#include <QActionGroup>

namespace quilla {

namespace {

struct PaperEntry {
    QString text;
    std::optional<SlipPaper> paper;
};

const std::vector<PaperEntry>& paperEntries()
{
    static const std::vector<PaperEntry> entries {{u"不打印"_s, {}}, {u"58 毫米卷纸"_s, SlipPaper::Roll58},
        {u"80 毫米卷纸"_s, SlipPaper::Roll80}, {u"A6 纸"_s, SlipPaper::A6}};
    return entries;
}

void keep(Session& session, const SlipChoice& choice)
{
    try {
        keepSlipChoice(session.settings, choice);
    } catch (const Error& error) {
        session.prompt.warn(error.text, OperationTitle);
    }
}

} // namespace

SlipButton::SlipButton(const Workplace& place)
    : QPushButton(u"&P 借阅单"_s)
    , m_session(place.session)
    , m_printer(place.formPrinter)
{
    setToolTip(u"打印读者目前所借图书和应还日期（F9）"_s);
    setMenu(&m_menu);
    connect(&m_menu, &QMenu::aboutToShow, this, &SlipButton::fillMenu);
}

/// Anew each time, as the settings stand.
void SlipButton::fillMenu()
{
    m_menu.clear();
    const SlipChoice choice = slipChoice(m_session.settings);
    QAction* now = m_menu.addAction(u"打印借阅单\tF9"_s, this, &SlipButton::asked);
    now->setEnabled(choice.paper.has_value());
    m_menu.addSeparator();
    auto* papers = new QActionGroup(&m_menu);
    for (const PaperEntry& entry : paperEntries()) {
        QAction* action = papers->addAction(m_menu.addAction(entry.text));
        action->setCheckable(true);
        action->setChecked(choice.paper == entry.paper);
        connect(action, &QAction::triggered, this, [this, entry, choice] {
            keep(m_session, {entry.paper, choice.asPdf});
        });
    }
    m_menu.addSeparator();
    QAction* pdf = m_menu.addAction(u"存为 PDF 文件"_s);
    pdf->setCheckable(true);
    pdf->setChecked(choice.asPdf);
    connect(pdf, &QAction::toggled, this, [this, choice](bool on) { keep(m_session, {choice.paper, on}); });
}

void SlipButton::print(const QString& readercode)
{
    const SlipChoice choice = slipChoice(m_session.settings);
    if (!choice.paper)
        return m_session.prompt.inform(
            u"借阅单尚未启用，请先在“借阅单”菜单（Alt+P）里选择纸张。"_s, OperationTitle);
    const auto slip = loanSlip(m_session, readercode, *choice.paper);
    if (!slip) return;
    const QString file = choice.asPdf ? slipFile(readercode, m_session.clock.now()) : QString();
    try {
        const WaitCursor hourglass;
        m_printer.printSlip(*slip, file);
    } catch (const Error& error) {
        return m_session.prompt.warn(error.text, OperationTitle);
    }
    if (!file.isEmpty()) m_session.prompt.inform(u"借阅单已保存：\n"_s + file, OperationTitle);
}

} // namespace quilla
