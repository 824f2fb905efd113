#pragma once

#include "simulator/picture/PictureSettings.h"

#include <QObject>

namespace simulator {

class PictureThread;

/// The agent's PipeWire node, from construction to destruction. It runs in its own thread, because PipeWire
/// may be slow while the agent has calls to answer.
class Picture final : public QObject {
    Q_OBJECT
public:
    explicit Picture(const PictureSettings &settings);
    ~Picture() override;

    /// Shows a moving picture with this text; black when it is empty.
    void show(const QString &caption);

Q_SIGNALS:
    /// Emitted when PipeWire is absent or has ended. The picture returns with PipeWire.
    void failed();

private:
    PictureThread *const mThread;
};

} // namespace simulator
