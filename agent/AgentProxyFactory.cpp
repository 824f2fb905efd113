#include "agent/AgentProxyFactory.h"

#include "agent/KS7DeviceControllerCaller.h"
#include "agent/TernUSBCommandControllerCaller.h"
#include "agent/WireTypes.h"
#include "platform/bus/RemoteConnection.h"

using platform::DBusRootProxy;

namespace {

class DBusProtocols final : public AgentProxyFactory {
public:
    DBusProtocols() { registerWireTypes(); }

    Proxy<KS7DeviceControllerProxy>
    deviceController(const std::shared_ptr<platform::RootProxy> &root) override
    {
        return proxy<KS7DeviceControllerProxy, KS7DeviceControllerCaller>(root);
    }
    Proxy<TernUSBCommandControllerProxy>
    usbController(const std::shared_ptr<platform::RootProxy> &root) override
    {
        return proxy<TernUSBCommandControllerProxy, TernUSBCommandControllerCaller>(root);
    }

private:
    template <class Protocol, class Caller>
    static Proxy<Protocol> proxy(const std::shared_ptr<platform::RootProxy> &root)
    {
        auto remote = std::dynamic_pointer_cast<DBusRootProxy>(root);
        if (!remote)
            return {};
        return std::shared_ptr<Protocol>(std::make_shared<Caller>(std::move(remote)));
    }
};

} // namespace

std::shared_ptr<AgentProxyFactory> makeDBusProtocols()
{
    return std::make_shared<DBusProtocols>();
}
