// "Yedek Al": the places that a backup can go to, of which one is chosen, and the backup itself.
//
// The places are the usual folder, the one that the last backup went to, the disks that are plugged in, and
// what the operator adds. A disk gets a folder of its own, so that the backups do not lie among other files.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/controls/forms.h"
#include "platform/controls/lists.h"

namespace veldona {

struct Session;

struct FrmYedek : Form {
    FrmYedek(Forms& forms, Session& itsSession);

    Session& session;

    Label lblSonYedek{*this, "lblSonYedek"}; // when the last one was taken
    ListBox lstYer{*this, "lstYer"};         // the places: name and free room
    CommandButton cmdBaskaKlasor{*this, "cmdBaskaKlasor", "&Başka Klasör..."};
    Label lblKlasor{*this, "lblKlasor"}; // the whole path of the chosen place
    CommandButton cmdYedekAl{*this, "cmdYedekAl", "&Yedek Al"};
    CommandButton cmdCikis{*this, "cmdCikis", "&Çıkış"};

    std::vector<std::string> shownFolders; // of the rows of lstYer
};

[[nodiscard]] std::unique_ptr<Form> makeFrmYedek(Forms& forms, Session& session);

} // namespace veldona
