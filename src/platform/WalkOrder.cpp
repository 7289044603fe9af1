#include "platform/WalkOrder.h"

#include <utility>

namespace ravelinth::platform {

void noteEmitted(Segment &segment, std::uint32_t number) {
    std::vector<Piece> &pieces = segment.pieces;
    if (!pieces.empty() && !pieces.back().child &&
        pieces.back().start + pieces.back().count == number) {
        ++pieces.back().count;
    } else {
        pieces.push_back({nullptr, number, 1});
    }
}

std::vector<EmittedRun> runsInWalkOrder(const Segment &root) {
    std::vector<EmittedRun> runs;
    std::vector<std::pair<const Segment *, std::size_t>> pending{{&root, 0}};
    while (!pending.empty()) {
        const Segment *segment = pending.back().first;
        const std::size_t index = pending.back().second;
        if (index == segment->pieces.size()) {
            pending.pop_back();
            continue;
        }
        ++pending.back().second;
        const Piece &piece = segment->pieces[index];
        if (piece.child) {
            pending.emplace_back(piece.child, 0);
            continue;
        }
        if (!runs.empty() && runs.back().worker == segment->worker &&
            runs.back().start + runs.back().count == piece.start) {
            runs.back().count += piece.count;
        } else {
            runs.push_back({segment->worker, piece.start, piece.count});
        }
    }
    return runs;
}

} // namespace ravelinth::platform
