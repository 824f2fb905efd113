#include "agent/AgentProxyFactory.h"

#include "DeviceControllerInterface.h"
#include "USBControllerInterface.h"
#include "agent/WireTypes.h"
#include "platform/base/LogCategory.h"
#include "platform/bus/BusCall.h"
#include "platform/bus/RemoteConnection.h"

using namespace std::chrono_literals;
using platform::CallTimeout;
using platform::DBusRootProxy;

namespace {

/// The agent writes to the camera's flash memory inside these calls.
constexpr auto SlowCallTimeout = 30000ms;
/// The result of such a call when the agent answers with an error or with another type: 0 would be success.
constexpr int NoResult = -1;

/// Makes the calls of one generated proxy and checks their replies. A reply that does not have exactly the
/// declared type counts as none.
template <class Interface>
class Caller {
public:
    explicit Caller(std::shared_ptr<DBusRootProxy> root)
        : mRoot(std::move(root))
        , mInterface(mRoot->owner(), mRoot->path(), mRoot->bus())
    {
    }

    /// The reply to `send`, which makes the call; 0 or empty when there is none.
    template <class Answer, class Send>
    Answer ask(Send send)
    {
        if (!mRoot->isValid())
            return {};
        mInterface.setTimeout(CallTimeout);
        QDBusPendingReply<Answer> reply = send(mInterface);
        return isAnswered(reply) ? reply.value() : Answer();
    }

    /// The result of a slow call: 0 is success. A call that ends in the link's death answers 0, too: the
    /// death tells the rest.
    template <class Send>
    int askResult(Send send)
    {
        if (!mRoot->isValid())
            return 0;
        mInterface.setTimeout(SlowCallTimeout);
        QDBusPendingReply<int> reply = send(mInterface);
        if (isAnswered(reply))
            return reply.value();
        return mRoot->isValid() ? NoResult : 0;
    }

    /// A call without a result. It waits for its reply as well.
    template <class Send>
    void tell(Send send)
    {
        if (!mRoot->isValid())
            return;
        mInterface.setTimeout(CallTimeout);
        QDBusPendingReply<> reply = send(mInterface);
        isAnswered(reply);
    }

    /// Waits for the reply; false when there is none of the declared types.
    template <class... Types>
    bool isAnswered(QDBusPendingReply<Types...> &reply)
    {
        reply.waitForFinished();
        if (reply.isError()) {
            mRoot->callFailed(reply.reply());
            qCWarning(KS7_PLATFORM, "A call to the agent failed: %s",
                      qUtf8Printable(reply.error().message()));
            return false;
        }
        // QDBusPendingReply checks the declared types only and accepts further arguments after them.
        const bool complete = reply.reply().arguments().size() == reply.count();
        if (!complete)
            qCWarning(KS7_PLATFORM, "A reply of the agent is too long: \"%s\"",
                      qUtf8Printable(reply.reply().signature()));
        return complete;
    }

    Interface *interfaceForCall()
    {
        mInterface.setTimeout(CallTimeout);
        return mRoot->isValid() ? &mInterface : nullptr;
    }

private:
    std::shared_ptr<DBusRootProxy> mRoot;
    Interface mInterface;
};

class DBusDeviceController final : public KS7DeviceControllerProxy {
public:
    explicit DBusDeviceController(std::shared_ptr<DBusRootProxy> root)
        : mAgent(std::move(root))
    {
    }

