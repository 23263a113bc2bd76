#include "setup/setup_form.h"

#include "platform/ui/look/theme.h"

namespace quilla {

SetupFrm::SetupFrm(const SetupPlace& place)
    : m_place(place)
{
    QUILLA_NAMES(labTitle, Pages, cmdBack, cmdNext, cmdCancel);
    for (SetupPage* page : std::initializer_list<SetupPage*> {
             &Welcome, &Library, &Files, &Open, &Server, &Backups, &Confirm, &Run}) {
        Pages.addWidget(page);
        connect(page, &SetupPage::passed, this, &SetupFrm::goOn);
        connect(page, &SetupPage::busyChanged, this, &SetupFrm::showButtons);
    }
    layOut();
    connect(&Run, &RunPage::finished, this, [this](bool done) {
        showButtons();
        (done ? cmdNext : cmdBack).setFocus();
    });
    onClick(cmdBack, [this] { goBack(); });
    onClick(cmdNext, [this] { page().goOn(); });
    onClick(cmdCancel, [this] { reject(); });
    show(0);
}

void SetupFrm::layOut()
{
    setObjectName(u"SetupFrm"_s);
    setWindowTitle(u"青简台设置"_s);
    QFont font = labTitle.font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    labTitle.setFont(font);
    Pages.setFocusPolicy(Qt::ClickFocus);
    build(*this,
        column(labTitle, room(6), Piece(Pages).grow(), room(6), row(stretch(), cmdBack, cmdNext, cmdCancel)),
        AtEscape::Close);
    resize(pixelsOf(10200, *this), pixelsOf(7200, *this));
}

/// Each way has its pages; an empty server has those of a new library too.
void SetupFrm::layPath()
{
    m_path = {&Welcome};
    if (m_plan.way == SetupWay::OpenFile) m_path.push_back(&Open);
    if (m_plan.way == SetupWay::JoinServer) m_path.push_back(&Server);
    if (m_plan.way == SetupWay::Backups) m_path.push_back(&Backups);
    if (m_plan.makesLibrary()) m_path.insert(m_path.end(), {&Library, &Files});
    m_path.insert(m_path.end(), {&Confirm, &Run});
}

void SetupFrm::goOn()
{
    if (&page() == &Run) return finish();
    layPath();
    show(m_at + 1);
}

void SetupFrm::finish()
{
    m_startsDesk = Run.chkStart.isChecked();
    accept();
}

void SetupFrm::goBack()
{
    show(m_at - 1);
}

void SetupFrm::show(std::size_t at)
{
    m_at = at;
    labTitle.setText(page().title());
    Pages.setCurrentWidget(&page());
    showButtons();
    cmdNext.setFocus(); // where a page has no box to begin with
    page().open();
    showButtons();
}

void SetupFrm::showPage(SetupPage& page)
{
    m_path = {&Welcome, &page};
    show(&page == &Welcome ? 0 : 1);
}

void SetupFrm::showButtons()
{
    const bool busy = page().isBusy();
    const bool done = &page() == &Run && Run.isDone();
    cmdNext.setText(page().nextCaption());
    cmdCancel.setText(busy ? u"停止(&T)"_s : u"取消(&Q)"_s);
    cmdBack.setEnabled(!busy && m_at > 0 && !done);
    cmdNext.setEnabled(!busy && (&page() != &Run || done));
    cmdCancel.setEnabled(!done);
    if (busy) Pages.setFocus(); // a second Enter must not stop what the first one began
}

void SetupFrm::reject()
{
    if (page().isBusy()) return page().stop();
    Run.isDone() ? accept() : QDialog::reject();
}

} // namespace quilla
