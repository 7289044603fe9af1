// The least a walk of a tree can do: list each folder with getdents64 and stat each entry with
// fstatat, on N threads sharing one stack of folders, nothing kept. What a scanner adds on top
// of the system calls shows as its time over this one's.
//
//   bare_walk TREE [THREADS]     (default 2 threads)

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

struct LinuxDirent64 {
    ino64_t inode;
    off64_t offset;
    unsigned short length;
    unsigned char type;
    char name[1];
};

class Walk {
public:
    explicit Walk(std::string root) { m_folders.push_back(std::move(root)); }

    void run() {
        std::vector<char> buffer(256 * 1024);
        std::string folder;
        while (next(folder)) {
            list(folder, buffer);
            finished();
        }
    }

    long long files() const { return m_files; }
    long long bytes() const { return m_bytes; }

private:
    bool next(std::string &folder) {
        std::unique_lock lock(m_mutex);
        m_wake.wait(lock, [&] { return !m_folders.empty() || m_busy == 0; });
        if (m_folders.empty())
            return false;
        folder = std::move(m_folders.back());
        m_folders.pop_back();
        ++m_busy;
        return true;
    }

    void finished() {
        std::lock_guard lock(m_mutex);
        if (--m_busy == 0 && m_folders.empty())
            m_wake.notify_all();
    }

    void list(const std::string &folder, std::vector<char> &buffer) {
        const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (fd < 0)
            return;
        std::vector<std::string> subfolders;
        long long files = 0;
        long long bytes = 0;
        for (;;) {
            const long read = ::syscall(SYS_getdents64, fd, buffer.data(), buffer.size());
            if (read <= 0)
                break;
            for (long at = 0; at < read;) {
                const auto *entry = reinterpret_cast<const LinuxDirent64 *>(buffer.data() + at);
                at += entry->length;
                const char *name = entry->name;
                if (!std::strcmp(name, ".") || !std::strcmp(name, ".."))
                    continue;
                struct stat info {};
                if (::fstatat(fd, name, &info, AT_SYMLINK_NOFOLLOW) != 0)
                    continue;
                if (S_ISDIR(info.st_mode)) {
                    subfolders.push_back(folder + '/' + name);
                } else if (S_ISREG(info.st_mode)) {
                    ++files;
                    bytes += info.st_size;
                }
            }
        }
        ::close(fd);
        m_files += files;
        m_bytes += bytes;
        if (subfolders.empty())
            return;
        std::lock_guard lock(m_mutex);
        for (std::string &subfolder : subfolders)
            m_folders.push_back(std::move(subfolder));
        m_wake.notify_all();
    }

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::vector<std::string> m_folders;
    int m_busy = 0;
    std::atomic<long long> m_files{0};
    std::atomic<long long> m_bytes{0};
};

} // namespace

int main(int argc, char **argv) {
    if (argc < 2 || argv[1][0] == '-') {
        std::fprintf(argc >= 2 ? stdout : stderr, "usage: bare_walk TREE [THREADS]\n");
        return argc >= 2 ? 0 : 2;
    }
    const int threads = argc > 2 ? std::clamp(std::atoi(argv[2]), 1, 256) : 2;
    const auto start = std::chrono::steady_clock::now();
    Walk walk(argv[1]);
    std::vector<std::thread> others;
    for (int i = 1; i < threads; ++i)
        others.emplace_back([&walk] { walk.run(); });
    walk.run();
    for (std::thread &other : others)
        other.join();
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%lld files, %lld bytes, %d threads, %.3f s\n", walk.files(), walk.bytes(), threads,
                seconds);
    return 0;
}
