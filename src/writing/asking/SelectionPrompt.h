#pragma once

#include "backend/api/AIAnalysis.h"

#include <QCoroTask>
#include <QString>

#include <stop_token>

namespace vorq {

class AccountSession;
class VorqAPIService;

/// Asks the backend about a selection, in the name of who is signed in and of the model that they
/// prefer by now. Throws what the call does, and OperationCancelled once it is stopped. Both must
/// outlive it. Main thread only.
QCoro::Task<AIAnalysis> askAboutSelection(AccountSession& account, VorqAPIService& api,
                                          QString prompt, QString selection, std::stop_token stop);

} // namespace vorq
