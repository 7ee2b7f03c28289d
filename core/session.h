// One run of the process: the values that all screens share, and the start that sets them.
//
// gHSTNO and gISLEMNO are the current customer and sale. gKullanici is the operator's name; nothing assigns
// it, so the columns that say who wrote a row stay empty. gBaglanti is opened once and never closed by code.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/formkayit.h"
#include "platform/store/faces/dao.h"
#include "platform/store/faces/workspace.h"

namespace veldona::adodb {
class Connection;
}

namespace veldona::report {
class ReportDesk;
struct Document;
} // namespace veldona::report

namespace veldona {

struct Desktop;
class Forms;
struct Message;

struct Session {
    Session(Desktop& itsDesktop, Forms& itsForms);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Desktop& desktop;
    Forms& forms;
    store::Workspace workspace;
    dao::DBEngine dbEngine;

    std::string gDosyaAdi;
    std::string gDsnAdi;
    std::string gSifre;
    std::string gVeritabaniYolu;
    std::uint32_t gLCID = 0;
    std::unique_ptr<adodb::Connection> gBaglanti;

    std::string gHSTNO;
    std::int32_t gISLEMNO = 0;
    std::string gKullanici;
    std::uint8_t gParaBirimi = 0;
    std::int32_t gKusuratModu = 0;
    FormKayit gFormKayit;

    std::vector<Message> deferredBoxes; // to be told behind the end of the open transaction

    std::string seenFile; // what this machine has seen of the books' journal; "": nobody keeps it
    // What is to be done when this run is over and has let go of the books, before the next one: set by a
    // screen that ends the run for it. Nothing of the session is left then.
    std::function<void(Desktop&)> behindTheEnd;

    report::ReportDesk* reportDesk = nullptr; // set before the start where there is anybody to show reports
    // The user's guide at the chapter of a screen; set before the start where there is anybody to show it.
    std::function<void(const std::string& screen)> showGuide;
    std::unique_ptr<report::Document> rapor; // what the viewer shows, as long as it is loaded

    // "MS Access;PWD=" and the password: what the file face wants to hear.
    [[nodiscard]] std::string connectText() const { return "MS Access;PWD=" + gSifre; }
};

} // namespace veldona
