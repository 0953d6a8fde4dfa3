#include "provider/ProviderTransfer.h"

#include "provider/LocalAddress.h"
#include "provider/ProviderError.h"
#include "provider/ProviderFailure.h"

#include <curl/curl.h>

#include <mutex>
#include <new>
#include <utility>

namespace vorq::gateway {
namespace {

using Steady = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr std::size_t kMostBuffered = std::size_t{8} * 1024 * 1024;
constexpr milliseconds kSlice{50};
// Of all headers and trailers together; trailers could go on without an end.
constexpr std::size_t kMostHeaders = std::size_t{256} * 1024;

struct EasyCleanup {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
struct MultiCleanup {
    void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
};
struct ListCleanup {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using HeaderList = std::unique_ptr<curl_slist, ListCleanup>;

void initOnce() {
    static std::once_flag flag;
    std::call_once(flag, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

void append(HeaderList& list, const std::string& header) {
    curl_slist* longer = curl_slist_append(list.get(), header.c_str());
    if (longer == nullptr) throw std::bad_alloc();
    static_cast<void>(list.release());
    list.reset(longer);
}

/// Empty without a key.
std::string keyLine(const ProviderConfig& config) {
    if (config.key.empty()) return {};
    if (config.keyHeader.empty()) return "Authorization: Bearer " + config.key;
    return config.keyHeader + ": " + config.key;
}

} // namespace

struct ProviderTransfer::State {
    const ProviderConfig& config;
    std::string body;
    std::string received;
    HeaderList headers;
    std::unique_ptr<CURL, EasyCleanup> easy;
    std::unique_ptr<CURLM, MultiCleanup> multi;
    Steady::time_point lastActivity = Steady::now();
    std::size_t headerBytes = 0;
    bool anythingArrived = false;
    bool replyBegan = false;
    bool headersDone = false;
    bool finished = false;

    State(const ProviderConfig& c, std::string b) : config(c), body(std::move(b)) {}
    ~State() {
        if (multi && easy) curl_multi_remove_handle(multi.get(), easy.get());
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    void touch() {
        lastActivity = Steady::now();
        anythingArrived = true;
    }
    [[nodiscard]] long status() const {
        long value = 0;
        curl_easy_getinfo(easy.get(), CURLINFO_RESPONSE_CODE, &value);
        return value;
    }
    [[nodiscard]] bool isAccepted() const { return status() >= 200 && status() < 300; }

    static std::size_t onBody(char* data, std::size_t, std::size_t size, void* self) {
        auto& state = *static_cast<State*>(self);
        if (state.received.size() + size > kMostBuffered) return 0;
        state.touch();
        state.headersDone = true;
        state.received.append(data, size);
        return size;
    }
    static std::size_t onHeader(char* data, std::size_t, std::size_t size, void* self) {
        auto& state = *static_cast<State*>(self);
        state.headerBytes += size;
        if (state.headerBytes > kMostHeaders) return 0;
        state.touch();
        // The blank line behind the headers; those of an interim "100 Continue" do not count.
        const bool isEnd = std::string_view(data, size) == "\r\n";
        if (isEnd && state.status() >= 200) state.headersDone = true;
        return size;
    }
};

ProviderTransfer::ProviderTransfer(const ProviderConfig& config, std::string body)
    : state_(std::make_unique<State>(config, std::move(body))) {
    initOnce();
    state_->easy.reset(curl_easy_init());
    state_->multi.reset(curl_multi_init());
    if (!state_->easy || !state_->multi) throw std::bad_alloc();
    append(state_->headers, "Content-Type: application/json");
    append(state_->headers, "Accept: text/event-stream, application/json");
    append(state_->headers, "Expect:");
    if (const std::string line = keyLine(config); !line.empty()) append(state_->headers, line);
    CURL* easy = state_->easy.get();
    curl_easy_setopt(easy, CURLOPT_URL, config.endpoint.c_str());
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_POSTFIELDS, state_->body.data());
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE,
                     static_cast<curl_off_t>(state_->body.size()));
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, state_->headers.get());
    curl_easy_setopt(easy, CURLOPT_USERAGENT, "vorq-gateway");
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS,
                     static_cast<long>(config.connectTimeout.count()));
    // A provider on this computer is never behind a proxy.
    if (leadsToThisComputer(config.endpoint)) curl_easy_setopt(easy, CURLOPT_PROXY, "");
    if (!config.caFile.empty()) curl_easy_setopt(easy, CURLOPT_CAINFO, config.caFile.c_str());
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &State::onBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, state_.get());
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &State::onHeader);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, state_.get());
    curl_multi_add_handle(state_->multi.get(), easy);
}

ProviderTransfer::~ProviderTransfer() = default;

void ProviderTransfer::failFor(int code) const {
    long verification = 0;
    curl_easy_getinfo(state_->easy.get(), CURLINFO_SSL_VERIFYRESULT, &verification);
    throw transferFailure(
        state_->config,
        {.code = code, .verification = verification, .anythingArrived = state_->anythingArrived});
}

void ProviderTransfer::noteReplyBegan() {
    state_->replyBegan = true;
}

void ProviderTransfer::advance(milliseconds longest, const Cancelled& cancelled) {
    if (cancelled()) throw CancelledError();
    int running = 0;
    curl_multi_perform(state_->multi.get(), &running);
    if (state_->received.empty() && running > 0) {
        const milliseconds wait = std::min(longest, kSlice);
        curl_multi_poll(state_->multi.get(), nullptr, 0, static_cast<int>(wait.count()), nullptr);
        curl_multi_perform(state_->multi.get(), &running);
    }
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(state_->multi.get(), &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        state_->finished = true;
        if (message->data.result != CURLE_OK) failFor(message->data.result);
    }
    const milliseconds limit =
        state_->replyBegan ? state_->config.idleTimeout : state_->config.replyTimeout;
    if (!state_->finished && Steady::now() - state_->lastActivity > limit) {
        throw tooSlow(state_->config);
    }
}

void ProviderTransfer::awaitAcceptance(const Cancelled& cancelled) {
    while (!state_->headersDone && !state_->finished)
        advance(kSlice, cancelled);
    if (state_->isAccepted()) return;
    // An error document is short; it is read to its end for its message.
    constexpr std::size_t enough = std::size_t{64} * 1024;
    while (!state_->finished && state_->received.size() < enough) {
        const std::string soFar = std::exchange(state_->received, {});
        advance(kSlice, cancelled);
        state_->received.insert(0, soFar);
    }
    throw refused(state_->config, state_->status(), state_->received);
}

std::optional<std::string> ProviderTransfer::read(milliseconds longest,
                                                  const Cancelled& cancelled) {
    if (!state_->finished) advance(longest, cancelled);
    if (!state_->received.empty()) return std::exchange(state_->received, {});
    return state_->finished ? std::nullopt : std::optional<std::string>("");
}

} // namespace vorq::gateway
