#pragma once

#include <QDBusMessage>
#include <QVariantList>

#include <functional>

/// Replies to the calls that an adaptor receives. Implementations may record, delay or spoil the replies.
class CallHandler {
public:
    virtual ~CallHandler() = default;

    /// Runs `work` and sends its results as the reply, at once or later. `arguments` have the declared types.
    /// The arguments in `call` still have the types in which the bus delivered them.
    virtual void handle(const QDBusMessage &call, const QVariantList &arguments,
                        const std::function<QVariantList()> &work) = 0;
};
