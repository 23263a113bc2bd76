#pragma once

#include <chrono>

class QLockFile;

namespace quilla {

/// Takes the lock unless a running program holds it. One that a killed program left is taken over, however
/// old or young it is. A machine that has got another name since cannot tell whether its maker runs; only
/// there the lock counts as left when it is older than `longest`, and never for zero. False when it could not
/// be taken; `lock.error()` says why.
bool takeLock(QLockFile& lock, std::chrono::milliseconds longest = {});

} // namespace quilla
