#include "http/GatewayServer.h"

#include "http/ApiError.h"
#include "http/Connection.h"
#include "http/EventStream.h"
#include "storage/Database.h"
#include "support/Filled.h"

#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <charconv>
#include <cstdio>
#include <utility>

namespace vorq::gateway {
namespace {

constexpr std::size_t kThreads = 24;
constexpr auto kFailed = "The Vorq gateway failed. Try again.";

/// Threads that know how many connections wait for one of them.
class CountingPool final : public httplib::TaskQueue {
  public:
    explicit CountingPool(std::atomic<int>& waiting) : waiting_(waiting), pool_(kThreads) {}

    void enqueue(std::function<void()> task) override {
        ++waiting_;
        pool_.enqueue([this, task = std::move(task)] {
            --waiting_;
            task();
        });
    }
    void shutdown() override { pool_.shutdown(); }

  private:
    std::atomic<int>& waiting_;
    httplib::ThreadPool pool_;
};

/// The connection that the current thread serves. The HTTP library has no other way to let a
/// handler see that its client left.
thread_local const Connection* servedConnection = nullptr;

bool clientLeft() {
    return servedConnection != nullptr && servedConnection->peerIsGone();
}

std::optional<std::string> headerOf(const httplib::Request& request, const char* name) {
    if (!request.has_header(name)) return std::nullopt;
    return request.get_header_value(name);
}

std::optional<std::uint64_t> contentLengthOf(const httplib::Request& request) {
    const std::optional<std::string> text = headerOf(request, "Content-Length");
    if (!text) return std::nullopt;
    std::uint64_t length = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), length);
    if (error != std::errc() || end != text->data() + text->size()) {
        throw ApiError(400, "The request's Content-Length is not a number.");
    }
    return length;
}

std::string readLimited(const httplib::ContentReader& reader, std::size_t limit) {
    std::string body;
    bool tooLarge = false;
    const bool complete = reader([&](const char* data, std::size_t size) {
        tooLarge = size > limit - body.size();
        if (!tooLarge) body.append(data, size);
        return !tooLarge;
    });
    if (tooLarge) throw ApiError(413, "The request is larger than 16 MB.");
    if (!complete) throw ApiError(400, "The request's body could not be read to its end.");
    return body;
}

void sendError(httplib::Response& response, int status, const std::string& sentence) {
    response.status = status;
    if (status == 405) response.set_header("Allow", "POST");
    response.set_content(oneLineJson(errorDocument(sentence)), "application/json");
}

std::string sentenceForStatus(int status) {
    if (status == 413) return "The request is larger than 16 MB.";
    if (status == 414) return "The request's address is too long.";
    if (status < 500) return "The request is not valid HTTP.";
    return kFailed;
}

/// Writes what went wrong to standard error; it never holds anything the client sent.
void report(const std::exception& error) {
    std::fprintf(stderr, "vorq-gateway: a request failed: %s\n", error.what());
}

} // namespace

class GatewayServer::Implementation final : public httplib::Server {
  public:
    explicit Implementation(RequestRouter& router) : router_(router) {
        new_task_queue = [this] { return new CountingPool(waiting_); };
        set_keep_alive_max_count(1);
        set_tcp_nodelay(true);
        // Without SO_REUSEPORT, so that a second gateway on the same port is noticed.
        set_socket_options([](socket_t socket) {
            const int on = 1;
            setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
        });
        set_default_headers({{"Cache-Control", "no-store"}, {"X-Content-Type-Options", "nosniff"}});
        set_pre_routing_handler(
            [this](const httplib::Request& request, httplib::Response& response) {
                if (request.method == "POST") return HandlerResponse::Unhandled;
                answer(request, response, nullptr);
                return HandlerResponse::Handled;
            });
        Post(".*",
             [this](const httplib::Request& request, httplib::Response& response,
                    const httplib::ContentReader& reader) { answer(request, response, &reader); });
        set_error_handler([](const httplib::Request&, httplib::Response& response) {
            if (response.body.empty()) {
                sendError(response, response.status, sentenceForStatus(response.status));
            }
        });
    }

    /// The library's queue of five would drop connections of a busy moment.
    void widenQueue() { ::listen(svr_sock_, SOMAXCONN); }

    /// Unlike the library's own `stop`, right at any moment and any number of times.
    void stopListening() {
        stopping = true;
        const socket_t socket = svr_sock_.exchange(INVALID_SOCKET);
        if (socket == INVALID_SOCKET) return;
        shutdown(socket, SHUT_RDWR);
        close(socket);
    }

    std::atomic<bool> stopping = false;

