#pragma once

#include "simulator/Options.h"
#include "simulator/bus/CallInterceptor.h"
#include "simulator/bus/DeviceController.h"
#include "simulator/bus/FaultInjector.h"
#include "simulator/bus/PaneListener.h"
#include "simulator/bus/Recorder.h"
#include "simulator/bus/UsbController.h"
#include "simulator/model/AgentModel.h"
#include "simulator/model/BusNotifier.h"
#include "simulator/picture/Picture.h"
#include "simulator/script/Script.h"

#include <optional>

namespace simulator {

/// Publishes the model on the session bus and the model's picture in PipeWire.
class AgentService final : public QObject {
    Q_OBJECT
public:
    AgentService(const Options &options, const QDBusConnection &bus);

    /// Takes the bus names, then posts "KS7AgentStarted". Returns the reason of a failure; nothing on
    /// success.
    std::optional<QString> start();

private Q_SLOTS:
    void busHasGone();

private:
    bool publish();
    /// Creates an adaptor for `agent`, which implements one of the agent's two interfaces, and registers it
    /// on the bus.
    template <class Adaptor, class Agent>
    bool publish(const QString &registeredName, Agent &agent);
    bool publish(const QString &registeredName, QObject &object);
    std::optional<QString> takeNames();
    void showPicture();

    Options mOptions;
    QDBusConnection mBus;
    BusNotifier mNotifier;
    AgentPreferences mPreferences;
    AgentModel mModel;
    Recorder mRecorder;
    FaultInjector mFaults;
    PaneListener mListener;
    CallInterceptor mInterceptor;
    DeviceController mDeviceController;
    UsbController mUsbController;
    Script mScript;
    std::optional<Picture> mPicture;
};

} // namespace simulator
