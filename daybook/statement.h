// A customer's account on paper: each sale with its goods, plan, payments and balance, what is overdue by
// age, and the closing balance.
//
// A sale's balance is that of the ledger (lines less discount less payments, each to the kuruş), what is
// overdue that of arrears.h. A sale stands here also where only its plan or its payments are left.
#pragma once

#include <string>

namespace veldona {

struct Session;

enum class StatementNotes { None, Last };

// Shows the statement of an account, on request with the last notes of calls. An account that nobody has is
// told of.
void showStatement(Session& session, const std::string& account, StatementNotes notes);

} // namespace veldona
