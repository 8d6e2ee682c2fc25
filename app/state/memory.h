#pragma once

namespace orva {

/// Large tables (those of a search take 22 MB) go back to the system as soon as they are freed.
/// Otherwise each thread's heap keeps the largest it has had: a working day of searches grows by
/// 30 MB. Once, before the first thread.
void returnLargeMemory();

} // namespace orva
