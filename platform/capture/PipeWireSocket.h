#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// Where PipeWire may listen, in the order in which its own clients try: the runtime folder of the user, then
/// the one of the system. PIPEWIRE_REMOTE names another socket, or its absolute path.
QStringList pipeWireSocketPaths();

/// The first of these paths that exists, else the first; empty without any.
QString pipeWireSocketPath();

/// A connection of our own to PipeWire, closed at the end. Libraries get a duplicate of its descriptor.
class PipeWireSocket {
public:
    PipeWireSocket();
    ~PipeWireSocket();
    PipeWireSocket(const PipeWireSocket &) = delete;
    PipeWireSocket &operator=(const PipeWireSocket &) = delete;

    /// False where no PipeWire runs.
    [[nodiscard]] bool isOpen() const { return mDescriptor >= 0; }
    [[nodiscard]] int descriptor() const { return mDescriptor; }
    /// A descriptor that the caller closes; -1 for none.
    [[nodiscard]] int duplicate() const;
    /// Ends the connection for every duplicate too, which wakes threads that wait for a reply. Any thread.
    void shutdown() const;

private:
    int mDescriptor = -1;
};

} // namespace platform
