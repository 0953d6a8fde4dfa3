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
    State(const ProviderConfig& config, std::optional<std::string> body);

    [[nodiscard]] CURL* handle() override { return m_easy.get(); }
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
    void setBody(const std::string& body);
    void watchUpload();
    void touch();
    void callReader();
    [[nodiscard]] SteadyTime limit() const;
    [[nodiscard]] bool isRefused() const;
    [[noreturn]] void fail() const;

    const ProviderConfig& m_config;
    const std::optional<std::string> m_body;
    const HeaderList m_headers;
    std::unique_ptr<CURL, EasyCleanup> m_easy;

    mutable std::mutex m_mutex;
    std::function<void()> m_call;
    SteadyTime m_quietUntil = SteadyTime::min();
    SteadyTime m_lastActivity = Steady::now();
    curl_off_t m_uploaded = 0;
    std::string m_arrived;
    long m_status = 0;
    std::size_t m_headerBytes = 0;
    CURLcode m_result = CURLE_OK;
    long m_verification = 0;
    bool m_anythingArrived = false;
    bool m_replyBegan = false;
    bool m_headersDone = false;
    bool m_lacksMemory = false;
    bool m_paused = false;
    bool m_ended = false;
};

ProviderTransfer::State::State(const ProviderConfig& config, std::optional<std::string> body)
    : m_config(config),
      m_body(std::move(body)),
      m_headers(headersFor(config)),
      m_easy(curl_easy_init()) {
    if (!m_easy) throw std::bad_alloc();
    setOptions();
}

void ProviderTransfer::State::setOptions() {
    CURL* easy = m_easy.get();
    curl_easy_setopt(easy, CURLOPT_URL, m_config.endpoint.c_str());
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    // A name that is never answered would else hold up the loop, and with it all replies.
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
    // Replies that share a connection would wait for the one that is read most slowly.
    curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, m_headers.get());
    curl_easy_setopt(easy, CURLOPT_USERAGENT, "vorq-gateway");
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS,
                     static_cast<long>(m_config.connectTimeout.count()));
    // A provider on this computer is never behind a proxy.
    if (leadsToThisComputer(m_config.endpoint)) curl_easy_setopt(easy, CURLOPT_PROXY, "");
    if (!m_config.caFile.empty()) curl_easy_setopt(easy, CURLOPT_CAINFO, m_config.caFile.c_str());
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &State::onBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &State::onHeader);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
    // For short requests too: a long one may come after them on the same connection.
    curl_easy_setopt(easy, CURLOPT_SOCKOPTFUNCTION, &State::onSocket);
    if (m_body) setBody(*m_body);
}

void ProviderTransfer::State::setBody(const std::string& body) {
    CURL* easy = m_easy.get();
    curl_easy_setopt(easy, CURLOPT_POSTFIELDS, body.data());
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    if (body.size() > kShortRequest) watchUpload();
}

void ProviderTransfer::State::watchUpload() {
    CURL* easy = m_easy.get();
    curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(easy, CURLOPT_XFERINFOFUNCTION, &State::onProgress);
    curl_easy_setopt(easy, CURLOPT_XFERINFODATA, this);
}

/// A provider that takes the request in is not silent.
int ProviderTransfer::State::onProgress(void* self, curl_off_t, curl_off_t, curl_off_t,
                                        curl_off_t uploaded) {
    auto& state = *static_cast<State*>(self);
    if (uploaded == state.m_uploaded) return 0;
    const std::scoped_lock lock(state.m_mutex);
    state.m_uploaded = uploaded;
    state.m_lastActivity = Steady::now();
    return 0;
}

int ProviderTransfer::State::onSocket(void*, curl_socket_t socket, curlsocktype) {
    // A system without it holds more back, for which the provider has less time to answer.
    static_cast<void>(
        setsockopt(socket, IPPROTO_TCP, TCP_NOTSENT_LOWAT, &kMostUnsent, sizeof kMostUnsent));
    return CURL_SOCKOPT_OK;
}

void ProviderTransfer::State::touch() {
    m_lastActivity = Steady::now();
    m_anythingArrived = true;
    curl_easy_getinfo(m_easy.get(), CURLINFO_RESPONSE_CODE, &m_status);
}

/// Called with the lock held; the call itself may take no lock of ours.
void ProviderTransfer::State::callReader() {
    if (m_call && (m_ended || Steady::now() >= m_quietUntil)) m_call();
}

