#pragma once

namespace ravelinth::platform {

// Sends `stdout` through a stream that remembers why a write to it failed. The C library keeps
// only an error flag, and once a command has flushed its own output the reason is gone; the
// command line needs it to tell the user why the output is incomplete.
void rememberStandardOutputErrors();

// The errno of the first write to standard output that failed since then, or 0.
int standardOutputError();

} // namespace ravelinth::platform
