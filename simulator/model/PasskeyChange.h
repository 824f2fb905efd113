#pragma once

#include "simulator/model/Behaviour.h"

#include <QObject>
#include <QString>

namespace simulator {

class BusNotifier;

/// Simulates a change of the passkey on the USB cable. The result is posted some time after the call.
class PasskeyChange final : public QObject {
    Q_OBJECT
public:
    PasskeyChange(const Behaviour &behaviour, BusNotifier &notifier);

    /// Returns 0 if "KS7PassKeySet" will be posted later, otherwise an error code.
    int start(const QString &passKey);

private:
    [[nodiscard]] int refusal(const QString &passKey) const;
    [[nodiscard]] int lateError(const QString &passKey) const;
    void report(const QString &passKey);

    const Behaviour &mBehaviour;
    BusNotifier &mNotifier;
};

} // namespace simulator
