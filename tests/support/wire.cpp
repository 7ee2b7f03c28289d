#include "tests/support/wire.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <stdexcept>
#include <utility>
#include <vector>

namespace veldona::test {
namespace {

constexpr const char* kSocket = "/.s.PGSQL.5432";

sockaddr_un addressOf(const std::string& folder) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = folder + kSocket;
    if (path.size() >= sizeof address.sun_path) throw std::runtime_error("too long for a socket: " + path);
    path.copy(address.sun_path, path.size());
    return address;
}

int openSocket() {
    const int made = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (made < 0) throw std::runtime_error("no socket for the wire");
    return made;
}

std::uint32_t lengthAt(std::string_view bytes, std::size_t at) {
    std::uint32_t length = 0;
    for (std::size_t i = 0; i < 4; ++i)
        length = length << 8 | static_cast<unsigned char>(bytes[at + i]);
    return length;
}

} // namespace

Wire::Wire(std::string server, std::chrono::microseconds roundTrip)
    : server_(std::move(server)), oneWay_(roundTrip / 2), listener_(openSocket()),
      wakeUp_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    const sockaddr_un address = addressOf(folder());
    if (bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener_, 16) != 0)
        throw std::runtime_error("the wire has no socket");
    thread_ = std::thread([this] { run(); });
}

Wire::~Wire() {
    over_ = true;
    wake();
    thread_.join();
    ::close(listener_);
    ::close(wakeUp_);
}

void Wire::wake() const {
    const std::uint64_t one = 1;
    static_cast<void>(!::write(wakeUp_, &one, sizeof one));
}

void Wire::cutAt(int nth, std::function<void()> meanwhile) {
    cutAt_ = 0;
    where_ = false;
    messages_ = 0;
    cut_ = false;
    meanwhile_ = std::move(meanwhile);
    cutAt_ = nth;
}

void Wire::cutWhere(const std::string& words, Loses loses, std::function<void()> meanwhile) {
    cutAt(0, std::move(meanwhile));
    words_ = words;
    loses_ = loses;
    wasSaid_ = false;
    where_ = true;
}

bool Wire::isWhere(const Direction& direction, std::string_view message) {
    if (!where_) return false;
    if (!direction.isFromClient) return wasSaid_;
    const bool isSaid = message.find(words_) != message.npos;
    wasSaid_ = wasSaid_ || isSaid;
    return isSaid && loses_ == Loses::Message;
}

void Wire::setDown(bool down) {
    down_ = down;
    wake();
}

void Wire::accept() {
    const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (client < 0) return;
    const int server = openSocket();
    const sockaddr_un address = addressOf(server_);
    if (down_ || ::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        ::close(client);
        ::close(server);
        return;
    }
    Pair& pair = pairs_.emplace_back();
    pair.toServer.from = pair.toClient.to = client;
    pair.toServer.to = pair.toClient.from = server;
    pair.toServer.isFromClient = true;
    pair.toClient.begun = true;
}

// Takes the whole messages off what has arrived; true where the one behind them is to be cut.
bool Wire::isCutBehind(Direction& direction, std::string& whole) {
    std::string& arriving = direction.arriving;
    std::size_t at = 0;
    bool isCut = false;
    while (!isCut) {
        const std::size_t letter = direction.begun ? 1 : 0;
        if (arriving.size() < at + letter + 4) break;
        const std::size_t end = at + letter + lengthAt(arriving, at + letter);
        if (arriving.size() < end) break;
        isCut = ++messages_ == cutAt_ || isWhere(direction, std::string_view(arriving).substr(at, end - at));
        if (isCut) break;
        direction.begun = true;
        at = end;
    }
    whole = arriving.substr(0, at);
    arriving.erase(0, at);
    return isCut;
}

void Wire::takeIn(Pair& pair, Direction& direction) {
    char bytes[1 << 16];
    const ssize_t got = ::recv(direction.from, bytes, sizeof bytes, MSG_DONTWAIT);
    if (got < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (got <= 0) {
        pair.ends = true;
        return;
    }
    if (direction.isFromClient && pair.wasAnswered) ++trips_;
    pair.wasAnswered = !direction.isFromClient;
    direction.arriving.append(bytes, static_cast<std::size_t>(got));
    Packet packet{Clock::now() + oneWay_, {}};
    const bool isCut = isCutBehind(direction, packet.bytes);
    if (!packet.bytes.empty()) direction.underWay.push_back(std::move(packet));
    if (!isCut) return;
    where_ = false;
    if (meanwhile_) meanwhile_();
    cut_ = true;
    pair.ends = true;
}

void Wire::deliver(Pair& pair, Direction& direction) {
    while (!direction.underWay.empty() && direction.underWay.front().due <= Clock::now()) {
        const std::string& bytes = direction.underWay.front().bytes;
        const ssize_t sent = ::send(direction.to, bytes.data() + direction.sent,
                                    bytes.size() - direction.sent, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent < 0 && (errno == EAGAIN || errno == EINTR)) return;
        if (sent < 0) { // nobody is there to take it
            pair.ends = true;
            direction.underWay.clear();
            return;
        }
        direction.sent += static_cast<std::size_t>(sent);
        if (direction.sent < bytes.size()) continue;
        direction.sent = 0;
        direction.underWay.pop_front();
    }
}

// A second where nothing is under way: who wants something wakes us.
timespec Wire::untilNext() const {
    auto next = Clock::now() + std::chrono::seconds(1);
    for (const Pair& pair : pairs_)
        for (const Direction* direction : {&pair.toServer, &pair.toClient})
            if (!direction->underWay.empty()) next = std::min(next, direction->underWay.front().due);
    const auto left = std::max(next - Clock::now(), Clock::duration(0));
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    return {seconds.count(), std::chrono::nanoseconds(left - seconds).count()};
}

void Wire::run() {
    prctl(PR_SET_TIMERSLACK, 1); // the usual 50 µs would be a fifth of the way
    while (!over_) {
        std::vector<pollfd> sockets = {{listener_, POLLIN, 0}, {wakeUp_, POLLIN, 0}};
        for (const Pair& pair : pairs_) {
            if (pair.ends) continue;
            sockets.push_back({pair.toServer.from, POLLIN, 0});
            sockets.push_back({pair.toClient.from, POLLIN, 0});
        }
        const timespec wait = untilNext();
        ppoll(sockets.data(), sockets.size(), &wait, nullptr);
        std::uint64_t woken = 0;
        static_cast<void>(!::read(wakeUp_, &woken, sizeof woken));
        if (sockets[0].revents != 0) accept();
        for (auto pair = pairs_.begin(); pair != pairs_.end();) {
            for (Direction* direction : {&pair->toServer, &pair->toClient}) {
                if (!pair->ends) takeIn(*pair, *direction);
                deliver(*pair, *direction);
            }
            const bool isEmpty = pair->toServer.underWay.empty() && pair->toClient.underWay.empty();
            if (!down_ && !(pair->ends && isEmpty)) {
                ++pair;
                continue;
            }
            ::close(pair->toServer.from);
            ::close(pair->toServer.to);
            pair = pairs_.erase(pair);
        }
    }
    for (const Pair& pair : pairs_) {
        ::close(pair.toServer.from);
        ::close(pair.toServer.to);
    }
}

} // namespace veldona::test
