#pragma once

#include <QString>

#include <sys/socket.h>

#include <vector>

namespace quilla {

/// Where a program can be reached: an address of a machine with a port, or a socket in a folder.
struct HostAddress {
    sockaddr_storage bytes {};
    socklen_t length = 0;
};

/// How long to wait for the look-up of a machine's name, and for an answer from each of its addresses.
constexpr int NameSeconds = 8;
constexpr int PortSeconds = 5;

/// Looks a name up. A host that begins with "/" is the folder of the server's socket. Throws `Error` that
/// says why there is no such host.
std::vector<HostAddress> addressesOf(const QString& host, int port);

/// Connects to one of the addresses and leaves at once. Throws `Error` that says why nobody answers there.
void knock(const std::vector<HostAddress>& addresses);

} // namespace quilla
