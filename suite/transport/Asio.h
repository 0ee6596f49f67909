// Asio, as every file includes it: what it finds of threads and of aligned memory depends on which
// headers of the standard library came before it. Files that differ in that disagree on the layout
// of Asio's classes and on how their memory is freed. Only for the files that talk to sockets: it
// is large.
#pragma once

#include <memory>
#include <thread>

#include <asio/awaitable.hpp>
#include <asio/co_spawn.hpp>
#include <asio/connect.hpp>
#include <asio/detached.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/redirect_error.hpp>
#include <asio/serial_port.hpp>
#include <asio/steady_timer.hpp>
#include <asio/strand.hpp>
#include <asio/use_awaitable.hpp>
#include <asio/write.hpp>
