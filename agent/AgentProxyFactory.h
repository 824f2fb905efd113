#pragma once

#include "agent/KS7DeviceControllerProxy.h"
#include "agent/Proxy.h"
#include "agent/TernUSBCommandControllerProxy.h"

#include <memory>

namespace platform {
class RootProxy;
}

/// Creates typed proxies from a root proxy. Unlike QDBusInterface, they need no introspection before the
/// first call.
class AgentProxyFactory {
public:
    virtual ~AgentProxyFactory() = default;

    /// For a null root, returns a nil proxy, whose calls do nothing.
    virtual Proxy<KS7DeviceControllerProxy>
    deviceController(const std::shared_ptr<platform::RootProxy> &root) = 0;
    virtual Proxy<TernUSBCommandControllerProxy>
    usbController(const std::shared_ptr<platform::RootProxy> &root) = 0;
};

/// Creates the factory whose proxies send their calls over D-Bus.
std::shared_ptr<AgentProxyFactory> makeDBusProtocols();
