// The one way to include Asio. Whether it uses threads and aligned memory depends on which headers
// of the standard library came before it, and files that differ in that disagree on the layout of
// its classes and on how their memory is freed. Asio is large: only files that use sockets or
// serial lines include this.
#pragma once

#include <memory>
#include <thread>

#include <asio/awaitable.hpp>
#include <asio/co_spawn.hpp>
#include <asio/connect.hpp>
#include <asio/detached.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/multicast.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/ip/udp.hpp>
#include <asio/redirect_error.hpp>
#include <asio/serial_port.hpp>
#include <asio/steady_timer.hpp>
#include <asio/strand.hpp>
#include <asio/use_awaitable.hpp>
#include <asio/write.hpp>
