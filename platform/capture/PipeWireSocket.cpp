#include "platform/capture/PipeWireSocket.h"

#include <QFile>
#include <QString>

#include <algorithm>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace platform {
namespace {

QString firstSet(std::initializer_list<const char *> variables)
{
    for (const char *variable : variables) {
        if (QString value = qEnvironmentVariable(variable); !value.isEmpty())
            return value;
    }
    return {};
}

/// Where PipeWire listens, by its own rules.
QByteArray socketPath()
{
    const QString remote = qEnvironmentVariable("PIPEWIRE_REMOTE", QStringLiteral("pipewire-0"));
    if (remote.startsWith(QLatin1Char('/')))
        return QFile::encodeName(remote);
    const QString folder = firstSet({"PIPEWIRE_RUNTIME_DIR", "XDG_RUNTIME_DIR"});
    return folder.isEmpty() ? QByteArray() : QFile::encodeName(folder + QLatin1Char('/') + remote);
}

} // namespace

PipeWireSocket::PipeWireSocket()
{
    sockaddr_un address = {};
    const QByteArray path = socketPath();
    if (path.isEmpty() || static_cast<std::size_t>(path.size()) >= sizeof address.sun_path)
        return;
    address.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), address.sun_path);
    mDescriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (mDescriptor < 0
        || ::connect(mDescriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0)
        return;
    ::close(mDescriptor);
    mDescriptor = -1;
}

PipeWireSocket::~PipeWireSocket()
{
    if (isOpen())
        ::close(mDescriptor);
}

void PipeWireSocket::cut() const
{
    if (isOpen())
        ::shutdown(mDescriptor, SHUT_RDWR);
}

} // namespace platform
