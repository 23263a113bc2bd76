#include "setup/server_ops.h"

#include "database/opened_library.h"
#include "frame/connection_ops.h"
#include "platform/db/server_schema.h"

namespace quilla {

namespace {

Refusal refusal(const QString& text, int box)
{
    return {.text = text, .box = box};
}

const ServerKind* kindOf(int kind)
{
    const auto kinds = serverKinds();
    return std::size_t(kind) < kinds.size() ? &kinds[std::size_t(kind)] : nullptr;
}

/// The items of a connection text stand between ";" and lose the blanks around them.
std::optional<Refusal> checkItems(const ServerInput& input)
{
    const struct {
        QStringView caption;
        const QString& text;
        int box;
    } items[] {{u"主机", input.host, HostBox}, {u"数据库", input.database, DatabaseBox},
        {u"用户名", input.user, UserBox}, {u"密码", input.password, ServerPasswordBox}};
    for (const auto& [caption, text, box] : items)
        if (text.contains(u';') || trimBlanks(text) != text)
            return refusal(u"%1里不能有分号（;），开头和结尾不能有空格。"_s.arg(caption), box);
    return {};
}

std::optional<Refusal> checkHost(const ServerInput& input)
{
    if (input.host.isEmpty()) return refusal(u"请填写服务器的主机名或者 IP 地址。"_s, HostBox);
    bool isNumber = false;
    const int port = input.port.toInt(&isNumber);
    constexpr int highest = 65535;
    if (!isNumber || port < 1 || port > highest)
        return refusal(u"端口应该是 1 到 65535 的整数，通常是 %1。"_s.arg(usualPort(input.kind)), PortBox);
    if (input.database.isEmpty()) return refusal(u"请填写服务器上的数据库名。"_s, DatabaseBox);
    return {};
}

/// The message about a step that failed: what it was about, and what to do.
struct StepWords {
    QStringView name;
    QStringView head; ///< stands before the words of the failure; "%1" is what it is about
    QStringView advice;
};

/// In the order of `ServerStep`.
constexpr StepWords Steps[] {
    {u"驱动", u"",
        u"请安装驱动（PostgreSQL 的软件包是 odbc-postgresql，SQL Server 的是 tdsodbc），再测试一次。"},
    {u"主机名", u"", u"请检查主机名的拼写和本机的网络，也可以填 IP 地址。"},
    {u"端口", u"%1：", u"请确认服务器已经启动、端口号正确，而且防火墙允许本机连接。"},
    {u"登录", u"用户“%1”登录失败：", u"请检查用户名和密码；都正确时，请管理员允许本机登录。"},
    {u"数据库", u"登录成功，但打不开数据库“%1”：",
        u"请检查数据库名；还没有的，请管理员建一个空的，并允许这个用户连接。"},
    {u"权限", u"用户“%1”的权限不够：", u"请管理员授权：工作台要读写全部表，建立图书馆还要能建表。"},
    {u"结构版本", u"数据库“%1”不能用：",
        u"结构版本更新的，请升级本程序；不是本程序建立的，请换一个空的数据库。"},
};

QStringView adviceFor(const ServerProbe& probe)
{
    if (probe.needsEncryption)
        return u"服务器只接受加密的连接。请选中“加密连接（TLS）”再测试一次；用数据源时，在 /etc/odbc.ini 里加一行 SSLmode=require。";
    if (probe.lacksEncryption)
        return u"服务器没有打开加密。请取消“加密连接（TLS）”再测试一次，或者请管理员在服务器上打开。";
    return Steps[int(probe.step)].advice;
}

QString faultText(const ServerProbe& probe)
{
    const QString head = Steps[int(probe.step)].head.toString().replace(u"%1"_s, probe.place);
    return head + probe.words + u'\n' + adviceFor(probe).toString();
}

QString foundText(const ServerTest& test)
{
    switch (test.probe.state) {
    case ServerProbe::State::Failed:
        return faultText(test.probe);
    case ServerProbe::State::Empty:
        return u"测试通过。数据库是空的，可以在里面建立图书馆。"_s;
    case ServerProbe::State::Earlier:
        return u"测试通过。图书馆由较早版本的程序建立，使用前要升级。"_s;
    case ServerProbe::State::Ready:
        return u"测试通过。图书馆："_s + test.library.text() + u"。"_s;
    }
    return {};
}

/// Opens the library as the client will; an error here is a failure of the last step.
void lookInside(const QString& text, ServerTest& test)
{
    try {
        OpenedLibrary place(connectionTarget(text));
        test.library = lookAtLibrary(place.connection);
    } catch (const Error& error) {
        test.probe.state = ServerProbe::State::Failed;
        test.probe.words = error.text;
    }
}

} // namespace

bool ServerInput::isDataSource() const
{
    return !kindOf(kind);
}

QStringList offeredServerKinds()
{
    QStringList names;
    for (const ServerKind& kind : serverKinds())
        names.append(kind.name);
    return names << u"ODBC 数据源"_s;
}

QStringList serverDataSources()
{
    QStringList names = offeredDataSources();
    names.removeAll(NoDataSource.toString());
    names.removeAll(BuiltInDataSource);
    return names;
}

QString usualPort(int kind)
{
    const ServerKind* known = kindOf(kind);
    return known ? QString::number(known->port) : QString();
}

bool canEncrypt(int kind)
{
    const ServerKind* known = kindOf(kind);
    return known && !known->encrypted.isEmpty();
}

std::optional<Refusal> checkServerInput(const ServerInput& input)
{
    if (input.isDataSource() && input.dataSource.isEmpty())
        return refusal(u"本机没有 ODBC 数据源。请先在 /etc/odbc.ini 里建立，或者选择别的种类。"_s, SourceBox);
    if (!input.isDataSource())
        if (const auto refused = checkHost(input)) return refused;
    if (input.user.isEmpty()) return refusal(u"请填写登录服务器的用户名。"_s, UserBox);
    return checkItems(input);
}

QString serverText(const ServerInput& input)
{
    ConnectionInput typed {.dataSource = {},
        .user = input.user,
        .password = input.password,
        .driver = {},
        .server = {},
        .database = input.database};
    const ServerKind* kind = kindOf(input.kind);
    if (!kind) {
        typed.dataSource = input.dataSource;
        return buildConnectionText(typed);
    }
    typed.driver = kind->driver;
    typed.server = input.host;
    if (input.port.toInt() != kind->port) typed.server += kind->portItem + input.port;
    const bool encrypts = input.encrypted && !kind->encrypted.isEmpty();
    return buildConnectionText(typed) + (encrypts ? kind->encrypted + u';' : QString());
}

ServerTest testServer(const QString& text, const std::function<void(ServerStep)>& begun)
{
    ServerTest test {probeServer(ConnectionItems(text), librarySchema(), begun)};
    if (test.probe.state == ServerProbe::State::Ready) lookInside(text, test);
    test.text = foundText(test);
    return test;
}

QStringList serverStepNames()
{
    QStringList names;
    for (const StepWords& step : Steps)
        names.append(step.name.toString());
    return names;
}

void upgradeServerLibrary(const QString& text)
{
    upgradeServer(ConnectionItems(text), librarySchema());
}

} // namespace quilla
