#include "platform/capture/PipeWireSocket.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace platform {
namespace {

const QString SystemFolder = QStringLiteral("/run/pipewire");

QString firstSet(std::initializer_list<const char *> variables)
{
    for (const char *variable : variables) {
        if (QString value = qEnvironmentVariable(variable); !value.isEmpty())
            return value;
    }
    return {};
}

/// Connects to the socket at the path `file`; returns the descriptor or -1.
int connectTo(const QString &file)
{
    sockaddr_un address = {};
    const QByteArray path = QFile::encodeName(file);
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path)
        return -1;
    address.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), address.sun_path);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0
        || ::connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0)
        return descriptor;
    ::close(descriptor);
    return -1;
}

} // namespace

QStringList pipeWireSocketPaths()
{
    const QString set = firstSet({"PIPEWIRE_REMOTE"});
    const QString remote = set.isEmpty() ? QStringLiteral("pipewire-0") : set;
    if (remote.startsWith(QLatin1Char('/')))
        return {remote};
    QStringList paths;
    for (const QString &folder : {firstSet({"PIPEWIRE_RUNTIME_DIR", "XDG_RUNTIME_DIR"}), SystemFolder}) {
        if (!folder.isEmpty())
            paths.append(folder + QLatin1Char('/') + remote);
    }
    return paths;
}

QString pipeWireSocketPath()
{
    const QStringList paths = pipeWireSocketPaths();
    const auto path =
        std::find_if(paths.begin(), paths.end(), [](const QString &each) { return QFileInfo::exists(each); });
    return path == paths.end() ? paths.value(0) : *path;
}

PipeWireSocket::PipeWireSocket()
{
    for (const QString &path : pipeWireSocketPaths()) {
        mDescriptor = connectTo(path);
        if (isOpen())
            return;
    }
}

PipeWireSocket::~PipeWireSocket()
{
    if (isOpen())
        ::close(mDescriptor);
}

int PipeWireSocket::duplicate() const
{
    return isOpen() ? ::fcntl(mDescriptor, F_DUPFD_CLOEXEC, 0) : -1;
}

void PipeWireSocket::shutdown() const
{
    if (isOpen())
        ::shutdown(mDescriptor, SHUT_RDWR);
}

} // namespace platform
