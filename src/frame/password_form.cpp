#include "frame/password_form.h"

#include "frame/password_ops.h"
#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

namespace quilla {

EditPassFrm::EditPassFrm(Session& session)
    : CmdOk(u"&Y 确认"_s)
    , CmdCancel(u"&C 取消"_s)
    , m_session(session)
{
    QUILLA_NAMES(Text1, CmdOk, CmdCancel);
    setObjectName(u"EditPassFrm"_s);
    setWindowTitle(u"修改口令"_s);
    for (TextBox& box : Text1) {
        box.setEchoMode(QLineEdit::Password);
        box.setHighlighted(true);
    }
    build(*this,
        column(fields(1,
                   {{u"请输入旧密码："_s, Text1[0]}, {u"请输入新密码："_s, Text1[1]},
                       {u"请确认新密码："_s, Text1[2]}}),
            stretch(), row(stretch(), CmdOk, CmdCancel)));
    setMinimumWidth(pixelsOf(5400, *this));
    enterAsTab(allOf(Text1));
    onClick(CmdOk, [this] { change(); });
    onClick(CmdCancel, [this] { closeScreen(*this); });
}

void EditPassFrm::change()
{
    switch (changePassword(m_session, Text1[0].text(), Text1[1].text(), Text1[2].text())) {
    case PasswordOutcome::Close:
        closeScreen(*this);
        break;
    case PasswordOutcome::StayAtOld:
        Text1[0].setFocus();
        break;
    case PasswordOutcome::StayAtNew:
        Text1[1].setFocus();
        break;
    case PasswordOutcome::Stay:
        break;
    }
}

} // namespace quilla
