#pragma once

#include "http/Api.h"

#include <boost/beast/http/message.hpp>

#include <string_view>

namespace vorq::gateway {

/// What every answer of that type says of itself. A page names all that it may load and where it
/// may lead, and is shown in no frame.
void setFields(boost::beast::http::response_header<>& head, std::string_view contentType);

/// All fields of a whole answer but its length.
void setFields(boost::beast::http::response_header<>& head, const HttpAnswer& answer);

} // namespace vorq::gateway
