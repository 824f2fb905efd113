#pragma once

#include <QDBusMessage>
#include <QVariantList>

#include <functional>

/// Replies to the calls that an adaptor receives.
class CallHandler {
public:
    virtual ~CallHandler() = default;

    /// Sends the reply, now or later, with the results of `work`. `arguments` have the declared types, unlike
    /// those of `call`.
    virtual void handle(const QDBusMessage &call, const QVariantList &arguments,
                        const std::function<QVariantList()> &work) = 0;
};
