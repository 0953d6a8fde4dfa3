#include "doubles/gateway/BrowserDouble.h"

#include "support/UrlText.h"

#include <regex>

namespace vorq::gateway::testing {

std::string ShownPage::hidden(const std::string& name) const {
    const std::regex field("type=\"hidden\" name=\"" + name + "\" value=\"([^\"]*)\"");
    std::smatch match;
    return std::regex_search(html, match, field) ? match[1].str() : std::string();
}

std::string encodedForm(const BrowserDouble::Form& fields) {
    std::string text;
    for (const auto& [name, value] : fields)
        text += (text.empty() ? "" : "&") + urlEscaped(name) + "=" + urlEscaped(value);
    return text;
}

httplib::Headers BrowserDouble::headers() const {
    httplib::Headers all = additional;
    all.emplace("Accept", "text/html");
    std::string text;
    for (const auto& [name, value] : cookies)
        text += (text.empty() ? "" : "; ") + name + "=" + value;
    if (!text.empty()) all.emplace("Cookie", text);
    return all;
}

ShownPage BrowserDouble::keep(const httplib::Result& result) {
    if (!result) return {};
    const auto [begin, end] = result->headers.equal_range("Set-Cookie");
    for (auto entry = begin; entry != end; ++entry) {
        const std::string pair = entry->second.substr(0, entry->second.find(';'));
        const std::size_t equals = pair.find('=');
        const std::string value = pair.substr(equals + 1);
        if (value.empty()) {
            cookies.erase(pair.substr(0, equals));
        } else {
            cookies[pair.substr(0, equals)] = value;
        }
    }
    return {.status = result->status,
            .html = result->body,
            .location = result->get_header_value("Location"),
            .headers = result->headers};
}

ShownPage BrowserDouble::get(const std::string& address) {
    httplib::Client client("127.0.0.1", m_port);
    client.set_read_timeout(60);
    return keep(client.Get(address, headers()));
}

ShownPage BrowserDouble::post(const std::string& action, const Form& fields) {
    httplib::Client client("127.0.0.1", m_port);
    client.set_read_timeout(60);
    return keep(
        client.Post(action, headers(), encodedForm(fields), "application/x-www-form-urlencoded"));
}

ShownPage BrowserDouble::submit(const ShownPage& page, const std::string& action,
                                const Form& fields) {
    Form all;
    for (const char* name : {"token", "mode", "next", "client", "code"}) {
        const std::string value = page.hidden(name);
        if (!value.empty()) all.emplace(name, value);
    }
    for (const auto& [name, value] : fields)
        all.insert_or_assign(name, value);
    return post(action, all);
}

} // namespace vorq::gateway::testing
