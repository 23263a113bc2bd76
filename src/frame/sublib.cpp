#include "frame/sublib.h"

namespace quilla {

bool readConnectionText(Session& session)
{
    static const QString application = StoredText::Application.toString();
    static const QString section = StoredText::Section.toString();
    static const QString key = StoredText::Key.toString();
    static const QString missing = StoredText::Missing.toString();
    session.ConnectionText = session.settings.get(application, section, key, missing);
    return session.ConnectionText != missing;
}

void storeConnectionText(Session& session, const QString& text)
{
    session.settings.set(
        StoredText::Application.toString(), StoredText::Section.toString(), StoredText::Key.toString(), text);
    session.ConnectionText = text;
}

bool offerConnectionSettings(Session& session)
{
    if (!session.prompt.ask(u"无法取得正确连接数据库的信息!现在输入吗?"_s, ConnectionTitle)) return false;
    session.connectionEditor.editConnection();
    return true;
}

int OpenDbConnection(Session& session, Connection& conn)
{
    const ResumeScope resume(session.error);
    if (!readConnectionText(session)) return offerConnectionSettings(session) ? -1 : 0;

    conn = Connection();
    if (session.error.attempt([&] { conn = session.connections.open(session.ConnectionText); })) return GoOn;

    const QString question = u"对不起，连接数据库失败！错误原因如下：\n%1\n重新输入连接数据库的信息吗?"_s.arg(
        session.error.text());
    if (!session.prompt.ask(question, ConnectionTitle)) return GoOn;
    session.connectionEditor.editConnection();
    return -1;
}

int OpenShapeConnection(Session& session, Connection& conn)
{
    const ResumeScope resume(session.error);
    QString text = session.ConnectionText;
    text.replace(u"MSDASQL"_s, u"MSDataShape"_s);
    conn = Connection();
    session.error.attempt([&] { conn = session.connections.open(text); });
    return session.error.number();
}

Moment GetServerDate(Session& session)
{
    const ResumeScope resume(session.error);
    std::optional<Moment> answered;
    session.error.attempt([&] {
        Connection conn = session.connections.open(session.ConnectionText);
        const Recordset answer = conn.open(u"select getdate()");
        if (answer.recordCount() > 0) answered = answer.field(0).moment();
    });
    const Moment result = answered ? *answered : session.clock.now();
    if (session.error.isSet())
        session.prompt.inform(
            u"获取服务器日期时出现错误！原因如下：\n"_s + session.error.text(), OperationTitle);
    return result;
}

int CloseDbConnection(Session& session, Connection& conn)
{
    session.error.attempt([&] { conn.close(); });
    const int number = session.error.number();
    session.error.clear();
    return number;
}

QString SqlText(QStringView text)
{
    return doubled(trimBlanks(text));
}

Recordset openOrEmpty(Session& session, Connection& conn, const QString& tsql, CursorType cursor)
{
    Recordset rows;
    session.error.attempt([&] { rows = conn.open(tsql, cursor); });
    return rows;
}

} // namespace quilla
