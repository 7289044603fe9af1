#pragma once

#include "platform/DirectoryWalker.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace ravelinth::platform {

// Open descriptors kept along one branch of a walk. Deeper folders close their far ancestors and
// come back to them through "..", checked against the device and inode recorded on the way down.
constexpr std::size_t descriptorBudget = 96;

// A folder's entries as read in one go, so the descriptor is needed only to examine them.
struct Listing {
    std::string names; // each name followed by a NUL
    std::vector<std::uint32_t> offsets;
    std::vector<unsigned char> types;

    std::size_t size() const { return offsets.size(); }
    void clear() {
        names.clear();
        offsets.clear();
        types.clear();
    }
    const char *name(std::size_t index) const { return names.data() + offsets[index]; }
    // The names lie one after another, each with its NUL: no need to look for the end.
    std::size_t nameLength(std::size_t index) const {
        const std::size_t end = index + 1 < offsets.size() ? offsets[index + 1] : names.size();
        return end - offsets[index] - 1;
    }
};

// Reads every entry of the open folder `fd` but "." and "..", in the order the file system
// lists them; `buffer` is scratch space for the kernel's records.
bool readListing(int fd, std::vector<char> &buffer, Listing &listing);

// One open folder on a walk's branch.
struct Frame {
    int fd = -1;
    dev_t device = 0;
    ino_t inode = 0;
    std::uint64_t mountId = 0;
    qsizetype pathLength = 0; // length of this folder's path in the walk's path buffer
    Listing listing;
    std::size_t next = 0;
    bool deniedReported = false; // an entry could not be examined, and the folder was reported
};

enum class FrameOpening { opened, passedOver, unreadable };

// Makes a frame of the open folder `fd` (taking the descriptor), or closes it and says why not:
// unreadable when it cannot be examined or listed, passedOver when it lies on a pseudo file
// system or, for a subfolder, when it is one of the options' pruned folders or a mount they do
// not let the walk enter. `parent` is the frame of the folder holding it (none where a walk
// begins): a folder on its parent's mount needs no file-system check. `path` is its path.
FrameOpening openFrame(int fd, qsizetype pathLength, std::vector<char> &buffer, Frame &frame,
                       const Frame *parent = nullptr, const WalkOptions *options = nullptr,
                       QByteArrayView path = {});

// True when the walk should end before opening another folder.
inline bool isStopRequested(const WalkOptions &options) {
    return options.isStopRequested && options.isStopRequested();
}

// Keeps the descriptors of the nearest `descriptorBudget` frames only, and of the first, from
// which any other can be found again by name.
void trimDescriptors(std::vector<Frame> &stack);

// Gives the frame at `index` a descriptor again when ".." could not (a folder between it and its
// child was moved meanwhile): walks down by name from the nearest frame still open, checking each
// step against the identity recorded on the way down. `path` is the walk's path buffer, which
// holds the frames' paths; `rootIsSlash` tells that the first frame is "/". Returns the level at
// which the way was lost, or -1 when the frame is back.
std::ptrdiff_t reopenByName(std::vector<Frame> &stack, std::size_t index, const QByteArray &path,
                            bool rootIsSlash);

// Leaves the top frame, first giving its parent a descriptor again if the parent lost it.
void popFrame(std::vector<Frame> &stack);

// Opens the folder `name` in `parentFd`; on failure tells whether the folder was there and could
// not be read (as opposed to gone, or no longer a folder, since it was listed).
int openSubfolder(int parentFd, const char *name, bool &unreadable);

// Fills `entry` for the entry `index` of `frame`: a folder from its listed type costs nothing,
// anything else is examined without following links.
void examineEntry(const Frame &frame, std::size_t index, WalkEntry &entry);

inline bool isHiddenName(const char *name) {
    return name[0] == '.';
}

// When `entry`, just taken from `frame`, could not be examined for want of permission and the
// folder was not yet reported: marks it reported and fills `folder` with the folder's own entry,
// to be visited as unreadable. `path` is the walk's path buffer.
bool takeDeniedFolder(Frame &frame, const QByteArray &path, const WalkEntry &entry,
                      WalkEntry &folder);

// Takes the top frame's next entry: puts its path in `path`, the walk's path buffer, and fills
// `entry`. Returns its name, or null for an entry the options pass over (hidden or pruned).
const char *takeNextEntry(Frame &frame, QByteArray &path, bool rootIsSlash,
                          const WalkOptions &options, WalkEntry &entry);

} // namespace ravelinth::platform
