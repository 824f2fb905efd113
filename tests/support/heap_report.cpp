// Preloaded into a program whose memory is measured. At SIGUSR2 the allocator gives back what nobody uses, so
// that what the program keeps can be told from what the allocator keeps for later, and the bytes in use are
// written to the file that KS7_HEAP_REPORT names.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <string>
#include <thread>

namespace {

/// The file is there when it is whole.
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

/// The signal is kept from every thread that begins later, and waits for the one that listens.
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
