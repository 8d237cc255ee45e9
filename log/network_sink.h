// TCP and UDP peers. A socket is kept as a 32-bit number, also where the system's type is wider:
// its values are not.
#pragma once

#include <cstdint>

#include "common/text_view.h"

namespace svcinst {

enum class SocketKind { tcp, udp };

/// Opens the sink of that kind with open_log_socket(), unless it is open already or logging is off.
/// The caller must not hold the logger's lock: nobody else is to wait for a peer.
void open_peer(const char* address, std::uint16_t port, SocketKind kind);

/// Connects a new socket to a peer and puts it in blocking mode. For TCP it waits one second at
/// most. An option that cannot be set is reported on standard output. address: dotted IPv4 text.
/// port: in the byte order of this machine. Returns the socket, which is the caller's, or
/// kNoSocket.
std::int32_t open_log_socket(const char* address, std::uint16_t port, SocketKind kind);

/// Sends `text` to the peer of `socket`, as it is. Failures are ignored.
void send_to_peer(std::int32_t socket, TextView text);

}  // namespace svcinst
