#include "frame/password_ops.h"

#include "frame/refusal.h"
#include "frame/work.h"

namespace quilla {

namespace {

struct PasswordChange {
    QString before;
    QString after;
    QString repeated;
};

/// The boxes of the form.
enum PasswordBox { OldBox, NewBox };

const QString Hint = HintTitle.toString();

/// The repeated password is not tested: with a quote in it alone it differs from the new one.
std::optional<Refusal> checkQuotes(const PasswordChange& change)
{
    if (!change.before.contains(u'\'') && !change.after.contains(u'\'')) return {};
    return Refusal {u"用户名或者密码中不能包含【'】符号！"_s};
}

/// Letter by letter, though the login and the update below know no case: who changes a password has to know
/// it exactly.
std::optional<Refusal> checkPasswords(const QString& stored, const PasswordChange& change)
{
    if (stored != change.before)
        return Refusal {u"你输入的密码与登陆密码不符"_s, Hint, Icon::Critical, OldBox};
    if (change.after != change.repeated)
        return Refusal {u"两次输入的密码不相符，请重新输入"_s, Hint, Icon::Information, NewBox};
    return {};
}

bool emptyIsMeant(Session& session, const PasswordChange& change)
{
    return !change.after.isEmpty()
        || session.prompt.ask(
            u"你输入的密码是空的，确定要把密码设为空吗？(Y/N)"_s, HintTitle, Icon::Information, Answer::No);
}

PasswordOutcome refuse(Session& session, const Refusal& refusal)
{
    PasswordOutcome outcome = PasswordOutcome::Stay;
    tell(session.prompt, refusal,
        [&](int box) { outcome = box == OldBox ? PasswordOutcome::StayAtOld : PasswordOutcome::StayAtNew; });
    return outcome;
}

PasswordOutcome change(StrictWork& work, const PasswordChange& typed)
{
    Session& session = work.session();
    const Recordset user = work.open(
        u"Select userid,username,password From LibUse Where username='%1'"_s.arg(session.OperatorName));
    if (user.eof()) {
        session.prompt.stop(u"当前用户已经被删除！"_s, HintTitle);
        return PasswordOutcome::Close;
    }
    if (const auto refusal = checkPasswords(user.field(u"password").text(), typed))
        return refuse(session, *refusal);
    if (!emptyIsMeant(session, typed)) return PasswordOutcome::Stay;
    work.execute(u"Update libuse set password='%1' where username='%2' And password='%3'"_s.arg(
        typed.after, session.OperatorName, typed.before));
    session.prompt.inform(u"密码修改成功！请使用新密码！"_s, HintTitle);
    return PasswordOutcome::Close;
}

} // namespace

PasswordOutcome changePassword(
    Session& session, const QString& oldPassword, const QString& newPassword, const QString& repeated)
{
    const PasswordChange typed {oldPassword, newPassword, repeated};
    if (const auto refusal = checkQuotes(typed)) return refuse(session, *refusal);
    const auto tellFailure
        = [&](const Error&) { session.prompt.stop(u"密码修改失败！请使用原密码！"_s, HintTitle); };
    return handled(
        session, Opened::Directly, [&](StrictWork& work) { return change(work, typed); }, tellFailure)
        .value_or(PasswordOutcome::Stay);
}

} // namespace quilla
