#pragma once

#include "simulator/model/Behaviour.h"
#include "simulator/model/ErrorCodes.h"
#include "simulator/model/Timing.h"

#include <QTimer>

namespace simulator {

class Notifier;

/// Writes firmware into the camera at the cable: reports progress and, once, the end.
class FirmwareWriter final : public QObject {
    Q_OBJECT
public:
    FirmwareWriter(const Behaviour &behaviour, const WantedErrors &errors, Notifier &notifier,
                   const Timing &timing);

    /// 0 when the reports will follow, otherwise the code of the refusal.
    int start();
    /// The camera has gone: a running update ends with an error, where updates run by themselves.
    void interrupt();

Q_SIGNALS:
    void succeeded();

private:
    void advance();
    void end(int code);
    [[nodiscard]] int finalCode() const;

    const Behaviour &mBehaviour;
    const WantedErrors &mErrors;
    Notifier &mNotifier;
    Timing mTiming;
    QTimer mTimer;
    int mStep = 0;
    int mUpdates = 0;
};

} // namespace simulator
