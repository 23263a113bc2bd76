#include "setup/server_page.h"

#include "platform/ui/look/theme.h"

namespace quilla {

ServerPage::ServerPage(SetupPlace& place, SetupPlan& plan)
    : SetupPage(u"数据库服务器"_s, place, plan)
{
    QUILLA_NAMES(cboKind, cboSource, txtHost, txtPort, txtDatabase, txtUser, txtPassword, chkEncrypt, cmdTest,
        labSteps, labResult);
    cboKind.addItems(offeredServerKinds());
    cboSource.addItems(serverDataSources());
    txtPassword.setEchoMode(QLineEdit::Password);
    for (ResultLabel* label : {&labSteps, &labResult})
        label->setWordWrap(true);
    layOut();
    enterAsTab({cboKind, cboSource, txtHost, txtPort, txtDatabase, txtUser, txtPassword});
    onEnter(chkEncrypt, [this] { goOn(); });
    onClick(cmdTest, [this] { test(false); });
    connect(&cboKind, &QComboBox::currentIndexChanged, this, &ServerPage::followKind);
    followKind();
}

void ServerPage::layOut()
{
    build(*this,
        column(fields(1,
                   {{u"种类(&K)："_s, cboKind}, {m_source, cboSource},
                       {m_host, row(Piece(txtHost).grow(3), m_port, Piece(txtPort).grow(1))},
                       {u"数据库(&A)："_s, txtDatabase}, {u"用户名(&U)："_s, txtUser},
                       {u"密码(&P)："_s, txtPassword}}),
            row(chkEncrypt, stretch(), cmdTest), room(4), labSteps, labResult, stretch()));
}

void ServerPage::followKind()
{
    const ServerInput now = input();
    const bool source = now.isDataSource();
    for (QWidget* control : std::initializer_list<QWidget*> {&m_source, &cboSource})
        control->setVisible(source);
    for (QWidget* control : std::initializer_list<QWidget*> {&m_host, &txtHost, &m_port, &txtPort})
        control->setVisible(!source);
    txtPort.setText(usualPort(now.kind));
    chkEncrypt.setVisible(canEncrypt(now.kind));
}

void ServerPage::open()
{
    cboKind.setFocus();
}

ServerInput ServerPage::input() const
{
    return {cboKind.currentIndex(), cboSource.currentText(), txtHost.text(), txtPort.text(),
        txtDatabase.text(), txtUser.text(), txtPassword.text(), chkEncrypt.isChecked()};
}

void ServerPage::goOn()
{
    const bool known = m_test.probe.state != ServerProbe::State::Failed && m_text == serverText(input());
    known ? pass() : test(true);
}

void ServerPage::test(bool thenGoOn)
{
    if (const auto refusal = checkServerInput(input()))
        return tellFault(*refusal, {&cboSource, &txtHost, &txtPort, &txtDatabase, &txtUser, &txtPassword});
    m_goesOn = thenGoOn;
    m_text = serverText(input());
    labSteps.clear();
    setTone(labResult, Tone::Plain);
    labResult.setText(u"正在测试，服务器不回答时要等十几秒……"_s);
    const auto tested = std::make_shared<ServerTest>();
    const QPointer<ServerPage> page(this);
    workOn(
        [text = m_text, tested](StagedProgress& progress) {
            *tested = testServer(
                text, [&](ServerStep step) { progress.beginStage(serverStepNames().value(int(step))); });
        },
        [this, tested](const QString&) { take(*tested); });
    connect(work(), &BackgroundWork::stageBegun, this,
        [this](const QString& step) { labResult.setText(u"正在测试：%1……"_s.arg(step)); });
}

void ServerPage::stop()
{
    SetupPage::stop();
    labResult.setText(u"没有测试完。"_s);
    cmdTest.setFocus();
}

/// The steps up to the one that failed, which is the last that was tried.
void ServerPage::take(const ServerTest& tested)
{
    m_test = tested;
    const bool failed = tested.probe.state == ServerProbe::State::Failed;
    const QStringList names = serverStepNames();
    QStringList steps;
    for (int step = 0; step <= int(tested.probe.step); ++step)
        steps.append(names[step] + (failed && step == int(tested.probe.step) ? u" 失败"_s : u" 通过"_s));
    labSteps.setText(steps.join(u"　"_s));
    setTone(labResult, failed ? Tone::Error : Tone::Ok);
    labResult.setText(tested.text);
    labResult.announce(tested.text);
    if (!failed && m_goesOn) return pass();
    focusAfter(tested.probe);
}

/// To the box that the step was about; a data source has no box for a host.
void ServerPage::focusAfter(const ServerProbe& probe)
{
    if (probe.state != ServerProbe::State::Failed) return cmdTest.setFocus();
    const bool isAboutEncryption = probe.needsEncryption || probe.lacksEncryption;
    if (isAboutEncryption && chkEncrypt.isVisible()) return chkEncrypt.setFocus();
    QWidget* const boxes[] {&cboKind, &txtHost, &txtPort, &txtPassword, &txtDatabase, &txtUser, &txtDatabase};
    QWidget* box = boxes[int(probe.step)];
    (box->isVisible() ? box : &cboSource)->setFocus();
}

void ServerPage::pass()
{
    m_plan.emptyServer = m_test.probe.state == ServerProbe::State::Empty;
    m_plan.found = m_test.library;
    m_plan.found.earlier = m_test.probe.state == ServerProbe::State::Earlier;
    m_plan.target = connectionTarget(m_text);
    m_plan.library.place = m_plan.target;
    Q_EMIT passed();
}

} // namespace quilla
