#pragma once

#include "simulator/model/Behaviour.h"
#include "simulator/model/ErrorCodes.h"
#include "simulator/model/Timing.h"

#include <QObject>
#include <QString>

namespace simulator {

class Notifier;

/// Sets the passkey of the camera at the cable and reports it some time later.
class PasskeyChange final : public QObject {
    Q_OBJECT
public:
    PasskeyChange(const Behaviour &behaviour, const WantedErrors &errors, Notifier &notifier,
                  const Timing &timing);

    /// 0 when the report "KS7PassKeySet" will follow, otherwise the code of the refusal.
    int start(const QString &passKey);

private:
    [[nodiscard]] int refusal(const QString &passKey) const;
    [[nodiscard]] int lateError(const QString &passKey) const;
    void report(const QString &passKey);

    const Behaviour &mBehaviour;
    const WantedErrors &mErrors;
    Notifier &mNotifier;
    Timing mTiming;
};

} // namespace simulator
