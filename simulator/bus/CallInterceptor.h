#pragma once

#include <QString>
#include <QVariantList>

#include <functional>

class QDBusContext;

namespace simulator {

class FaultInjector;
class Recorder;

/// Takes every call that the agent gets: records it, and lets it go wrong when it is to go wrong.
class CallInterceptor {
public:
    CallInterceptor(Recorder &recorder, FaultInjector &faults)
        : mRecorder(recorder)
        , mFaults(faults)
    {
    }

    /// Does the work and returns its results; the empty list when the reply is no longer for the caller to
    /// send. `call` is the object being called.
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
