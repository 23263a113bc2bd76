#pragma once

class QLockFile;

namespace quilla {

/// Takes the lock unless a program that runs holds it; one that a killed program left is taken over, however
/// old or young it is. False when it could not be had; the lock tells the reason.
bool takeLock(QLockFile& lock);

} // namespace quilla
