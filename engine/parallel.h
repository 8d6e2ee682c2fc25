#pragma once

#include <functional>

namespace orva {

/// Told how much of `total` is done; returns whether to go on.
using Progress = std::function<bool(int done, int total)>;

/// Threads that the machine runs at once, at least 1.
int coreCount();

/// More threads than these runBlocks() does not use, however many it is given.
constexpr int kMostThreads = 256;

/// Runs work(0) .. work(count - 1), each once, in any order on `threads` threads (at least 1; the
/// calling one is among them). `progress`, which may be empty, is called on the calling thread
/// after pieces of work. When it returns false no further piece is begun. Returns whether all ran.
/// Neither may throw.
bool runBlocks(int count, int threads, const Progress& progress,
               const std::function<void(int)>& work);

} // namespace orva
