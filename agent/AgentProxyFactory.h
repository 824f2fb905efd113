#pragma once

#include "agent/KS7DeviceControllerProxy.h"
#include "agent/Proxy.h"
#include "agent/TernUSBCommandControllerProxy.h"

#include <memory>

namespace platform {
class RootProxy;
}

/// Fixes the interface of a root proxy, so that its calls need no further exchange with the peer.
class AgentProxyFactory {
public:
    virtual ~AgentProxyFactory() = default;

    /// nil for a nil root.
    virtual Proxy<KS7DeviceControllerProxy>
    deviceController(const std::shared_ptr<platform::RootProxy> &root) = 0;
    virtual Proxy<TernUSBCommandControllerProxy>
    usbController(const std::shared_ptr<platform::RootProxy> &root) = 0;
};

/// Makes proxies that send their calls over D-Bus.
std::shared_ptr<AgentProxyFactory> makeDBusProtocols();
