// Requests between programs (hand_over.h): one packet there, one byte back when it was taken.
#include "platform/hand_over.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string_view>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr int MostWaiting = 8;           // requests that are not taken yet
constexpr std::size_t Longest = 65536;   // bytes of a request
constexpr timeval TimeToAnswer{10, 0};   // for the program at work, which may be in the middle of a long load
constexpr timeval TimeToSend{0, 200000}; // for another one's packet: the window stands still meanwhile
constexpr char Separator = '\0';
constexpr char Taken = 'T';

int Listener = -1;

class Socket {
public:
    explicit Socket(int descriptor) : handle(descriptor) {}
    ~Socket() {
        if (handle >= 0) close(handle);
    }
    Socket(const Socket &) = delete;
    Socket &operator=(const Socket &) = delete;
    operator int() const { return handle; }

private:
    int handle;
};

int NewSocket(int flags) { return socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | flags, 0); }

// The name of a directory's socket: one and the same whatever path leads there, and with no file for it.
struct Address {
    sockaddr_un Name{};
    socklen_t Length = 0; // 0 where there is no such directory
};

Address AddressOf(const std::string &directory) {
    Address address;
    struct stat status {};
    if (stat(directory.c_str(), &status) != 0) return address;
    const std::string name = "quintave-" + std::to_string(status.st_dev) + "-" + std::to_string(status.st_ino);
    address.Name.sun_family = AF_UNIX;
    std::copy(name.begin(), name.end(), address.Name.sun_path + 1); // behind a zero byte it is no path
    address.Length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    return address;
}

bool IsThisUsers(int peer) {
    ucred other{};
    socklen_t length = sizeof other;
    return getsockopt(peer, SOL_SOCKET, SO_PEERCRED, &other, &length) == 0 && other.uid == geteuid();
}

void WaitAtMost(int handle, const timeval &time) {
    setsockopt(handle, SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time);
    setsockopt(handle, SOL_SOCKET, SO_SNDTIMEO, &time, sizeof time);
}

bool Send(int handle, std::string_view bytes) {
    return send(handle, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
}

} // namespace

bool HandOver(const std::string &directory, const std::string &report) {
    const Address address = AddressOf(directory);
    const Socket peer(NewSocket(0));
    if (peer < 0 || address.Length == 0) return false;
    WaitAtMost(peer, TimeToAnswer);
    if (connect(peer, reinterpret_cast<const sockaddr *>(&address.Name), address.Length) != 0) return false;
    const char *const activation = std::getenv("XDG_ACTIVATION_TOKEN");
    const std::string packet = report + Separator + (activation == nullptr ? "" : activation) + Separator;
    if (!IsThisUsers(peer) || !Send(peer, packet)) return false;
    char answer = 0;
    return recv(peer, &answer, 1, 0) == 1 && answer == Taken;
}

int ListenForRequests(const std::string &directory) {
    StopListening();
    const Address address = AddressOf(directory);
    Listener = NewSocket(SOCK_NONBLOCK);
    if (address.Length == 0 || bind(Listener, reinterpret_cast<const sockaddr *>(&address.Name), address.Length) != 0 ||
        listen(Listener, MostWaiting) != 0)
        StopListening();
    return Listener;
}

void StopListening() {
    if (Listener >= 0) close(Listener);
    Listener = -1;
}

std::optional<Request> TakeRequest(int listener) {
    const Socket peer(accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
    if (peer < 0 || !IsThisUsers(peer)) return std::nullopt;
    WaitAtMost(peer, TimeToSend);
    std::string bytes(Longest, '\0');
    const ssize_t length = recv(peer, bytes.data(), bytes.size(), MSG_TRUNC);
    if (length < 2 || length > static_cast<ssize_t>(Longest)) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(length));
    const std::size_t first = bytes.find(Separator);
    if (first + 1 >= bytes.size() || bytes.back() != Separator) return std::nullopt;
    Request request{bytes.substr(0, first), bytes.substr(first + 1, bytes.size() - first - 2)};
    // Who has gone without waiting for the answer has told his user that nothing came of it.
    if (!Send(peer, {&Taken, 1})) return std::nullopt;
    return request;
}
