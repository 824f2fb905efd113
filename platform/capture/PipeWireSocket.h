#pragma once

namespace platform {

/// A connection of our own to PipeWire, closed at the end. Whoever speaks over it works on a duplicate.
class PipeWireSocket {
public:
    PipeWireSocket();
    ~PipeWireSocket();
    PipeWireSocket(const PipeWireSocket &) = delete;
    PipeWireSocket &operator=(const PipeWireSocket &) = delete;

    /// False where no PipeWire runs.
    [[nodiscard]] bool isOpen() const { return mDescriptor >= 0; }
    [[nodiscard]] int descriptor() const { return mDescriptor; }
    /// Cuts the connection for every duplicate too: who waits for an answer sees its end. Any thread.
    void cut() const;

private:
    int mDescriptor = -1;
};

} // namespace platform
