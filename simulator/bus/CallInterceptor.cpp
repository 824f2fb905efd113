#include "simulator/bus/CallInterceptor.h"

#include "simulator/bus/FaultInjector.h"
#include "simulator/bus/MalformedReplies.h"
#include "simulator/bus/Recorder.h"

namespace simulator {

void CallInterceptor::handle(const QDBusMessage &call, const QVariantList &arguments,
                             const std::function<QVariantList()> &work)
{
    const QString operation = call.member();
    mRecorder.recordCall(operation, arguments);
    mFaults.dieIfDue(operation);
    call.setDelayedReply(true);
    if (mFaults.isHanging(operation))
        mFaults.hold([this, call, work] { send(call, call.createReply(work())); });
    else
        send(call, MalformedReplies::reply(call, mFaults.malformation(operation), work()));
}

void CallInterceptor::send(const QDBusMessage &call, const QDBusMessage &reply)
{
    if (call.isReplyRequired())
        mBus.send(reply);
}

} // namespace simulator
