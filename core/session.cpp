#include "core/session.h"

#include "core/showscreen.h"
#include "platform/controls/forms.h"
#include "platform/desktop/desktop.h"
#include "platform/report/page.h"
#include "platform/store/engine/openplace.h"
#include "platform/store/faces/adodb.h"
#include "schema/tables.h"

namespace veldona {

Session::Session(Desktop& itsDesktop, Forms& itsForms)
    : desktop(itsDesktop), forms(itsForms),
      workspace(
          {.toNativePath = [&itsDesktop](std::string_view path) { return itsDesktop.paths.toNative(path); },
           .place = store::placeOf,
           .dataSource = [&itsDesktop](std::string_view name) { return itsDesktop.dataSources.find(name); },
           .clock = [&itsDesktop] { return itsDesktop.clock.now(); },
           .delivered = schema::delivered(),
           .goOnWaiting = [&itsDesktop](auto waited) { return itsDesktop.events.goOnWaiting(waited); }}),
      dbEngine(workspace) {}

Session::~Session() = default;

void showScreen(Session& session, std::string_view name, Kip kip) {
    session.forms.show(name, kip);
}

} // namespace veldona
