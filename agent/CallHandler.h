#pragma once

#include <QDBusMessage>
#include <QVariantList>

#include <functional>

/// Handles the calls that an adaptor receives and sends the replies. Implementations may record calls, delay
/// replies or make them malformed.
class CallHandler {
public:
    virtual ~CallHandler() = default;

    /// Runs `work` and sends its results as the reply to `call`, at once or later. Read the arguments from
    /// `arguments`, which have the declared types; those in `call` are not converted yet.
    virtual void handle(const QDBusMessage &call, const QVariantList &arguments,
                        const std::function<QVariantList()> &work) = 0;
};
