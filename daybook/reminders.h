// To customers who are behind: a letter on a page each, or a file of message texts for whatever sends them.
//
// What is written about an account is what is overdue of all its sales; one with nothing overdue gets
// neither. Both texts are layouts that a shop may edit: "HatirlatmaMektubu" and "HatirlatmaMesaji".
#pragma once

#include <string>
#include <vector>

namespace veldona {

struct Session;

// Shows the letters to these accounts, in their order. Where nobody is left to write to, that is told.
void showReminderLetters(Session& session, const std::vector<std::string>& accounts);

// Writes telephone and text of each as a file of comma separated values below \aktar, and says where. Who has
// no mobile telephone is left out, and counted.
void writeReminderMessages(Session& session, const std::vector<std::string>& accounts);

} // namespace veldona
