#pragma once

#include "platform/ParallelDirectoryWalker.h"

#include <cstdint>
#include <vector>

namespace ravelinth::platform {

struct Segment;

// Either a run of emitted items (child == nullptr) or the place where a subfolder, or the tail
// of this folder handed to another worker, begins.
struct Piece {
    Segment *child = nullptr;
    std::uint32_t start = 0;
    std::uint32_t count = 0;
};

// The part of one folder's listing that one worker walked, in listing order.
struct Segment {
    std::uint32_t worker = 0;
    std::vector<Piece> pieces;
};

// Adds the worker's item `number` to the segment's pieces, extending the last run when it can.
void noteEmitted(Segment &segment, std::uint32_t number);

// The items of the segments below `root`, in the order a single depth-first walk meets them.
std::vector<EmittedRun> runsInWalkOrder(const Segment &root);

} // namespace ravelinth::platform
