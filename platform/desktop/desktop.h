// What a program may ask of the desktop around it, handed to the session in one piece.
#pragma once

#include <chrono>
#include <string>

#include "platform/desktop/clock.h"
#include "platform/desktop/dialogs.h"
#include "platform/desktop/keystore.h"
#include "platform/desktop/media.h"
#include "platform/desktop/paths.h"
#include "platform/desktop/sidework.h"
#include "platform/desktop/system.h"
#include "platform/desktop/waitnote.h"

namespace veldona {

// Lets waiting events run in the middle of a long procedure.
class EventPump {
public:
    virtual ~EventPump() = default;
    virtual void doEvents() {}
    // Asked every few milliseconds while a statement waits for another workstation, with how long it has;
    // false gives the wait up. Nothing of the program's may run in it.
    virtual bool goOnWaiting(std::chrono::milliseconds) { return true; }
};

// Hands a file or a program to the desktop, as a double click would.
class Opener {
public:
    virtual ~Opener() = default;
    virtual bool open(const std::string& nativePath) = 0;
};

struct Desktop {
    Clock& clock;
    Dialogs& dialogs;
    EventPump& events;
    Opener& opener;
    Paths paths;
    SystemLocale locale;
    DataSources dataSources;
    WaitNote* waitNote = nullptr; // nothing where nobody looks on
    SideWork* sideWork = nullptr; // nothing: such work is done in the event that asks for it
    Media* media = nullptr;       // nothing: no disk is known
    KeyStore* keys = nullptr;     // nothing: no password is kept
};

} // namespace veldona
