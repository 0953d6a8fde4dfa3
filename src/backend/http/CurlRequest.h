#pragma once

#include "backend/http/HttpTransport.h"
#include "backend/http/LibCurl.h"

#include <memory>

namespace vorq {

/// A request as libcurl wants it: a handle with the address, the headers, the body and the rules
/// that hold for every request. Where the response goes is left to the owner.
class CurlRequest {
  public:
    /// Throws TransferError for what cannot be sent, such as a header with a line break.
    explicit CurlRequest(HttpRequest request);

    [[nodiscard]] CURL* handle() const { return m_easy.get(); }

    /// Throws TransferError.
    template<typename Value>
    void set(CURLoption option, Value value) {
        check(LibCurl::get().easySetopt(handle(), option, value));
    }

  private:
    struct Release {
        void operator()(CURL* easy) const { LibCurl::get().easyCleanup(easy); }
        void operator()(curl_slist* list) const { LibCurl::get().slistFreeAll(list); }
    };

    static void check(CURLcode result);
    void setRules();
    void setRoute();
    void setMethod();
    void setHeaders();
    void addHeader(const QByteArray& line);
    [[nodiscard]] bool hasHeader(QByteArrayView name) const;

    HttpRequest m_request;
    std::unique_ptr<curl_slist, Release> m_headers;
    std::unique_ptr<CURL, Release> m_easy;
};

} // namespace vorq
