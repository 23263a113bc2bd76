#include "frame/odbc_form.h"

#include "platform/ui/form/form.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/form/window_in_use.h"
#include "platform/ui/look/theme.h"

namespace quilla {

frmODBC::frmODBC(Session& session, QWidget* parent)
    : QDialog(parent)
    , fraStep3(u"连接值"_s)
    , cmdOK(u"保存(&D)"_s)
    , cmdCeshi(u"测试(&C)"_s)
    , cmdCancel(u"取消(&Q)"_s)
    , m_session(session)
{
    QUILLA_NAMES(
        fraStep3, cboDSNList, txtUID, txtPWD, cboDrivers, txtServer, txtDatabase, cmdOK, cmdCeshi, cmdCancel);
    cboDSNList.addItems(offeredDataSources());
    cboDrivers.addItems(offeredDrivers());
    layOut();
    enterAsTab({cboDSNList, txtUID, txtPWD, cboDrivers, txtServer, txtDatabase});
    connect(&cboDSNList, &QComboBox::currentIndexChanged, this, &frmODBC::followDataSource);
    showInput(connectionInputOf(m_session.ConnectionText));
    onClick(cmdOK, [this] { save(); });
    onClick(cmdCeshi, [this] { test(); });
    onClick(cmdCancel, [this] { reject(); });
}

void frmODBC::layOut()
{
    setObjectName(u"frmODBC"_s);
    setWindowTitle(u"请设置要连接的数据库信息"_s);
    txtPWD.setEchoMode(QLineEdit::Password);
    build(*this,
        column(group(fraStep3,
                   fields(1,
                       {{u"数据源(&D):"_s, cboDSNList}, {u"用户名(&U):"_s, txtUID}, {u"密码(&P):"_s, txtPWD},
                           {u"驱动(&V):"_s, cboDrivers}, {u"服务器(&S):"_s, txtServer},
                           {u"数据库(&B):"_s, txtDatabase}})),
            row(stretch(), cmdOK, cmdCeshi, cmdCancel)));
    setMinimumWidth(pixelsOf(6600, *this));
}

void frmODBC::followDataSource()
{
    const bool none = cboDSNList.currentIndex() == 0;
    for (QWidget* box : std::initializer_list<QWidget*> {&txtServer, &cboDrivers, &txtDatabase})
        box->setEnabled(none);
    if (cboDSNList.hasFocus()) focusNextChild();
}

void frmODBC::showInput(const ConnectionInput& input)
{
    if (!input.dataSource.isEmpty()) {
        if (cboDSNList.findText(input.dataSource) < 0) cboDSNList.addItem(input.dataSource);
        cboDSNList.setCurrentText(input.dataSource);
    }
    if (!input.driver.isEmpty()) {
        if (cboDrivers.findText(input.driver) < 0) cboDrivers.addItem(input.driver);
        cboDrivers.setCurrentText(input.driver);
    }
    txtUID.setText(input.user);
    txtPWD.setText(input.password);
    txtServer.setText(input.server);
    txtDatabase.setText(input.database);
}

ConnectionInput frmODBC::input() const
{
    const QString source = cboDSNList.currentIndex() > 0 ? cboDSNList.currentText() : QString();
    return {
        source, txtUID.text(), txtPWD.text(), cboDrivers.currentText(), txtServer.text(), txtDatabase.text()};
}

bool frmODBC::isComplete()
{
    const auto refusal = checkConnectionInput(input());
    if (!refusal) return true;
    tell(m_session.prompt, *refusal);
    txtUID.setFocus();
    return false;
}

void frmODBC::save()
{
    if (isComplete() && saveConnection(m_session, input())) accept();
}

void frmODBC::test()
{
    if (!isComplete()) return;
    fraStep3.setTitle(u"正在尝试连接数据库,请稍候......."_s);
    fraStep3.repaint();
    Message outcome;
    {
        const WaitCursor wait;
        outcome = connectionTest(m_session, input());
    }
    fraStep3.setTitle(u"连接值"_s);
    m_session.prompt.show(outcome);
}

void DialogConnectionEditor::editConnection()
{
    const ArrowCursor arrow;
    frmODBC form(*m_session, windowInUse());
    form.exec();
}

} // namespace quilla