  private:
    bool process_and_close_socket(socket_t socket) override;
    void answer(const httplib::Request& request, httplib::Response& response,
                const httplib::ContentReader* reader);
    void respond(const httplib::Request& request, httplib::Response& response,
                 const httplib::ContentReader* reader);
    void startStream(httplib::Response& response, std::unique_ptr<ReplyStream> stream);
    [[nodiscard]] Cancelled cancelled() const {
        return [this] { return stopping || clientLeft(); };
    }

    RequestRouter& router_;
    std::atomic<int> waiting_ = 0;
};

bool GatewayServer::Implementation::process_and_close_socket(socket_t socket) {
    Connection connection(
        socket, [this] { return stopping.load(); }, [this] { return waiting_ > 0; });
    servedConnection = &connection;
    bool served = false;
    try {
        bool closed = false;
        served = process_request(connection, true, closed, [](httplib::Request& request) {
            // Replies are small and local: neither compressed nor sent in ranges.
            request.headers.erase("Accept-Encoding");
            request.ranges.clear();
        });
    } catch (const std::exception& error) {
        report(error);
    }
    servedConnection = nullptr;
    connection.finish();
    return served;
}

void GatewayServer::Implementation::answer(const httplib::Request& request,
                                           httplib::Response& response,
                                           const httplib::ContentReader* reader) {
    try {
        respond(request, response, reader);
    } catch (const ApiError& error) {
        if (error.retryAfterSeconds) {
            response.set_header("Retry-After", std::to_string(*error.retryAfterSeconds));
        }
        sendError(response, error.status, error.what());
    } catch (const EngineError& error) {
        sendError(response, error.status, error.what());
    } catch (const CancelledError&) {
        sendError(response, 503, "The Vorq gateway was stopped. Try again in a moment.");
    } catch (const DatabaseError& error) {
        report(error);
        const bool passes = !error.advice.empty();
        sendError(response, passes ? 503 : 500, passes ? error.advice : std::string(kFailed));
    } catch (const std::exception& error) {
        report(error);
        sendError(response, 500, kFailed);
    }
}

void GatewayServer::Implementation::respond(const httplib::Request& request,
                                            httplib::Response& response,
                                            const httplib::ContentReader* reader) {
    HttpRequest converted{.method = request.method,
                          .path = request.path,
                          .host = headerOf(request, "Host"),
                          .origin = headerOf(request, "Origin"),
                          .contentType = request.get_header_value("Content-Type"),
                          .authorization = request.get_header_value("Authorization"),
                          .remoteAddress = request.remote_addr,
                          .contentLength = contentLengthOf(request),
                          .hasBody = false,
                          .readBody = {},
                          .cancelled = cancelled()};
    converted.hasBody =
        converted.contentLength.value_or(0) > 0 || request.has_header("Transfer-Encoding");
    if (reader != nullptr) {
        converted.readBody = [reader](std::size_t limit) { return readLimited(*reader, limit); };
    }
    ApiReply reply = router_.handle(converted);
    response.status = 200;
    if (reply.stream) {
        startStream(response, std::move(reply.stream));
    } else {
        response.set_content(oneLineJson(reply.body), "application/json");
    }
}

void GatewayServer::Implementation::startStream(httplib::Response& response,
                                                std::unique_ptr<ReplyStream> stream) {
    const std::shared_ptr<ReplyStream> shared = std::move(stream);
    response.set_chunked_content_provider(
        "text/event-stream", [this, shared](std::size_t, httplib::DataSink& sink) {
            bool reached = true;
            const auto send = [&](const std::string& event) {
                reached = reached && sink.write(event.data(), event.size());
                return reached;
            };
            sendEvents(*shared, send, cancelled(), [this] { return stopping.load(); });
            sink.done();
            return reached;
        });
}

GatewayServer::GatewayServer(RequestRouter& router)
    : implementation_(std::make_unique<Implementation>(router)) {}

GatewayServer::~GatewayServer() {
    stop();
}

int GatewayServer::bind(const std::string& host, int port) {
    const int bound = port == 0 ? implementation_->bind_to_any_port(host)
                      : implementation_->bind_to_port(host, port) ? port
                                                                  : -1;
    if (bound <= 0) {
        throw std::runtime_error(
            port == 0 ? filled("Could not listen on {}.", host)
                      : filled("Could not listen on {}:{}. Is another program, or another "
                               "vorq-gateway, using that port?",
                               host, port));
    }
    implementation_->widenQueue();
    return bound;
}

void GatewayServer::run() {
    implementation_->listen_after_bind();
}

void GatewayServer::stop() {
    implementation_->stopListening();
}

} // namespace vorq::gateway
