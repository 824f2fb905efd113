#pragma once

#include "agent/AgentProxyFactory.h"

class FakeAgent;

/// Creates proxies that take their replies from the fields of a FakeAgent.
class FakeAgentProxyFactory final : public AgentProxyFactory {
public:
    explicit FakeAgentProxyFactory(FakeAgent &agent)
        : mAgent(agent)
    {
    }
    Proxy<KS7DeviceControllerProxy>
    deviceController(const std::shared_ptr<platform::RootProxy> &root) override;
    Proxy<TernUSBCommandControllerProxy>
    usbController(const std::shared_ptr<platform::RootProxy> &root) override;

private:
    FakeAgent &mAgent;
};
