#pragma once

#include <memory>

/// A reference to a remote object, which may be nil. Calls on nil do nothing and return nil, 0 or false, so
/// callers need no test for nil.
template <class Interface>
class Proxy {
public:
    Proxy() = default;
    Proxy(std::shared_ptr<Interface> object) // NOLINT(google-explicit-constructor): conversion is intended
        : mObject(std::move(object))
    {
    }

    explicit operator bool() const { return mObject != nullptr; }
    void reset() { mObject.reset(); }

    /// Returns a copy of the shared pointer, so that the object survives the call. A failing call may end the
    /// connection, which resets mObject.
    std::shared_ptr<Interface> operator->() const
    {
        return mObject ? mObject : std::make_shared<Interface>();
    }

private:
    std::shared_ptr<Interface> mObject;
};
