// Every screen of the program, known to the registry by its name.
#pragma once

namespace veldona {

class Forms;
struct Session;

void registerScreens(Forms& forms, Session& session);

} // namespace veldona
