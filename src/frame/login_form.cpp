#include "frame/login_form.h"

#include "platform/ui/form/form.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/look/icons.h"
#include "platform/ui/look/theme.h"

namespace quilla {

LtLoginFrm::LtLoginFrm(Session& session)
    : cmdLogin(u"进入(&G)"_s)
    , cmdExit(u"退出(&Q)"_s)
    , m_session(session)
    , m_login(session)
{
    QUILLA_NAMES(txtInName, txtInPassword, cmdLogin, cmdExit, Image3);
    layOut();
    enterAsTab({txtInName});
    onEnter(txtInPassword, [this] { enter(); });
    onClick(cmdLogin, [this] { enter(); });
    onClick(cmdExit, [this] { reject(); });
    onClick(Image3, [this] { m_session.connectionEditor.editConnection(); });
}

void LtLoginFrm::layOut()
{
    setObjectName(u"LtLoginFrm"_s);
    setWindowTitle(u"Quilla 登录流通子系统"_s);
    txtInPassword.setEchoMode(QLineEdit::Password);
    Image3.setIcon(applicationIcon());
    Image3.setIconSize(QSize(72, 72));
    Image3.setAutoRaise(true);
    Image3.setFocusPolicy(Qt::TabFocus);
    Image3.setToolTip(u"单击此处重定向数据源"_s);
    Image3.setAccessibleName(u"单击此处重定向数据源"_s);
    build(*this,
        column(row(Image3, fields(1, {{u"用户名:"_s, txtInName}, {u"密     码:"_s, txtInPassword}})),
            row(stretch(), cmdLogin, cmdExit)));
    setTabOrder(&txtInName, &txtInPassword);
    setTabOrder(&txtInPassword, &cmdLogin);
    setTabOrder(&cmdLogin, &cmdExit);
    setTabOrder(&cmdExit, &Image3);
    setMinimumWidth(pixelsOf(6000, *this));
    txtInName.setFocus();
}

void LtLoginFrm::enter()
{
    LoginOutcome outcome;
    {
        const WaitCursor wait;
        outcome = m_login.enter(txtInName.text(), txtInPassword.text());
    }
    switch (outcome) {
    case LoginOutcome::Entered:
        return accept();
    case LoginOutcome::EndProcess:
        return reject();
    case LoginOutcome::StayAtName:
        return txtInName.setFocus();
    case LoginOutcome::Stay:
        return;
    }
}

} // namespace quilla
