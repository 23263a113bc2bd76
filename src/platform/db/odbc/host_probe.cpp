#include "platform/db/odbc/host_probe.h"

#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <memory>

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/un.h>
#include <unistd.h>

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(ErrorNumber::CannotOpen, u"network"_s, text);
}

HostAddress addressOf(const sockaddr* address, socklen_t length)
{
    HostAddress found;
    std::memcpy(&found.bytes, address, length);
    found.length = length;
    return found;
}

/// A question to the resolver of the system, which waits for the network as long as it likes.
struct Lookup {
    Lookup(const QString& name, int number)
        : host(name.toUtf8())
        , port(QByteArray::number(number))
    {
        hints.ai_socktype = SOCK_STREAM;
        request.ar_name = host.constData();
        request.ar_service = port.constData();
        request.ar_request = &hints;
    }
    ~Lookup()
    {
        if (request.ar_result) freeaddrinfo(request.ar_result);
    }
    Q_DISABLE_COPY_MOVE(Lookup)

    /// The resolver's result code; EAI_AGAIN when the time is up.
    int run()
    {
        gaicb* list[] {&request};
        if (const int refused = getaddrinfo_a(GAI_NOWAIT, list, 1, nullptr)) return refused;
        const timespec patience {NameSeconds, 0};
        const gaicb* const waited[] {&request};
        while (gai_suspend(waited, 1, &patience) == EAI_INTR) { }
        const int result = gai_error(&request);
        if (result == EAI_INPROGRESS) gai_cancel(&request);
        return result == EAI_INPROGRESS ? EAI_AGAIN : result;
    }
    bool isOver() const { return gai_error(const_cast<gaicb*>(&request)) != EAI_INPROGRESS; }

    QByteArray host;
    QByteArray port;
    addrinfo hints {};
    gaicb request {};
};

std::vector<HostAddress> socketIn(const QString& folder, int port)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    const QByteArray path = folder.toUtf8() + "/.s.PGSQL." + QByteArray::number(port);
    const bool fits = std::size_t(path.size()) < sizeof address.sun_path;
    if (!fits || !QFileInfo(folder).isDir()) throw fault(u"没有文件夹 %1。"_s.arg(folder));
    std::memcpy(address.sun_path, path.constData(), std::size_t(path.size()));
    return {addressOf(reinterpret_cast<const sockaddr*>(&address), sizeof address)};
}

/// The number of the error, 0 when somebody answered.
int errorOfConnecting(int handle, const HostAddress& address)
{
    if (::connect(handle, reinterpret_cast<const sockaddr*>(&address.bytes), address.length) == 0) return 0;
    if (errno != EINPROGRESS) return errno;
    pollfd waited {handle, POLLOUT, 0};
    if (::poll(&waited, 1, PortSeconds * 1000) <= 0) return ETIMEDOUT;
    int error = 0;
    socklen_t size = sizeof error;
    ::getsockopt(handle, SOL_SOCKET, SO_ERROR, &error, &size);
    return error;
}

int errorAt(const HostAddress& address)
{
    const int handle = ::socket(address.bytes.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (handle < 0) return errno;
    const int error = errorOfConnecting(handle, address);
    ::close(handle);
    return error;
}

QString wordsFor(int error)
{
    if (error == ECONNREFUSED || error == ENOENT) return u"没有程序应答。"_s;
    if (error == ETIMEDOUT) return u"%1 秒内没有应答。"_s.arg(PortSeconds);
    if (error == EHOSTUNREACH || error == ENETUNREACH) return u"网络不通。"_s;
    if (error == EACCES || error == EPERM) return u"本机不允许连接。"_s;
    return QString::fromLocal8Bit(std::strerror(error));
}

} // namespace

std::vector<HostAddress> addressesOf(const QString& host, int port)
{
    if (host.startsWith(u'/')) return socketIn(host, port);
    auto lookup = std::make_unique<Lookup>(host, port);
    const int result = lookup->run();
    std::vector<HostAddress> found;
    for (const addrinfo* next = lookup->request.ar_result; result == 0 && next; next = next->ai_next)
        found.push_back(addressOf(next->ai_addr, next->ai_addrlen));
    if (!lookup->isOver()) [[maybe_unused]]
        const auto* stillWritten = lookup.release();
    if (!found.empty()) return found;
    throw fault(result == EAI_AGAIN ? u"域名服务器没有回答“%1”在哪里。"_s.arg(host)
                                    : u"找不到主机“%1”。"_s.arg(host));
}

void knock(const std::vector<HostAddress>& addresses)
{
    int error = 0;
    for (const HostAddress& address : addresses) {
        error = errorAt(address);
        if (error == 0) return;
    }
    throw fault(wordsFor(error));
}

} // namespace quilla
