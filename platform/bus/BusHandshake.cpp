#include "platform/bus/BusHandshake.h"

#include "platform/bus/BusCall.h"

#include <QList>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <map>

namespace platform {
namespace {

constexpr char SessionAddress[] = "DBUS_SESSION_BUS_ADDRESS";

QByteArray socketInRuntimeFolder()
{
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    return folder.isEmpty() ? QByteArray() : "unix:path=" + folder + "/bus";
}

/// Returns the bus address that libdbus would use; empty if libdbus would start a bus itself.
QByteArray addressOf(QDBusConnection::BusType type)
{
    if (type == QDBusConnection::SystemBus) {
        const QByteArray address = qgetenv("DBUS_SYSTEM_BUS_ADDRESS");
        return address.isEmpty() ? QByteArrayLiteral("unix:path=/var/run/dbus/system_bus_socket") : address;
    }
    const QByteArray address = qgetenv(SessionAddress);
    return address.isEmpty() ? socketInRuntimeFolder() : address;
}

/// Returns the socket path of an address; for an abstract socket, a zero byte and its name. Empty for other
/// kinds of address, which only libdbus can open.
QByteArray socketName(const QByteArray &address)
{
    if (!address.startsWith("unix:"))
        return {};
    const auto entries = address.mid(5).split(',');
    for (const QByteArray &entry : entries) {
        QByteArray value = QByteArray::fromPercentEncoding(entry.mid(entry.indexOf('=') + 1));
        if (entry.startsWith("path="))
            return value;
        if (entry.startsWith("abstract="))
            return QByteArray(1, '\0') + value;
    }
    return {};
}

/// Returns a connected non-blocking socket; -1 if no server listens or the server's queue is full.
int connectTo(const QByteArray &name)
{
    sockaddr_un address{};
    if (static_cast<std::size_t>(name.size()) >= sizeof address.sun_path)
        return -1;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    // Pass the exact length, because the kernel counts all bytes of an abstract socket's name.
    const auto length = offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (socket >= 0
        && ::connect(socket, reinterpret_cast<sockaddr *>(&address), static_cast<socklen_t>(length)) == 0)
        return socket;
    ::close(socket);
    return -1;
}

/// Requests the list of authentication mechanisms, which every bus sends before authentication.
bool greet(int socket)
{
    constexpr char Question[] = "\0AUTH\r\n";
    constexpr auto Length = static_cast<ssize_t>(sizeof Question - 1);
    return ::send(socket, Question, Length, MSG_NOSIGNAL) == Length;
}

/// The latest handshake with each bus. One with a silent bus stays here after its callers have gone, so that
/// later callers do not wait again.
std::map<QDBusConnection::BusType, std::shared_ptr<BusHandshake>> &latestHandshakes()
{
    static std::map<QDBusConnection::BusType, std::shared_ptr<BusHandshake>> handshakes;
    return handshakes;
}

} // namespace

BusHandshake::BusHandshake(QDBusConnection::BusType type)
    : mDeadline(CallTimeout)
{
    const QByteArray addresses = addressOf(type);
    if (addresses.isEmpty())
        mOutcome = Outcome::Answered;
    // Use the first address where a server listens, as libdbus does.
    for (const QByteArray &address : addresses.split(';')) {
        if (mOutcome == Outcome::Refused && !address.isEmpty())
            begin(address);
    }
}

std::shared_ptr<BusHandshake> BusHandshake::shared(QDBusConnection::BusType type)
{
    auto &latest = latestHandshakes()[type];
    if (!latest || latest->look() != Outcome::Silent)
        latest = std::make_shared<BusHandshake>(type);
    return latest;
}

void BusHandshake::forget(QDBusConnection::BusType type)
{
    latestHandshakes().erase(type);
}

BusHandshake::~BusHandshake()
{
    if (mSocket >= 0)
        ::close(mSocket);
}

BusHandshake::Outcome BusHandshake::wait()
{
    return lookFor(static_cast<int>(mDeadline.remainingTime()));
}

BusHandshake::Outcome BusHandshake::look()
{
    return lookFor(0);
}

void BusHandshake::begin(const QByteArray &address)
{
    const QByteArray name = socketName(address);
    if (name.isEmpty()) {
        mOutcome = Outcome::Answered;
        return;
    }
    mSocket = connectTo(name);
    if (mSocket < 0)
        return;
    mOutcome = greet(mSocket) ? Outcome::Silent : Outcome::Refused;
}

BusHandshake::Outcome BusHandshake::lookFor(int milliseconds)
{
    if (mOutcome != Outcome::Silent)
        return mOutcome;
    pollfd question{mSocket, POLLIN, 0};
    // A Unix signal can end poll() early with EINTR. The outcome then stays Silent, as after a timeout, and
    // the next call looks again.
    if (::poll(&question, 1, milliseconds) <= 0)
        return mOutcome;
    char byte = 0;
    mOutcome = ::recv(mSocket, &byte, 1, 0) == 1 ? Outcome::Answered : Outcome::Refused;
    return mOutcome;
}

void keepToolkitOffSilentBus()
{
    const auto handshake = BusHandshake::shared(QDBusConnection::SessionBus);
    if (handshake->wait() != BusHandshake::Outcome::Silent)
        return BusHandshake::forget(QDBusConnection::SessionBus);
    const QByteArray address = qgetenv(SessionAddress);
    qputenv(SessionAddress, "unix:path=/nonexistent");
    // Open Qt's session bus now, with an address that fails at once. Qt keeps the failed connection, so that
    // later calls of sessionBus() do not block either.
    static_cast<void>(QDBusConnection::sessionBus());
    if (address.isNull())
        qunsetenv(SessionAddress);
    else
        qputenv(SessionAddress, address);
}

} // namespace platform
