#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// Paths where PipeWire may listen, in the order in which PipeWire's clients try them: the user's runtime
/// folder, then the system's. PIPEWIRE_REMOTE replaces the socket's name or gives an absolute path.
QStringList pipeWireSocketPaths();

/// The first of these paths that exists, else the first one; empty if there are none.
QString pipeWireSocketPath();

/// The pane's own connection to PipeWire, closed in the destructor. Libraries receive a duplicate of its
/// descriptor.
class PipeWireSocket {
public:
    PipeWireSocket();
    ~PipeWireSocket();
    PipeWireSocket(const PipeWireSocket &) = delete;
    PipeWireSocket &operator=(const PipeWireSocket &) = delete;

    /// False where no PipeWire runs.
    [[nodiscard]] bool isOpen() const { return mDescriptor >= 0; }
    [[nodiscard]] int descriptor() const { return mDescriptor; }
    /// A duplicate of the descriptor, which the caller closes; -1 without a connection.
    [[nodiscard]] int duplicate() const;
    /// Shuts the socket down for all duplicates, which wakes threads that wait for a reply. Any thread.
    void shutdown() const;

private:
    int mDescriptor = -1;
};

} // namespace platform
