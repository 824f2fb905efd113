// Measures a change of one key in the preferences file, by the pane's code and by libplist. With libplist,
// the file is read and parsed, the key is changed and the file is written. The benchmarks "libplist"
// overwrite the file and call fsync once. The benchmarks "libplist, safe" take the same steps as the pane.
#include "platform/preferences/UserDefaults.h"
#include "settings/KS7Domain.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <fcntl.h>
#include <plist/plist.h>
#include <unistd.h>

namespace {

QByteArray domainOf(int keys)
{
    QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                     "<plist version=\"1.0\">\n<dict>\n";
    for (int key = 1; key < keys; ++key)
        xml += "\t<key>Key" + QByteArray::number(key) + "</key>\n\t<string>Value " + QByteArray::number(key)
            + "</string>\n";
    return xml + "\t<key>VideoSize2</key>\n\t<integer>1</integer>\n</dict>\n</plist>\n";
}

/// A temporary folder with a preferences file, which the benchmarks change.
class Domain {
public:
    explicit Domain(int keys)
    {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(mFolder.path()));
        QFile file(path());
        if (file.open(QIODevice::WriteOnly))
            file.write(domainOf(keys));
    }
    [[nodiscard]] QString path() const
    {
        return mFolder.filePath(KS7Domain::Name + QStringLiteral(".plist"));
    }

private:
    const QTemporaryDir mFolder{qEnvironmentVariable("HOME") + QStringLiteral("/domain-XXXXXX")};
};

void setOurs(benchmark::State &state)
{
    const Domain domain(static_cast<int>(state.range(0)));
    const auto defaults = platform::makeFileUserDefaults();
    int size = 0;
    for (auto _ : state) {
        size = 1 - size;
        KS7Domain::domainSetObject(*defaults, size, PreferenceKeys::VideoSize2);
        if (!defaults->synchronize())
            state.SkipWithError("the write failed");
    }
}

QByteArray readWhole(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeAndSync(const QString &path, const char *text, std::uint32_t size)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    const bool written = ::write(file, text, size) == static_cast<ssize_t>(size) && ::fsync(file) == 0;
    ::close(file);
    return written;
}

/// Replaces a file so that either the old or the new contents exist after a crash of the machine.
bool replaceAndSync(const QString &path, const char *text, std::uint32_t size)
{
    const QByteArray target = QFile::encodeName(path);
    const QByteArray temporary = target + ".new";
    const int file = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    const bool written = ::write(file, text, size) == static_cast<ssize_t>(size) && ::fsync(file) == 0;
    ::close(file);
    const int folder =
        ::open(QFile::encodeName(QFileInfo(path).path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool replaced =
        written && std::rename(temporary.constData(), target.constData()) == 0 && ::fsync(folder) == 0;
    ::close(folder);
    return replaced;
}

using Writer = bool (*)(const QString &path, const char *text, std::uint32_t size);

bool rewrite(const QString &path, std::uint64_t size, Writer writer)
{
    const QByteArray before = readWhole(path);
    plist_t root = nullptr;
    plist_from_xml(before.constData(), static_cast<std::uint32_t>(before.size()), &root);
    plist_dict_set_item(root, "VideoSize2", plist_new_uint(size));
    char *text = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(root, &text, &length);
    const bool written = writer(path, text, length);
    std::free(text);
    plist_free(root);
    return written;
}

void setWithLibplist(benchmark::State &state, Writer writer)
{
    const Domain domain(static_cast<int>(state.range(0)));
    std::uint64_t size = 0;
    for (auto _ : state) {
        size = 1 - size;
        if (!rewrite(domain.path(), size, writer))
            state.SkipWithError("the write failed");
    }
}

BENCHMARK(setOurs)->Name("domain/ours")->Arg(10)->Arg(1000)->UseRealTime();
BENCHMARK_CAPTURE(setWithLibplist, plain, writeAndSync)
    ->Name("domain/libplist")
    ->Arg(10)
    ->Arg(1000)
    ->UseRealTime();
BENCHMARK_CAPTURE(setWithLibplist, safe, replaceAndSync)
    ->Name("domain/libplist, safe")
    ->Arg(10)
    ->Arg(1000)
    ->UseRealTime();

} // namespace

BENCHMARK_MAIN();
