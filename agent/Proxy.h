#pragma once

#include <memory>

/// A reference to a remote object that may be nil. Calls on nil go to the interface's base class, which does
/// nothing and returns nil, 0 or false. So no caller has to test for nil.
template <class Interface>
class Proxy {
public:
    Proxy() = default;
    Proxy(std::shared_ptr<Interface> object) // NOLINT(google-explicit-constructor): a proxy is its object
        : mObject(std::move(object))
    {
    }

    explicit operator bool() const { return mObject != nullptr; }
    void reset() { mObject.reset(); }

    /// Keeps the object alive for the whole call: the call may end in the link being closed.
    std::shared_ptr<Interface> operator->() const
    {
        return mObject ? mObject : std::make_shared<Interface>();
    }

private:
    std::shared_ptr<Interface> mObject;
};
