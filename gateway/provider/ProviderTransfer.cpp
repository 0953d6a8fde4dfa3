#include "provider/ProviderTransfer.h"

#include "provider/LocalAddress.h"
#include "provider/ProviderError.h"
#include "provider/ProviderFailure.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <mutex>
#include <new>
#include <string_view>
#include <utility>

namespace vorq::gateway {
namespace {

using Steady = std::chrono::steady_clock;

/// More than that waits at the provider until somebody reads.
constexpr std::size_t kMostBuffered = std::size_t{1} * 1024 * 1024;
/// An error document is short; no more of it is read for its message.
constexpr std::size_t kLongestRefusal = std::size_t{64} * 1024;
/// Of all headers and trailers together; trailers could go on without an end.
constexpr std::size_t kMostHeaders = std::size_t{256} * 1024;

/// Longer requests are on their way for a time that can be felt.
constexpr std::size_t kShortRequest = std::size_t{64} * 1024;
/// The system may hold back that much of a request: what it holds counts as sent.
constexpr int kMostUnsent = 128 * 1024;

struct EasyCleanup {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
struct ListCleanup {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using HeaderList = std::unique_ptr<curl_slist, ListCleanup>;

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

HeaderList headersFor(const ProviderConfig& config) {
    HeaderList list;
    append(list, "Content-Type: application/json");
    append(list, "Accept: text/event-stream, application/json");
    append(list, "Expect:");
    if (const std::string line = keyLine(config); !line.empty()) append(list, line);
    return list;
}

} // namespace

/// What the loop's thread and the reader share.
class ProviderTransfer::State final : public LoopTransfer {
  public:
    State(const ProviderConfig& config, std::string body);

    [[nodiscard]] CURL* handle() override { return easy_.get(); }
    void handleEnd(CURLcode result) override;

    void setCaller(std::function<void()> call);
    /// `mustResume` tells that the loop waits for room, which there is now.
    [[nodiscard]] std::optional<std::string> read(SteadyTime now, bool& mustResume);
    [[nodiscard]] SteadyTime deadline() const;
    void noteReplyBegan();
    void keepQuietUntil(SteadyTime time);

  private:
    static std::size_t onBody(char* data, std::size_t, std::size_t size, void* self);
    static std::size_t onHeader(char* data, std::size_t, std::size_t size, void* self);
    static int onProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t uploaded);
    static int onSocket(void*, curl_socket_t socket, curlsocktype);
    void setOptions();
    void watchUpload();
    void touch();
    void callReader();
    [[nodiscard]] SteadyTime limit() const;
    [[nodiscard]] bool isRefused() const;
    [[noreturn]] void fail() const;

    const ProviderConfig& config_;
    const std::string body_;
    const HeaderList headers_;
    std::unique_ptr<CURL, EasyCleanup> easy_;

    mutable std::mutex mutex_;
    std::function<void()> call_;
    SteadyTime quietUntil_ = SteadyTime::min();
    SteadyTime lastActivity_ = Steady::now();
    curl_off_t uploaded_ = 0;
    std::string arrived_;
    long status_ = 0;
    std::size_t headerBytes_ = 0;
    CURLcode result_ = CURLE_OK;
    long verification_ = 0;
    bool anythingArrived_ = false;
    bool replyBegan_ = false;
    bool headersDone_ = false;
    bool lacksMemory_ = false;
    bool paused_ = false;
    bool ended_ = false;
};

ProviderTransfer::State::State(const ProviderConfig& config, std::string body)
    : config_(config),
      body_(std::move(body)),
      headers_(headersFor(config)),
      easy_(curl_easy_init()) {
    if (!easy_) throw std::bad_alloc();
    setOptions();
}

void ProviderTransfer::State::setOptions() {
    CURL* easy = easy_.get();
    curl_easy_setopt(easy, CURLOPT_URL, config_.endpoint.c_str());
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    // A name that is never answered would else hold up the loop, and with it all replies.
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
    // Replies that share a connection would wait for the one that is read most slowly.
    curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(easy, CURLOPT_POSTFIELDS, body_.data());
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body_.size()));
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers_.get());
    curl_easy_setopt(easy, CURLOPT_USERAGENT, "vorq-gateway");
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS,
                     static_cast<long>(config_.connectTimeout.count()));
    // A provider on this computer is never behind a proxy.
    if (leadsToThisComputer(config_.endpoint)) curl_easy_setopt(easy, CURLOPT_PROXY, "");
    if (!config_.caFile.empty()) curl_easy_setopt(easy, CURLOPT_CAINFO, config_.caFile.c_str());
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &State::onBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &State::onHeader);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
    // For short requests too: a long one may come after them on the same connection.
    curl_easy_setopt(easy, CURLOPT_SOCKOPTFUNCTION, &State::onSocket);
    if (body_.size() > kShortRequest) watchUpload();
}

void ProviderTransfer::State::watchUpload() {
    CURL* easy = easy_.get();
    curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(easy, CURLOPT_XFERINFOFUNCTION, &State::onProgress);
    curl_easy_setopt(easy, CURLOPT_XFERINFODATA, this);
}

/// A provider that takes the request in is not silent.
int ProviderTransfer::State::onProgress(void* self, curl_off_t, curl_off_t, curl_off_t,
                                        curl_off_t uploaded) {
    auto& state = *static_cast<State*>(self);
    if (uploaded == state.uploaded_) return 0;
    const std::scoped_lock lock(state.mutex_);
    state.uploaded_ = uploaded;
    state.lastActivity_ = Steady::now();
    return 0;
}

