#pragma once

#include "agent/CallHandler.h"

#include <QDBusConnection>

namespace simulator {

class FaultInjector;
class Recorder;

/// Records every call to the agent. Delays or changes the reply if a script has asked for such a fault.
class CallInterceptor final : public CallHandler {
public:
    CallInterceptor(Recorder &recorder, FaultInjector &faults, const QDBusConnection &bus)
        : mRecorder(recorder)
        , mFaults(faults)
        , mBus(bus)
    {
    }

    void handle(const QDBusMessage &call, const QVariantList &arguments,
                const std::function<QVariantList()> &work) override;

private:
    void send(const QDBusMessage &call, const QDBusMessage &reply);

    Recorder &mRecorder;
    FaultInjector &mFaults;
    QDBusConnection mBus;
};

} // namespace simulator
