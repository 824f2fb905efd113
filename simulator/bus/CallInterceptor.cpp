#include "simulator/bus/CallInterceptor.h"

#include "simulator/bus/FaultInjector.h"
#include "simulator/bus/MalformedReplies.h"
#include "simulator/bus/Recorder.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>

namespace simulator {

QVariantList CallInterceptor::answer(const QDBusContext &call, const QString &operation,
                                     const QVariantList &arguments, const std::function<QVariantList()> &work)
{
    mRecorder.recordCall(operation, arguments);
    mFaults.dieIfDue(operation);
    if (mFaults.isHanging(operation)) {
        replyLater(call, work);
        return {};
    }
    const QString kind = mFaults.garbage(operation);
    if (kind.isEmpty())
        return work();
    call.setDelayedReply(true);
    call.connection().send(MalformedReplies::reply(call.message(), kind, work()));
    return {};
}

void CallInterceptor::replyLater(const QDBusContext &call, const std::function<QVariantList()> &work)
{
    call.setDelayedReply(true);
    mFaults.hold([message = call.message(), bus = call.connection(), work] {
        const QVariantList results = work();
        if (message.isReplyRequired())
            bus.send(message.createReply(results));
    });
}

void CallInterceptor::perform(const QDBusContext &call, const QString &operation,
                              const QVariantList &arguments, const std::function<void()> &work)
{
    answer(call, operation, arguments, [work] {
        work();
        return QVariantList();
    });
}

} // namespace simulator
