#pragma once

#include <boost/asio/any_io_executor.hpp>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/basic_stream_socket.hpp>
#include <boost/asio/basic_waitable_timer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <chrono>

namespace vorq::gateway {

/// The names of Boost.Asio as the server uses them. Only the files that handle sockets include
/// this: its headers take long to compile.
namespace net = boost::asio;

using Executor = net::io_context::executor_type;
using Socket = net::basic_stream_socket<net::ip::tcp, Executor>;
using Acceptor = net::basic_socket_acceptor<net::ip::tcp, Executor>;
using Timer = net::basic_waitable_timer<std::chrono::steady_clock,
                                        net::wait_traits<std::chrono::steady_clock>, Executor>;
template<typename T>
using Awaitable = net::awaitable<T, Executor>;
inline constexpr net::use_awaitable_t<Executor> kAwait;

} // namespace vorq::gateway
