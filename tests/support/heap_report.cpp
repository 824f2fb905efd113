// A library that is preloaded into a program to measure its heap. On SIGUSR2 it returns free memory to the
// system, because memory that the allocator keeps would count. Then it writes the number of bytes in use to
// the file named by KS7_HEAP_REPORT.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <string>
#include <thread>

namespace {

/// Writes a temporary file and renames it, so that readers never see an incomplete report.
void report(const std::string &path)
{
    malloc_trim(0);
    const auto heap = mallinfo2();
    const std::string unfinished = path + ".new";
    if (auto *file = std::fopen(unfinished.c_str(), "w")) {
        std::fprintf(file, "%zu\n", heap.uordblks + heap.hblkhd);
        std::fclose(file);
        std::rename(unfinished.c_str(), path.c_str());
    }
}

[[noreturn]] void reportWhenAsked(sigset_t asked, const std::string &path)
{
    for (;;) {
        int signal = 0;
        if (sigwait(&asked, &signal) == 0)
            report(path);
    }
}

/// Blocks the signal in this thread and in all later ones, so that only the listening thread receives it.
[[gnu::constructor]] void listen()
{
    const char *path = std::getenv("KS7_HEAP_REPORT");
    if (!path)
        return;
    sigset_t asked;
    sigemptyset(&asked);
    sigaddset(&asked, SIGUSR2);
    pthread_sigmask(SIG_BLOCK, &asked, nullptr);
    std::thread(reportWhenAsked, asked, std::string(path)).detach();
}

} // namespace
