// Every screen of the program, known to the registry by its name.
#pragma once

#include <memory>

namespace veldona {

class Forms;
class ShopReckoning;
struct Session;

// What the screens keep of the shop is returned, for whoever reads it ahead.
std::shared_ptr<ShopReckoning> registerScreens(Forms& forms, Session& session);

} // namespace veldona
