#pragma once

#include "simulator/picture/PictureSettings.h"

#include <QObject>

namespace simulator {

class PictureThread;

/// The agent's PipeWire node. The node exists as long as this object. It has its own thread, because a slow
/// PipeWire must not delay the agent's replies.
class Picture final : public QObject {
    Q_OBJECT
public:
    explicit Picture(const PictureSettings &settings);
    ~Picture() override;

    /// Shows a moving picture with this text, or a black picture if the text is empty.
    void show(const QString &caption);

Q_SIGNALS:
    /// Emitted when PipeWire is absent or has ended. The node reappears when PipeWire has restarted.
    void failed();

private:
    PictureThread *const mThread;
};

} // namespace simulator
