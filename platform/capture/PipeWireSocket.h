#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// Paths of sockets where PipeWire may listen, in the order in which its clients try them: the user's runtime
/// folder, then the system's. PIPEWIRE_REMOTE replaces the socket's name or gives a path.
QStringList pipeWireSocketPaths();

/// The first path of pipeWireSocketPaths() that exists, else its first path; empty if it has none.
QString pipeWireSocketPath();

/// The pane's own connection to PipeWire, closed in the destructor. Libraries use duplicates of its
/// descriptor.
class PipeWireSocket {
public:
    PipeWireSocket();
    ~PipeWireSocket();
    PipeWireSocket(const PipeWireSocket &) = delete;
    PipeWireSocket &operator=(const PipeWireSocket &) = delete;

    /// Whether a PipeWire server has accepted the connection.
    [[nodiscard]] bool isOpen() const { return mDescriptor >= 0; }
    [[nodiscard]] int descriptor() const { return mDescriptor; }
    /// Returns a duplicate of the descriptor, which the caller must close; -1 without a connection.
    [[nodiscard]] int duplicate() const;
    /// Shuts the connection down for all duplicates of its descriptor, which wakes the threads that wait for
    /// a reply. Any thread may call this.
    void shutdown() const;

private:
    int mDescriptor = -1;
};

} // namespace platform
