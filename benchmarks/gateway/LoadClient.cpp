#include "gateway/LoadClient.h"

#include "http/Asio.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/connect.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/write.hpp>

#include <array>
#include <atomic>
#include <cstdlib>
#include <thread>
#include <utility>

namespace vorq::bench {
namespace {

namespace net = gateway::net;
using boost::system::error_code;
using gateway::Awaitable;
using gateway::kAwait;
using Steady = std::chrono::steady_clock;

double millisecondsSince(Steady::time_point begin) {
    return std::chrono::duration<double, std::milli>(Steady::now() - begin).count();
}

std::string bytesOf(const LoadRequest& request) {
    std::string bytes = "POST " + request.path +
                        " HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\n";
    if (!request.token.empty()) bytes += "Authorization: Bearer " + request.token + "\r\n";
    return bytes + "Content-Length: " + std::to_string(request.body.size()) + "\r\n\r\n" +
           request.body;
}

Awaitable<LoadAnswer> exchange(net::io_context& io, const LoadRequest& request) {
    LoadAnswer answer;
    const Steady::time_point begin = Steady::now();
    gateway::Socket socket(io);
    const net::ip::tcp::endpoint endpoint(net::ip::address_v4::loopback(),
                                          static_cast<unsigned short>(request.port));
    error_code error;
    co_await socket.async_connect(endpoint, net::redirect_error(kAwait, error));
    if (error) co_return answer;
    const std::string bytes = bytesOf(request);
    co_await net::async_write(socket, net::buffer(bytes), net::redirect_error(kAwait, error));
    std::array<char, 16384> buffer{};
    while (!error) {
        const std::size_t count = co_await socket.async_read_some(
            net::buffer(buffer), net::redirect_error(kAwait, error));
        answer.bytes.append(buffer.data(), count);
        if (answer.first == 0 && answer.bytes.contains("data:")) {
            answer.first = millisecondsSince(begin);
        }
    }
    answer.total = millisecondsSince(begin);
    if (answer.first == 0) answer.first = answer.total;
    if (answer.bytes.starts_with("HTTP/1.1 ")) answer.status = std::atoi(answer.bytes.c_str() + 9);
    co_return answer;
}

Awaitable<void> sendOne(net::io_context& io, const LoadRequest& request,
                        std::vector<LoadAnswer>& answers) {
    LoadAnswer answer = co_await exchange(io, request);
    answers.push_back(std::move(answer));
}

Awaitable<void> sendOnAndOn(net::io_context& io, Beside& beside, const std::atomic<bool>& ending) {
    LoadRequest request = beside.first;
    gateway::Timer timer(io);
    while (!ending) {
        timer.expires_after(beside.pause);
        co_await timer.async_wait(kAwait);
        beside.answers.push_back(co_await exchange(io, request));
        request = beside.next(beside.answers.back());
    }
}

Awaitable<void> sendUntil(net::io_context& io, const LoadRequest& request, Steady::time_point end,
                          int& answered, int& failures) {
    while (Steady::now() < end) {
        const LoadAnswer answer = co_await exchange(io, request);
        ++(answer.status == 0 ? failures : answered);
    }
}

} // namespace

std::vector<LoadAnswer> sendTogether(const LoadRequest& request, int count) {
    std::vector<LoadAnswer> answers;
    net::io_context io{1};
    for (int i = 0; i < count; ++i)
        net::co_spawn(io, sendOne(io, request, answers), net::detached);
    io.run();
    return answers;
}

std::vector<LoadAnswer> sendTogether(const LoadRequest& request, int count, Beside& beside) {
    std::atomic<bool> ending = false;
    std::thread besideThread([&] {
        net::io_context io{1};
        net::co_spawn(io, sendOnAndOn(io, beside, ending), net::detached);
        io.run();
    });
    std::vector<LoadAnswer> answers = sendTogether(request, count);
    ending = true;
    besideThread.join();
    return answers;
}

double answersPerSecond(const LoadRequest& request, int clients, std::chrono::milliseconds time,
                        int& failures) {
    net::io_context io{1};
    int answered = 0;
    const Steady::time_point begin = Steady::now();
    for (int i = 0; i < clients; ++i)
        net::co_spawn(io, sendUntil(io, request, begin + time, answered, failures), net::detached);
    io.run();
    return answered * 1000.0 / millisecondsSince(begin);
}

} // namespace vorq::bench
