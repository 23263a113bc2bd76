#include "frame/connection_ops.h"

#include "frame/sublib.h"
#include "platform/db/connection_text.h"

namespace quilla {

QStringList offeredDrivers()
{
    return {u"SQL Server"_s, u"Microsoft Access Driver (*.mdb)"_s};
}

QStringList offeredDataSources()
{
    QStringList names {NoDataSource.toString(), BuiltInDataSource};
    for (const QString& name : odbcDataSources()) {
        if (!name.trimmed().isEmpty()) names.append(name);
    }
    return names;
}

std::optional<Refusal> checkConnectionInput(const ConnectionInput& input)
{
    const auto refusal = [](const QString& text) { return Refusal {text, ConnectionTitle.toString()}; };
    if (input.dataSource == BuiltInDataSource) return {}; // a file asks for no user
    if (!input.dataSource.isEmpty()) {
        if (!input.user.isEmpty()) return {};
        return refusal(u"用户名不能为空!请重新输入!"_s);
    }
    const bool complete = !input.user.isEmpty() && !input.driver.isEmpty() && !input.database.isEmpty()
        && !input.server.isEmpty();
    if (complete) return {};
    return refusal(u"填写的信息不完整!请重新输入!"_s);
}

QString buildConnectionText(const ConnectionInput& input)
{
    QString text = u"PROVIDER=MSDASQL;"_s;
    if (input.dataSource.isEmpty())
        text += u"Driver="_s + input.driver + u";Server="_s + doubled(input.server) + u';';
    else
        text += u"DSN="_s + input.dataSource + u';';
    text += u"UID="_s + doubled(input.user) + u";PWD="_s + doubled(input.password) + u';';
    if (!input.database.isEmpty()) text += u"Database="_s + doubled(input.database) + u';';
    return text;
}

ConnectionInput connectionInputOf(const QString& connectionText)
{
    const ConnectionItems items(connectionText);
    const auto value
        = [&](QStringView key) { return items.value(key).value_or(QString()).replace(u"''"_s, u"'"_s); };
    return {items.value(u"DSN").value_or(QString()), value(u"UID"), value(u"PWD"),
        items.value(u"Driver").value_or(QString()), value(u"Server"), value(u"Database")};
}

bool saveConnection(Session& session, const ConnectionInput& input)
{
    try {
        storeConnectionText(session, buildConnectionText(input));
    } catch (const Error& error) {
        session.prompt.inform(error.text, ConnectionTitle);
        return false;
    }
    // As they were typed, while the stored text doubles their quotes: the status bar shows them, and the next
    // start takes them out of the text with the quotes doubled.
    session.ServerName = input.server;
    session.DatabaseName = input.database;
    return true;
}

namespace {

/// The headline and title for a failed test, chosen by what the driver says.
Message failureOf(const QString& description)
{
    if (description.contains(u"Login failed"))
        return {u"用户密码不正确，请再试一次！详细信息如下：\n"_s + description, OperationTitle.toString()};
    if (description.contains(u"QueryTimeout property"))
        return {u"连接数据源超时，请重试！！详细信息如下：\n"_s + description, ConnectionTitle.toString()};
    return {u"连接失败，请重试！！详细信息如下：\n"_s + description, ConnectionTitle.toString()};
}

} // namespace

Message connectionTest(Session& session, const ConnectionInput& input)
{
    try {
        session.connections.open(buildConnectionText(input));
        return {u"测试通过！\n请保存连接参数！"_s, u"系统提示"_s};
    } catch (const Error& error) {
        return failureOf(error.text);
    }
}

} // namespace quilla
