// Compares a log line of the pane's logger with one of spdlog and with a bare write() of the same bytes. Also
// compares disabled log calls. The compared loggers take turns, so that a busy machine slows both.
#include "logging/KS7OrvexLogger.h"

#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#include <unistd.h>

namespace {

constexpr char Message[] = "setActiveCamera: Kitchen, camera 2A9C, now 3 of 12";
constexpr char Line[] = "2026-01-02 03:04:05.678 setActiveCamera: Kitchen, camera 2A9C, now 3 of 12\n";

/// The folder of all log files. Each loop starts new files, because the length of a file may change the time
/// of a write.
class Target {
public:
    [[nodiscard]] std::string path(const char *name) const
    {
        return mFolder.filePath(QString::fromLatin1(name)).toStdString();
    }
    [[nodiscard]] QString folder() const { return mFolder.path(); }

private:
    const QTemporaryDir mFolder{QDir::homePath() + QStringLiteral("/logs-XXXXXX")};
};

Target &target()
{
    static Target only;
    return only;
}

KS7OrvexLogger *ours = nullptr;
std::shared_ptr<spdlog::logger> theirs;
int bare = -1;

void startOurs(const benchmark::State &)
{
    ours = new KS7OrvexLogger;
    ours->initLoggingToFile(false, false);
    ours->setLogFileLocation(target().folder() + QStringLiteral("/ours"));
    ours->setLogToFile(true);
}

void endOurs(const benchmark::State &)
{
    delete ours;
    QDir(target().folder() + QStringLiteral("/ours")).removeRecursively();
}

void startSpdlog(const benchmark::State &)
{
    theirs = spdlog::basic_logger_mt("bench", target().path("spdlog"), true);
    theirs->set_pattern("%Y-%m-%d %H:%M:%S.%e %v");
    theirs->flush_on(spdlog::level::trace);
}

void endSpdlog(const benchmark::State &)
{
    spdlog::drop("bench");
    theirs.reset();
}

void startBare(const benchmark::State &)
{
    bare = ::open(target().path("bare").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0666);
}

void endBare(const benchmark::State &)
{
    ::close(bare);
}

void lineOurs(benchmark::State &state)
{
    const QString message = QString::fromLatin1(Message);
    for (auto _ : state)
        ours->log(message);
}

void lineSpdlog(benchmark::State &state)
{
    const std::string message = Message;
    for (auto _ : state)
        theirs->info(message);
}

void lineBare(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(::write(bare, Line, sizeof(Line) - 1));
}

void removeDefaultLogger(const benchmark::State &)
{
    gMainLogger = nullptr;
}

void makeSilentDefaultLogger(const benchmark::State &)
{
    KS7OrvexLogger::createDefaultLoggerToFile(false, false);
}

void unheardOurs(benchmark::State &state)
{
    int row = 0;
    for (auto _ : state)
        OrvexLog(u"row %d of %d", ++row, 12);
}

void unheardSpdlog(benchmark::State &state)
{
    theirs->set_level(spdlog::level::off);
    int row = 0;
    for (auto _ : state)
        theirs->info("row {} of {}", ++row, 12);
}

// The names of the benchmarks have the form "case/side". bench/run compares the sides of a case.
BENCHMARK(lineOurs)->Name("line 1/ours")->Setup(startOurs)->Teardown(endOurs);
BENCHMARK(lineSpdlog)->Name("line 1/spdlog")->Setup(startSpdlog)->Teardown(endSpdlog);
BENCHMARK(lineBare)->Name("line 1/write")->Setup(startBare)->Teardown(endBare);
BENCHMARK(lineOurs)->Name("line 4/ours")->Setup(startOurs)->Teardown(endOurs)->Threads(4)->UseRealTime();
BENCHMARK(lineSpdlog)
    ->Name("line 4/spdlog")
    ->Setup(startSpdlog)
    ->Teardown(endSpdlog)
    ->Threads(4)
    ->UseRealTime();
BENCHMARK(lineBare)->Name("line 4/write")->Setup(startBare)->Teardown(endBare)->Threads(4)->UseRealTime();
BENCHMARK(unheardOurs)->Name("no logger/ours")->Setup(removeDefaultLogger);
BENCHMARK(unheardSpdlog)->Name("no logger/spdlog")->Setup(startSpdlog)->Teardown(endSpdlog);
BENCHMARK(unheardOurs)->Name("sinks off/ours")->Setup(makeSilentDefaultLogger);
BENCHMARK(unheardSpdlog)->Name("sinks off/spdlog")->Setup(startSpdlog)->Teardown(endSpdlog);

} // namespace

BENCHMARK_MAIN();
