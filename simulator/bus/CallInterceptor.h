#pragma once

#include <QString>
#include <QVariantList>

#include <functional>

class QDBusContext;

namespace simulator {

class FaultInjector;
class Recorder;

/// Records every call to the agent and applies the faults that a script asked for.
class CallInterceptor {
public:
    CallInterceptor(Recorder &recorder, FaultInjector &faults)
        : mRecorder(recorder)
        , mFaults(faults)
    {
    }

    /// Does the work and returns its results; an empty list when the reply was sent here or is delayed.
    /// `call` is the called object.
    QVariantList answer(const QDBusContext &call, const QString &operation, const QVariantList &arguments,
                        const std::function<QVariantList()> &work);
    /// The same for an operation without a result.
    void perform(const QDBusContext &call, const QString &operation, const QVariantList &arguments,
                 const std::function<void()> &work);

private:
    void replyLater(const QDBusContext &call, const std::function<QVariantList()> &work);

    Recorder &mRecorder;
    FaultInjector &mFaults;
};

} // namespace simulator
