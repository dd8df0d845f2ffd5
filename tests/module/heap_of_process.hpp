#pragma once

#include <cstddef>

/// The bytes that the C library has handed out and not got back.
std::size_t heap_of_process();

/// What the thread-local variables of velum leave behind in a thread each time that velum is unloaded.
extern std::size_t const left_in_thread;  // bytes
