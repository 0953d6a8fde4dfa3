#pragma once

#include <httplib.h>

#include <map>
#include <string>

namespace vorq::gateway::testing {

/// What a browser was given for a request.
struct ShownPage {
    int status = 0;
    std::string html;
    std::string location;
    httplib::Headers headers;

    /// The value of the first hidden field of that name; empty if there is none.
    [[nodiscard]] std::string hidden(const std::string& name) const;
};

/// Does what a browser does without scripts: keeps cookies, follows nothing by itself, and sends
/// forms with the token of the page they stand in.
class BrowserDouble {
  public:
    using Form = std::map<std::string, std::string>;

    explicit BrowserDouble(int port) : m_port(port) {}

    ShownPage get(const std::string& address);
    /// Posts the form with the fields that `page` hides, over which `fields` are laid.
    ShownPage submit(const ShownPage& page, const std::string& action, const Form& fields);
    /// Posts the fields as they are.
    ShownPage post(const std::string& action, const Form& fields);

    /// Of every request from now on.
    httplib::Headers additional;
    std::map<std::string, std::string> cookies;

  private:
    [[nodiscard]] httplib::Headers headers() const;
    ShownPage keep(const httplib::Result& result);

    int m_port;
};

/// What a browser sends for the fields.
[[nodiscard]] std::string encodedForm(const BrowserDouble::Form& fields);

} // namespace vorq::gateway::testing
