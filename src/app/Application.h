#pragma once

namespace ravelinth::app {

// Starts the window and runs until it closes.
int runApplication(int argc, char **argv);

} // namespace ravelinth::app
