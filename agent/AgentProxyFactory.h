#pragma once

#include "agent/KS7DeviceControllerProxy.h"
#include "agent/Proxy.h"
#include "agent/TernUSBCommandControllerProxy.h"

#include <memory>

namespace platform {
class RootProxy;
}

/// Makes typed proxies of a root proxy. Their calls ask neither the bus nor the agent for the interface
/// first.
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