    void flush() override
    {
        mAgent.tell([](auto &agent) { return agent.flush(); });
    }
    CameraDictionary cameraDict() override
    {
        return mAgent.ask<CameraDictionary>([](auto &agent) { return agent.cameraDict(); });
    }
    void getAudioLevel_l(float *l, float *r) override
    {
        auto *agent = mAgent.interfaceForCall();
        if (!agent)
            return;
        auto reply = agent->getAudioLevel_l();
        if (!mAgent.isAnswered(reply))
            return;
        *l = static_cast<float>(reply.argumentAt<0>());
        *r = static_cast<float>(reply.argumentAt<1>());
    }
    void setIgnore(bool ignore, const QVariantMap &forCam) override
    {
        mAgent.tell([&](auto &agent) { return agent.setIgnore(ignore, forCam); });
    }
    void setName(const QString &name, const QString &forCamAddress) override
    {
        mAgent.tell([&](auto &agent) { return agent.setName(name, forCamAddress); });
    }
    void checkRemoveCurrentCam(const std::optional<CameraRecord> &camera) override
    {
        mAgent.tell([&](auto &agent) { return agent.checkRemoveCurrentCam(dictionaryFromRecord(camera)); });
    }
    std::uint64_t indexOfPreferredKS7Cam() override
    {
        return mAgent.ask<qulonglong>([](auto &agent) { return agent.indexOfPreferredKS7Cam(); });
    }
    bool validateName(const QString &name) override
    {
        return mAgent.ask<bool>([&](auto &agent) { return agent.validateName(name); });
    }
    void streamingStarted() override
    {
        mAgent.tell([](auto &agent) { return agent.streamingStarted(); });
    }
    void pairingInitiated() override
    {
        mAgent.tell([](auto &agent) { return agent.pairingInitiated(); });
    }
    void streamingInitiated() override
    {
        mAgent.tell([](auto &agent) { return agent.streamingInitiated(); });
    }
    void streamingStopped() override
    {
        mAgent.tell([](auto &agent) { return agent.streamingStopped(); });
    }
    void removeCameraAtIndex(int row, bool fromFavorites) override
    {
        mAgent.tell([&](auto &agent) { return agent.removeCameraAtIndex(row, fromFavorites); });
    }
    void getKnownZephraDevices() override
    {
        mAgent.tell([](auto &agent) { return agent.getKnownZephraDevices(); });
    }
    QStringList sortedDeviceList() override
    {
        return mAgent.ask<QStringList>([](auto &agent) { return agent.sortedDeviceList(); });
    }
    QList<QVariantMap> cameras() override
    {
        return mAgent.ask<CameraRecords>([](auto &agent) { return agent.cameras(); });
    }
    std::optional<CameraRecord> getPreferredKS7Cam() override
    {
        return recordFromDictionary(
            mAgent.ask<QVariantMap>([](auto &agent) { return agent.getPreferredKS7Cam(); }));
    }
    bool isPreferredDeviceAddress(const QString &address) override
    {
        return mAgent.ask<bool>([&](auto &agent) { return agent.isPreferredDeviceAddress(address); });
    }
    void setPreferredDeviceAddress(const QString &address) override
    {
        mAgent.tell([&](auto &agent) { return agent.setPreferredDeviceAddress(address); });
    }

private:
    Caller<DeviceControllerInterface> mAgent;
};

class DBusUSBController final : public TernUSBCommandControllerProxy {
public:
    explicit DBusUSBController(std::shared_ptr<DBusRootProxy> root)
        : mAgent(std::move(root))
    {
    }

    int startUpdate() override
    {
        return mAgent.askResult([](auto &agent) { return agent.startUpdate(); });
    }
    bool connectedCamNeedsFirmwareUpdate() override
    {
        return mAgent.ask<bool>([](auto &agent) { return agent.connectedCamNeedsFirmwareUpdate(); });
    }
    int setPassKey(const QString &passKey) override
    {
        return mAgent.askResult([&](auto &agent) { return agent.setPassKey(passKey); });
    }
    bool connectedCamHasBTAddress(const QString &address) override
    {
        return mAgent.ask<bool>([&](auto &agent) { return agent.connectedCamHasBTAddress(address); });
    }

private:
    Caller<USBControllerInterface> mAgent;
};

class DBusProtocols final : public AgentProxyFactory {
public:
    DBusProtocols() { registerWireTypes(); }

    Proxy<KS7DeviceControllerProxy>
    deviceController(const std::shared_ptr<platform::RootProxy> &root) override
    {
        return proxy<KS7DeviceControllerProxy, DBusDeviceController>(root);
    }
    Proxy<TernUSBCommandControllerProxy>
    usbController(const std::shared_ptr<platform::RootProxy> &root) override
    {
        return proxy<TernUSBCommandControllerProxy, DBusUSBController>(root);
    }

private:
    template <class Protocol, class Implementation>
    static Proxy<Protocol> proxy(const std::shared_ptr<platform::RootProxy> &root)
    {
        auto remote = std::dynamic_pointer_cast<DBusRootProxy>(root);
        if (!remote)
            return {};
        return std::shared_ptr<Protocol>(std::make_shared<Implementation>(std::move(remote)));
    }
};

} // namespace

std::shared_ptr<AgentProxyFactory> makeDBusProtocols()
{
    return std::make_shared<DBusProtocols>();
}
