// Makes a deterministic, realistic folder tree for the scan benchmark: many small files in
// folders of varied depth, a few hundred large sparse files (they cost no disk space), hidden
// entries, and the folder names real homes are full of.
//
//   make_tree ROOT [--files N] [--folders N] [--large N] [--seed N]

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

struct Random {
    std::uint64_t state;
    std::uint64_t next() {
        std::uint64_t z = (state += 0x9e3779b97f4a7c15ULL);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
        return z ^ (z >> 31);
    }
    std::size_t below(std::size_t n) { return std::size_t(next() % n); }
    bool chance(int percent) { return below(100) < std::size_t(percent); }
};

const char *const words[] = {"photos", "project", "backup",  "music",   "notes",  "src",
                             "build",  "assets",  "report",  "holiday", "data",   "old",
                             "videos", "docs",    "release", "config",  "lib",    "test",
                             "design", "archive", "scans",   "work",    "family", "games"};
const char *const specialFolders[] = {"node_modules", ".git",    "cache",  "Caches", "tmp",
                                      "logs",         "Library", ".local", "target", "Downloads"};
const char *const smallExtensions[] = {"txt", "jpg", "png", "js",  "json", "md",  "log", "cache",
                                       "so",  "h",   "cpp", "pdf", "mp3",  "xml", "css", ""};
const char *const largeExtensions[] = {"mp4", "mkv", "iso",  "zip", "dmg", "tar",
                                       "mov", "img", "vmdk", "bin", "gz",  "pkg"};

template <std::size_t N> const char *pick(Random &random, const char *const (&list)[N]) {
    return list[random.below(N)];
}

void fail(const std::string &what) {
    std::perror(what.c_str());
    std::exit(1);
}

void makeFile(const std::string &path, long long size) {
    const int fd = ::open(path.c_str(), O_CREAT | O_WRONLY | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0)
        fail(path);
    if (size > 0 && ::ftruncate(fd, size) != 0)
        fail(path);
    ::close(fd);
}

constexpr const char *usage =
    "usage: make_tree ROOT [--files N] [--folders N] [--large N] [--seed N]\n"
    "Makes a deterministic tree of N files (default 1000000) in N folders (60000), N of them\n"
    "large sparse files (300), drawn from seed N (1). Run again, it keeps a finished tree.\n";

bool isHelp(const char *argument) {
    return !std::strcmp(argument, "--help") || !std::strcmp(argument, "-h");
}

} // namespace

int main(int argc, char **argv) {
    for (int i = 1; i < argc; ++i) {
        if (isHelp(argv[i])) {
            std::fputs(usage, stdout);
            return 0;
        }
    }
    // A mistyped option in ROOT's place would otherwise become a folder of that name.
    if (argc < 2 || argv[1][0] == '-') {
        std::fputs(usage, stderr);
        return 2;
    }
    std::string root = argv[1];
    long long files = 1000000, folders = 60000, large = 300, seed = 1;
    for (int i = 2; i + 1 < argc; i += 2) {
        const long long value = std::atoll(argv[i + 1]);
        if (!std::strcmp(argv[i], "--files"))
            files = value;
        else if (!std::strcmp(argv[i], "--folders"))
            folders = value;
        else if (!std::strcmp(argv[i], "--large"))
            large = value;
        else if (!std::strcmp(argv[i], "--seed"))
            seed = value;
    }
    const std::string stamp = root + "/.tree-stamp";
    char expected[200];
    std::snprintf(expected, sizeof expected, "files=%lld folders=%lld large=%lld seed=%lld\n",
                  files, folders, large, seed);
    if (FILE *existing = std::fopen(stamp.c_str(), "r")) {
        char line[200] = {};
        const bool same = std::fgets(line, sizeof line, existing) && !std::strcmp(line, expected);
        std::fclose(existing);
        if (same) {
            std::printf("tree already made: %s", expected);
            return 0;
        }
        std::fprintf(stderr, "%s holds another tree; remove it first\n", root.c_str());
        return 1;
    }
    // A tree whose making was cut off is made again; any other folder with something in it is
    // left alone, since it may be anybody's.
    const std::string unfinished = root + "/.tree-unfinished";
    if (::access(unfinished.c_str(), F_OK) == 0) {
        std::printf("removing a tree left unfinished: %s\n", root.c_str());
        std::error_code error;
        std::filesystem::remove_all(root, error);
        if (error)
            fail(root);
    } else if (std::filesystem::exists(root) && !std::filesystem::is_empty(root)) {
        std::fprintf(stderr, "%s is not empty and holds no tree; remove it first\n", root.c_str());
        return 1;
    }
    if (::mkdir(root.c_str(), 0755) != 0 && errno != EEXIST)
        fail(root);
    if (FILE *marker = std::fopen(unfinished.c_str(), "w"))
        std::fclose(marker);
    else
        fail(unfinished);

    Random random{std::uint64_t(seed)};
    std::vector<std::string> paths{root};
    std::vector<int> depth{0};
    paths.reserve(std::size_t(folders) + 1);
    for (long long i = 0; i < folders; ++i) {
        // Parents are drawn from the newest folders more often, which gives long chains as well
        // as wide levels; depth is capped at 12.
        std::size_t parent =
            random.chance(50)
                ? paths.size() - 1 - random.below(std::min<std::size_t>(paths.size(), 50))
                : random.below(paths.size());
        while (depth[parent] >= 12)
            parent = random.below(paths.size());
        std::string name;
        if (random.chance(4))
            name = pick(random, specialFolders);
        else
            name = std::string(random.chance(2) ? "." : "") + pick(random, words);
        name += "-" + std::to_string(i);
        const std::string path = paths[parent] + "/" + name;
        if (::mkdir(path.c_str(), 0755) != 0)
            fail(path);
        paths.push_back(path);
        depth.push_back(depth[parent] + 1);
    }
    for (long long i = 0; i < files; ++i) {
        const std::string &folder = paths[random.below(paths.size())];
        const char *extension = pick(random, smallExtensions);
        std::string name = std::string(random.chance(2) ? "." : "") + pick(random, words) + "_" +
                           std::to_string(i) + (*extension ? "." : "") + extension;
        makeFile(folder + "/" + name, (long long)random.below(4096));
    }
    const long long mebibyte = 1024LL * 1024;
    for (long long i = 0; i < large; ++i) {
        const std::string &folder = paths[random.below(paths.size())];
        const long long size =
            100 * mebibyte + (long long)random.below(std::size_t(8092 * mebibyte));
        makeFile(folder + "/large_" + std::to_string(i) + "." + pick(random, largeExtensions),
                 size);
    }
    FILE *out = std::fopen(stamp.c_str(), "w");
    if (!out)
        fail(stamp);
    std::fputs(expected, out);
    if (std::fclose(out) != 0 || ::unlink(unfinished.c_str()) != 0)
        fail(stamp);
    std::printf("made %s: %s", root.c_str(), expected);
    return 0;
}