int ProviderTransfer::State::onSocket(void*, curl_socket_t socket, curlsocktype) {
    // A system without it holds more back, for which the provider has less time to answer.
    static_cast<void>(
        setsockopt(socket, IPPROTO_TCP, TCP_NOTSENT_LOWAT, &kMostUnsent, sizeof kMostUnsent));
    return CURL_SOCKOPT_OK;
}

void ProviderTransfer::State::touch() {
    lastActivity_ = Steady::now();
    anythingArrived_ = true;
    curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status_);
}

/// Called with the lock held; the call itself may take no lock of ours.
void ProviderTransfer::State::callReader() {
    if (call_ && (ended_ || Steady::now() >= quietUntil_)) call_();
}

std::size_t ProviderTransfer::State::onBody(char* data, std::size_t, std::size_t size, void* self) {
    auto& state = *static_cast<State*>(self);
    const std::scoped_lock lock(state.mutex_);
    if (!state.arrived_.empty() && state.arrived_.size() + size > kMostBuffered) {
        state.paused_ = true;
        return CURL_WRITEFUNC_PAUSE;
    }
    state.touch();
    state.headersDone_ = true;
    try {
        state.arrived_.append(data, size);
    } catch (const std::bad_alloc&) {
        state.lacksMemory_ = true;
        return 0; // ends the transfer; nothing may be thrown through C code
    }
    state.callReader();
    return size;
}

std::size_t ProviderTransfer::State::onHeader(char* data, std::size_t, std::size_t size,
                                              void* self) {
    auto& state = *static_cast<State*>(self);
    const std::scoped_lock lock(state.mutex_);
    state.headerBytes_ += size;
    if (state.headerBytes_ > kMostHeaders) return 0;
    state.touch();
    // The blank line behind the headers; those of an interim "100 Continue" do not count.
    const bool isEnd = std::string_view(data, size) == "\r\n";
    if (isEnd && state.status_ >= 200) state.headersDone_ = true;
    return size;
}

void ProviderTransfer::State::handleEnd(CURLcode result) {
    const std::scoped_lock lock(mutex_);
    ended_ = true;
    result_ = lacksMemory_ ? CURLE_OUT_OF_MEMORY : result;
    curl_easy_getinfo(easy_.get(), CURLINFO_SSL_VERIFYRESULT, &verification_);
    callReader();
}

void ProviderTransfer::State::setCaller(std::function<void()> call) {
    const std::scoped_lock lock(mutex_);
    call_ = std::move(call);
    callReader();
}

bool ProviderTransfer::State::isRefused() const {
    return headersDone_ && (status_ < 200 || status_ >= 300);
}

void ProviderTransfer::State::fail() const {
    if (result_ == CURLE_OUT_OF_MEMORY) throw std::bad_alloc();
    throw transferFailure(
        config_,
        {.code = result_, .verification = verification_, .anythingArrived = anythingArrived_});
}

std::optional<std::string> ProviderTransfer::State::read(SteadyTime now, bool& mustResume) {
    const std::scoped_lock lock(mutex_);
    if (isRefused()) {
        if (ended_ || arrived_.size() >= kLongestRefusal) {
            throw refused(config_, status_, arrived_);
        }
    } else if (!arrived_.empty()) {
        mustResume = std::exchange(paused_, false);
        // Until now it was this side that was silent.
        if (mustResume) lastActivity_ = now;
        return std::exchange(arrived_, {});
    }
    if (ended_ && result_ != CURLE_OK) fail();
    if (ended_) return std::nullopt;
    if (now > limit()) throw tooSlow(config_);
    return std::string();
}

SteadyTime ProviderTransfer::State::limit() const {
    return lastActivity_ + (replyBegan_ ? config_.idleTimeout : config_.replyTimeout);
}

SteadyTime ProviderTransfer::State::deadline() const {
    const std::scoped_lock lock(mutex_);
    return limit();
}

void ProviderTransfer::State::noteReplyBegan() {
    const std::scoped_lock lock(mutex_);
    replyBegan_ = true;
}

void ProviderTransfer::State::keepQuietUntil(SteadyTime time) {
    const std::scoped_lock lock(mutex_);
    quietUntil_ = time;
}

ProviderTransfer::ProviderTransfer(TransferLoop& loop, const ProviderConfig& config,
                                   std::string body)
    : loop_(loop), state_(std::make_shared<State>(config, std::move(body))) {
    loop_.start(state_);
}

ProviderTransfer::~ProviderTransfer() {
    state_->setCaller({});
    loop_.drop(*state_);
}

void ProviderTransfer::setCaller(std::function<void()> call) {
    state_->setCaller(std::move(call));
}

std::optional<std::string> ProviderTransfer::read(SteadyTime now) {
    bool mustResume = false;
    std::optional<std::string> arrived = state_->read(now, mustResume);
    if (mustResume) loop_.resume(state_);
    return arrived;
}

SteadyTime ProviderTransfer::deadline() const {
    return state_->deadline();
}

void ProviderTransfer::noteReplyBegan() {
    state_->noteReplyBegan();
}

void ProviderTransfer::keepQuietUntil(SteadyTime time) {
    state_->keepQuietUntil(time);
}

} // namespace vorq::gateway
