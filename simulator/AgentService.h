#pragma once

#include "simulator/AgentModel.h"
#include "simulator/BackgroundPicture.h"
#include "simulator/BusNotifier.h"
#include "simulator/DeviceController.h"
#include "simulator/Faults.h"
#include "simulator/Options.h"
#include "simulator/PaneListener.h"
#include "simulator/Recorder.h"
#include "simulator/Script.h"
#include "simulator/UsbController.h"

#include <optional>

namespace simulator {

/// The agent as a process: puts the model on the bus, and its picture beside it.
class AgentService final : public QObject {
    Q_OBJECT
public:
    AgentService(const Options &options, const QDBusConnection &bus);

    /// Takes the names, then says that the agent has started. Why it cannot, where it cannot.
    std::optional<QString> start();

private Q_SLOTS:
    void busHasGone();

private:
    bool vend();
    bool vend(const QString &registeredName, QObject &object);
    std::optional<QString> takeNames();
    void showPicture();

    Options mOptions;
    QDBusConnection mBus;
    Timing mTiming;
    BusNotifier mNotifier;
    AgentPreferences mPreferences;
    AgentModel mModel;
    Recorder mRecorder;
    Faults mFaults;
    PaneListener mListener;
    CallDesk mDesk;
    DeviceController mDeviceController;
    UsbController mUsbController;
    Script mScript;
    BackgroundPicture mPicture;
};

} // namespace simulator
