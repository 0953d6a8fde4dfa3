#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace vorq::bench {

/// A request to a server of this computer; each goes out on a connection of its own.
struct LoadRequest {
    int port = 0;
    std::string path;
    std::string body;
    /// Without one, no token is sent.
    std::string token = {};
};

struct LoadAnswer {
    /// 0 if the connection failed.
    int status = 0;
    /// Head and body as they came.
    std::string bytes;
    /// Milliseconds from the beginning to the first event, or to the end without one.
    double first = 0;
    double total = 0;

    /// Whether an event says that its reply is complete.
    [[nodiscard]] bool isDone() const { return bytes.contains("\"done\":true"); }
};

/// Sends `count` requests at once and waits for all answers.
[[nodiscard]] std::vector<LoadAnswer> sendTogether(const LoadRequest& request, int count);

/// Requests that go out one after the other beside others, each made of the answer to the last.
struct Beside {
    LoadRequest first;
    std::chrono::milliseconds pause{50};
    std::function<LoadRequest(const LoadAnswer& former)> next;
    std::vector<LoadAnswer> answers = {};
};

/// The same, with `beside` going on, on a thread of its own, until all answers are there.
[[nodiscard]] std::vector<LoadAnswer> sendTogether(const LoadRequest& request, int count,
                                                   Beside& beside);

/// Answers a second, with `clients` that ask again and again. `failures` grows by those without a
/// status.
[[nodiscard]] double answersPerSecond(const LoadRequest& request, int clients,
                                      std::chrono::milliseconds time, int& failures);

} // namespace vorq::bench
