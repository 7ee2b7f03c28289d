// Books that come to a server or leave it, whole or not at all, wherever the mover is killed.
//
// Two roles share a server. The owner makes tables and upgrades them; the tills are members of kTillRole,
// which may read and write rows and nothing else.
#pragma once

#include <memory>
#include <string>

#include "platform/store/dialect/definition.h"
#include "platform/store/engine/engine.h"
#include "platform/store/engine/place.h"

namespace veldona::store {

inline constexpr const char* kTillRole = "veldona_kasa";

class ServerSession; // the mover's own connection

// Whether books have the name of the place there.
[[nodiscard]] bool standOnServer(const ServerPlace& place);
// Raises StoreError where somebody has them open.
void requireClosed(const ServerPlace& place);

// Books that are being made on a server, aside, until they are given their name. What a killed run left of
// them goes at the next one's start.
class ServerDraft {
public:
    // Empty books, which nobody sees. `place`: as the owner. Raises StoreError, also where somebody else is
    // making books there, or where there is no role for the tills.
    ServerDraft(const ServerPlace& place, const Delivered& delivered);
    ~ServerDraft();
    ServerDraft(const ServerDraft&) = delete;
    ServerDraft& operator=(const ServerDraft&) = delete;

    [[nodiscard]] Engine& engine() { return *engine_; }
    // In one step: books that have the place's name get `former`, which the tills may not touch; these ones
    // get it. Raises StoreError, where `former` is empty also for books that have it. Where the connection is
    // lost meanwhile nobody knows which of the two: standOnServer tells.
    void giveName(const std::string& former = {});

private:
    void lockOutOthers();

    ServerPlace place_;
    std::unique_ptr<ServerSession> session_;
    std::unique_ptr<Engine> engine_;
    std::string tables_; // their names, parted by ","
    bool isNamed_ = false;
};

// The books of a server, held so that they can be carried away: all are read, nobody writes, until this goes.
class ServerHold {
public:
    // `place`: as the owner. Without delivered tables the books of any release. Raises StoreError where a
    // till has the books open.
    ServerHold(const ServerPlace& place, const Delivered& delivered);

    [[nodiscard]] Engine& engine() { return *engine_; }
    // Gives the books the name `former` and takes them from the tills. Raises StoreError.
    void setAside(const std::string& former);

private:
    ServerPlace place_;
    std::unique_ptr<Engine> engine_;
};

} // namespace veldona::store
