#include "frame/password_ops.h"

#include "frame/sublib.h"

namespace quilla {

namespace {

PasswordOutcome change(
    Session& session, const QString& oldPassword, const QString& newPassword, const QString& repeated)
{
    Prompt& prompt = session.prompt;
    Connection conn = session.connections.open(session.ConnectionText);
    const Recordset user = conn.open(
        u"Select userid,username,password From LibUse Where username='%1'"_s.arg(session.OperatorName));
    if (user.eof()) {
        prompt.stop(u"当前用户已经被删除！"_s, HintTitle);
        return PasswordOutcome::Close;
    }
    if (user.field(u"password").text() != oldPassword) {
        prompt.stop(u"你输入的密码与登陆密码不符"_s, HintTitle);
        return PasswordOutcome::StayAtOld;
    }
    if (newPassword != repeated) {
        prompt.inform(u"两次输入的密码不相符，请重新输入"_s, HintTitle);
        return PasswordOutcome::StayAtNew;
    }
    const QString question = u"你输入的密码是空的，确定要把密码设为空吗？(Y/N)"_s;
    if (newPassword.isEmpty() && !prompt.ask(question, HintTitle, Icon::Information, Answer::No))
        return PasswordOutcome::Stay;
    conn.execute(u"Update libuse set password='%1' where username='%2' And password='%3'"_s.arg(
        newPassword, session.OperatorName, oldPassword));
    prompt.inform(u"密码修改成功！请使用新密码！"_s, HintTitle);
    return PasswordOutcome::Close;
}

} // namespace

PasswordOutcome changePassword(
    Session& session, const QString& oldPassword, const QString& newPassword, const QString& repeated)
{
    if (oldPassword.contains(u'\'') || newPassword.contains(u'\'')) {
        session.prompt.inform(u"用户名或者密码中不能包含【'】符号！"_s, OperationTitle);
        return PasswordOutcome::Stay;
    }
    try {
        return change(session, oldPassword, newPassword, repeated);
    } catch (const Error&) {
        session.prompt.stop(u"密码修改失败！请使用原密码！"_s, HintTitle);
        return PasswordOutcome::Stay;
    }
}

} // namespace quilla
