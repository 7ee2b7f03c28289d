// The way between a program and the server of its books, on a socket of its own: it can be as long as a
// network's, and can break between any two messages.
#pragma once

#include <atomic>
#include <chrono>
#include <deque>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <thread>

#include "tests/support/files.h"

namespace veldona::test {

class Wire {
public:
    // `server`: the folder in which the server's socket lies. `roundTrip`: what a question and its answer
    // take longer than without the wire.
    explicit Wire(std::string server, std::chrono::microseconds roundTrip = {});
    ~Wire();
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;

    // What stands for the server's folder: host=… of who comes this way.
    [[nodiscard]] std::string folder() const { return folder_.path().string(); }

    // The nth message from now on, of either side and of any connection, does not arrive: those before it do,
    // then the connection is gone, when `meanwhile` has run on the wire's own thread. 0: none is cut.
    void cutAt(int nth, std::function<void()> meanwhile = {});
    // The same, with the client's next message that holds `words`, or with the first of what answers it.
    enum class Loses { Message, Answer };
    void cutWhere(const std::string& words, Loses loses, std::function<void()> meanwhile = {});
    [[nodiscard]] int messages() const { return messages_; } // since the last cutAt
    // How often a side that had been told something spoke to the server: each is a trip there and back.
    [[nodiscard]] int trips() const { return trips_; }
    [[nodiscard]] bool hasCut() const { return cut_; } // likewise
    // While it is down every connection is gone and none is made.
    void setDown(bool down);

private:
    using Clock = std::chrono::steady_clock;
    struct Packet {
        Clock::time_point due;
        std::string bytes;
    };
    struct Direction {
        int from = -1, to = -1;
        bool isFromClient = false;
        bool begun = false;   // a client's first message has no letter before its length
        std::string arriving; // less than a message
        std::deque<Packet> underWay;
        std::size_t sent = 0; // of the first packet
    };
    struct Pair {
        Direction toServer, toClient;
        bool wasAnswered = true;
        bool ends = false; // nothing is taken in any more; it closes when all has arrived
    };

    void run();
    void accept();
    void takeIn(Pair& pair, Direction& direction);
    [[nodiscard]] bool isCutBehind(Direction& direction, std::string& whole);
    [[nodiscard]] bool isWhere(const Direction& direction, std::string_view message);
    void deliver(Pair& pair, Direction& direction);
    [[nodiscard]] timespec untilNext() const;
    void wake() const;

    std::string server_;
    std::chrono::microseconds oneWay_;
    TemporaryFolder folder_;
    int listener_ = -1, wakeUp_ = -1;
    std::list<Pair> pairs_; // of the wire's own thread
    std::atomic<int> messages_ = 0, trips_ = 0, cutAt_ = 0;
    std::function<void()> meanwhile_; // set while nothing is to be cut
    std::string words_;               // likewise
    Loses loses_ = Loses::Message;
    bool wasSaid_ = false;
    std::atomic<bool> where_ = false;
    std::atomic<bool> cut_ = false, down_ = false, over_ = false;
    std::thread thread_;
};

} // namespace veldona::test
