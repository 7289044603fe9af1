#pragma once

namespace ravelinth::platform {

// Lowers the calling thread's share of the processor below that of the program's other threads,
// so that a window stays smooth while background threads keep every core busy. Lasts for the
// life of the thread.
void yieldToInteractiveThreads();

} // namespace ravelinth::platform
