#pragma once

#include <string>

namespace vorq::gateway {

/// Leads back to the program.
struct HandoffView {
    std::string email; ///< empty where the user declined
    /// The program's own scheme: a link to press.
    std::string schemeAddress;
    /// The program's listener, to which the browser goes by itself; empty for none.
    std::string listenerAddress = {};
};

[[nodiscard]] std::string handoffPage(const HandoffView& view);

/// For a browser that another page has led here: nothing happens until the user says so.
[[nodiscard]] std::string confirmHandoffPage(const std::string& email, const std::string& client);

} // namespace vorq::gateway
