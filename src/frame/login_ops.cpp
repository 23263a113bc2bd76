#include "frame/login_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"

namespace quilla {

namespace {

constexpr int MostFailures = 3;

} // namespace

Login::Login(Session& session)
    : m_session(session)
{
}

LoginOutcome Login::enter(const QString& name, const QString& password)
{
    if (!haveSettings()) return LoginOutcome::Stay;
    if (name.contains(u'\'') || password.contains(u'\'')) {
        m_session.prompt.inform(u"用户名或者密码中不能包含【'】符号！"_s, OperationTitle);
        return LoginOutcome::Stay;
    }
    ResumingWork work(m_session);
    if (!work) return LoginOutcome::Stay;
    // name and password stand in the statement as they were typed: the test above takes the place of quoting
    const Recordset user = work.select(
        u"Select userid,username,borrow From LibUse where username='%1' And password='%2'"_s.arg(
            name, password));
    if (work.failed()) {
        work.release();
        if (m_session.prompt.ask(u"是否重新输入连接数据库的信息？"_s, OperationTitle))
            m_session.connectionEditor.editConnection();
        return LoginOutcome::Stay;
    }
    return user.eof() ? refuse() : judge(user, name);
}

bool Login::haveSettings()
{
    while (!readConnectionText(m_session)) {
        if (!offerConnectionSettings(m_session)) return false;
    }
    return true;
}

LoginOutcome Login::refuse()
{
    ++m_failures;
    if (m_failures < MostFailures) {
        m_session.prompt.stop(u"用户名或用户密码输入错误，请核对后输入。"_s, OperationTitle);
        return LoginOutcome::StayAtName;
    }
    m_session.prompt.stop(u"对不起，已经三次输入错误，退出该系统。"_s, OperationTitle);
    return LoginOutcome::EndProcess;
}

LoginOutcome Login::judge(const Recordset& user, const QString& name)
{
    if (!user.field(u"borrow").isTrue()) {
        m_session.prompt.stop(u"对不起，你没有使用“青简台”的权限。"_s, OperationTitle);
        return LoginOutcome::EndProcess;
    }
    // As typed, not as stored: this spelling goes into every loan of the day.
    m_session.OperatorName = name;
    return LoginOutcome::Entered;
}

} // namespace quilla
