#pragma once

#include "engine/Engine.h"
#include "provider/ProviderConfig.h"

namespace vorq::gateway {

/// How a transfer ended, as libcurl tells it.
struct TransferEnd {
    /// A CURLcode other than CURLE_OK.
    int code = 0;
    /// CURLINFO_SSL_VERIFYRESULT.
    long verification = 0;
    bool anythingArrived = false;
};

/// The sentence for a transfer that failed, with what the user can do about it.
[[nodiscard]] EngineError transferFailure(const ProviderConfig& config, const TransferEnd& end);

} // namespace vorq::gateway
