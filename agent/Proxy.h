#pragma once

#include <memory>

/// A reference to a remote object, which may be nil. Calls on nil do nothing and return nil, 0 or false, so
/// callers need no test for nil.
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

    /// Returns a copy of the shared pointer: a failing call may close the link, which resets mObject during
    /// the call.
    std::shared_ptr<Interface> operator->() const
    {
        return mObject ? mObject : std::make_shared<Interface>();
    }

private:
    std::shared_ptr<Interface> mObject;
};
