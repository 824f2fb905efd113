#pragma once

#include "simulator/picture/PictureSettings.h"

#include <QObject>

namespace simulator {

class PictureThread;

/// The agent's PipeWire node, from construction to destruction. PipeWire is met on a thread of its own, since
/// it may be slow or silent while the agent has calls to answer.
class Picture final : public QObject {
    Q_OBJECT
public:
    explicit Picture(const PictureSettings &settings);
    ~Picture() override;

    /// Shows a moving picture with this text; black when it is empty.
    void show(const QString &caption);

Q_SIGNALS:
    /// There is no PipeWire, or it has ended. The picture comes back with it.
    void failed();

private:
    PictureThread *const mThread;
};

} // namespace simulator