std::size_t ProviderTransfer::State::onBody(char* data, std::size_t, std::size_t size, void* self) {
    auto& state = *static_cast<State*>(self);
    const std::scoped_lock lock(state.m_mutex);
    if (!state.m_arrived.empty() && state.m_arrived.size() + size > kMostBuffered) {
        state.m_paused = true;
        return CURL_WRITEFUNC_PAUSE;
    }
    state.touch();
    state.m_headersDone = true;
    try {
        state.m_arrived.append(data, size);
    } catch (const std::bad_alloc&) {
        state.m_lacksMemory = true;
        return 0; // ends the transfer; nothing may be thrown through C code
    }
    state.callReader();
    return size;
}

std::size_t ProviderTransfer::State::onHeader(char* data, std::size_t, std::size_t size,
                                              void* self) {
    auto& state = *static_cast<State*>(self);
    const std::scoped_lock lock(state.m_mutex);
    state.m_headerBytes += size;
    if (state.m_headerBytes > kMostHeaders) return 0;
    state.touch();
    // The blank line behind the headers; those of an interim "100 Continue" do not count.
    const bool isEnd = std::string_view(data, size) == "\r\n";
    if (isEnd && state.m_status >= 200) state.m_headersDone = true;
    return size;
}

void ProviderTransfer::State::handleEnd(CURLcode result) {
    const std::scoped_lock lock(m_mutex);
    m_ended = true;
    m_result = m_lacksMemory ? CURLE_OUT_OF_MEMORY : result;
    curl_easy_getinfo(m_easy.get(), CURLINFO_SSL_VERIFYRESULT, &m_verification);
    callReader();
}

void ProviderTransfer::State::setCaller(std::function<void()> call) {
    const std::scoped_lock lock(m_mutex);
    m_call = std::move(call);
    callReader();
}

bool ProviderTransfer::State::isRefused() const {
    return m_headersDone && (m_status < 200 || m_status >= 300);
}

void ProviderTransfer::State::fail() const {
    if (m_result == CURLE_OUT_OF_MEMORY) throw std::bad_alloc();
    throw transferFailure(
        m_config,
        {.code = m_result, .verification = m_verification, .anythingArrived = m_anythingArrived});
}

std::optional<std::string> ProviderTransfer::State::read(SteadyTime now, bool& mustResume) {
    const std::scoped_lock lock(m_mutex);
    if (isRefused()) {
        if (m_ended || m_arrived.size() >= kLongestRefusal) {
            throw refused(m_config, m_status, m_arrived);
        }
    } else if (!m_arrived.empty()) {
        mustResume = std::exchange(m_paused, false);
        // Until now it was this side that was silent.
        if (mustResume) m_lastActivity = now;
        return std::exchange(m_arrived, {});
    }
    if (m_ended && m_result != CURLE_OK) fail();
    if (m_ended) return std::nullopt;
    if (now > limit()) throw tooSlow(m_config);
    return std::string();
}

SteadyTime ProviderTransfer::State::limit() const {
    return m_lastActivity + (m_replyBegan ? m_config.idleTimeout : m_config.replyTimeout);
}

SteadyTime ProviderTransfer::State::deadline() const {
    const std::scoped_lock lock(m_mutex);
    return limit();
}

void ProviderTransfer::State::noteReplyBegan() {
    const std::scoped_lock lock(m_mutex);
    m_replyBegan = true;
}

void ProviderTransfer::State::keepQuietUntil(SteadyTime time) {
    const std::scoped_lock lock(m_mutex);
    m_quietUntil = time;
}

ProviderTransfer::ProviderTransfer(TransferLoop& loop, const ProviderConfig& config,
                                   std::optional<std::string> body)
    : m_loop(loop), m_state(std::make_shared<State>(config, std::move(body))) {
    m_loop.start(m_state);
}

ProviderTransfer::~ProviderTransfer() {
    m_state->setCaller({});
    m_loop.drop(*m_state);
}

void ProviderTransfer::setCaller(std::function<void()> call) {
    m_state->setCaller(std::move(call));
}

std::optional<std::string> ProviderTransfer::read(SteadyTime now) {
    bool mustResume = false;
    std::optional<std::string> arrived = m_state->read(now, mustResume);
    if (mustResume) m_loop.resume(m_state);
    return arrived;
}

SteadyTime ProviderTransfer::deadline() const {
    return m_state->deadline();
}

void ProviderTransfer::noteReplyBegan() {
    m_state->noteReplyBegan();
}

void ProviderTransfer::keepQuietUntil(SteadyTime time) {
    m_state->keepQuietUntil(time);
}

} // namespace vorq::gateway
