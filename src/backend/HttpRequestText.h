#pragma once

#include "backend/HttpTransport.h"

namespace vorq {

/// The request line and header of a request that is the only one on its connection. Throws
/// TransferError if a header cannot be written.
[[nodiscard]] QByteArray requestHead(const HttpRequest& request);

} // namespace vorq
