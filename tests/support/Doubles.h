#pragma once

#include "agent/AgentProxyFactory.h"
#include "platform/Services.h"
#include "platform/base/RunLoop.h"
#include "platform/bus/Connection.h"
#include "platform/bus/NotificationCenter.h"
#include "platform/capture/Capture.h"
#include "platform/desktop/AgentLauncher.h"
#include "platform/desktop/BluetoothDevice.h"
#include "platform/desktop/Bundle.h"
#include "platform/desktop/HostClasses.h"
#include "platform/desktop/KeyboardModifiers.h"
#include "platform/desktop/ProcessorClock.h"
#include "platform/desktop/Workspace.h"
#include "platform/power/PowerManagement.h"
#include "platform/preferences/UserDefaults.h"
#include "platform/sheets/Sheets.h"
#include "platform/updates/SoftwareUpdate.h"

#include <QHash>
#include <QStringList>

#include <map>
#include <optional>
#include <vector>

/// Everything that the doubles were asked to do, in order, one line each: "remote flush",
/// "post KS7StartDiscovering", "pause 100", "launch".
using Journal = std::shared_ptr<QStringList>;

/// A run loop whose clock stands until a test moves it.
class FakeRunLoop final : public platform::RunLoop {
public:
    explicit FakeRunLoop(Journal journal);
    void performAfterDelay(const void *target, std::chrono::milliseconds delay, Work work) override;
    void performOnMainThread(Work work) override;
    void cancelPreviousPerformRequests(const void *target) override;
    std::unique_ptr<platform::Timer> scheduledTimer(std::chrono::milliseconds interval, Work tick) override;
    bool runFor(std::chrono::milliseconds slice) override;
    bool runUntilWoken() override;
    void wake() override { }
    void pause(std::chrono::microseconds duration) override;

    /// Lets time pass: queued work, delayed calls and timers run when they are due, in order.
    void advance(std::chrono::milliseconds time);
    /// Runs what is queued for the next turn only.
    void turn();
    [[nodiscard]] std::size_t timerCount() const { return mTimers.size(); }
    [[nodiscard]] std::size_t pendingCount() const { return mDelayed.size(); }
    /// Runs in each nested run: a slice, or a wait that is woken.
    std::function<void()> onSlice;
    /// What happens in each pause.
    std::function<void()> onPause;
    /// From now on nested runs say that the application quits.
    bool quitting = false;

private:
    friend class FakeTimer;
    struct Delayed {
        const void *target;
        std::chrono::milliseconds due;
        Work work;
    };
    struct Repeating {
        int id;
        std::chrono::milliseconds interval;
        std::chrono::milliseconds due;
        Work tick;
    };
    bool runNextDue(std::chrono::milliseconds until);

    Journal mJournal;
    std::chrono::milliseconds mNow{0};
    std::vector<Work> mQueue;
    std::vector<Delayed> mDelayed;
    std::shared_ptr<bool> mAlive = std::make_shared<bool>(true);
    std::vector<Repeating> mTimers;
    int mNextTimer = 0;
};

/// A centre that keeps a list of what was posted and delivers at once.
class RecordingCenter final : public platform::NotificationCenter {
public:
    /// What of it goes into the journal.
    enum Noted { ObserversOnly, PostsToo };
    explicit RecordingCenter(Journal journal, Noted noted = ObserversOnly);
    void addObserver(const void *observer, const QString &name,
                     platform::NotificationHandler handler) override;
    void removeObserver(const void *observer, const QString &name) override;
    void postNotificationName(const QString &name, const void *object, const QVariantMap &userInfo) override;

    /// A post by somebody else: delivered, not recorded.
    void deliver(const QString &name, const QVariantMap &userInfo = {}, const void *object = nullptr);
    [[nodiscard]] int postCount(const QString &name) const;
    [[nodiscard]] QVariantMap lastUserInfo(const QString &name) const;
    /// The names in the order in which observers registered for them.
    QStringList registrations;
    std::vector<platform::Notification> posts;

private:
    Journal mJournal;
    Noted mNoted;
    platform::LocalNotificationCenter mCenter;
};

class FakeConnection;

/// The agent as the pane's two proxies see it: answers from its fields, every call in the journal.
class FakeAgent {
public:
    explicit FakeAgent(Journal journal);

    /// Adds or replaces a camera; new ones go to the end of the sorted list.
    void addCamera(const QString &address, const QString &name, int status, const QString &cameraID = {});
    void prefer(const QString &address);
    void call(const QString &line) { mJournal->append(QStringLiteral("remote ") + line); }

    bool running = true;
    bool usbServerRunning = true;
    /// The attempt at which a launched agent is there; 0: never.
    int appearsAtAttempt = 0;
    int attempts = 0;

    CameraDictionary cameraDict;
    QStringList sorted;
    std::uint64_t indexOfPreferred = NoPreferredCamera;
    std::optional<CameraRecord> preferred;
    bool acceptsNames = true;
    float left = 0;
    float right = 0;
    bool answersLevels = true;

    QString usbAddress;
    /// Whatever address it is asked about, even none, is the one at the cable.
    bool everyAddressIsAtTheCable = false;
    bool needsFirmware = false;
    int setPassKeyResult = 0;
    int startUpdateResult = 0;
    /// Runs inside the remote call named, before it answers.
    std::map<QString, std::function<void()>> during;

private:
    Journal mJournal;
};

class FakeConnections final : public platform::ConnectionRegistry {
public:
    FakeConnections(Journal journal, FakeAgent &agent,
                    std::shared_ptr<platform::NotificationCenter> localCenter);
    std::shared_ptr<platform::Connection> connectionWithRegisteredName(const QString &name) override;
    /// The agent goes: both connections report their death.
    void killAgent();
    /// Reports the death of the last connection to `name`.
    void die(const QString &name);
    [[nodiscard]] std::shared_ptr<platform::Connection> last(const QString &name) const;

private:
    Journal mJournal;
    FakeAgent &mAgent;
    std::shared_ptr<platform::NotificationCenter> mLocalCenter;
    std::map<QString, std::weak_ptr<FakeConnection>> mLast;
};

class FakeProtocols final : public AgentProxyFactory {
public:
    explicit FakeProtocols(FakeAgent &agent)
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

class FakeLauncher final : public platform::AgentLauncher {
public:
    explicit FakeLauncher(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    bool launch() override;
    int launches = 0;

private:
    Journal mJournal;
};

/// Domains in memory. `onDisk` is what the other writer sees; synchronize() hands the pane's write over to
/// it.
class FakeDefaults final : public platform::UserDefaults {
public:
    explicit FakeDefaults(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    std::optional<platform::PropertyListDictionary> persistentDomainForName(const QString &name) override;
    void setPersistentDomain(const std::optional<platform::PropertyListDictionary> &domain,
                             const QString &name) override;
    bool synchronize() override;

    /// The agent writes a value of its domain, creating it if need be.
    void agentWrites(const QString &key, const QVariant &value);
    [[nodiscard]] QVariant stored(const QString &key) const;
    std::optional<platform::PropertyListDictionary> onDisk;
    /// Runs inside synchronize(), before it returns.
    std::function<void()> duringSynchronize = [] {};
    bool diskIsFull = false;

private:
    Journal mJournal;
    std::optional<platform::PropertyListDictionary> mPending;
};

class FakePower final : public platform::PowerManagement {
public:
    explicit FakePower(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    std::uint32_t registerForSystemPower(void *refcon, Callback callback) override;
    void allowPowerChange(std::uint32_t rootPort, void *messageArgument) override;
    void send(std::uint32_t messageType, void *argument);

    std::vector<void *> allowed;
    int registrations = 0;

private:
    Journal mJournal;
    void *mRefcon = nullptr;
    Callback mCallback = nullptr;
};

class FakeSession;

class FakeDevice final : public platform::CaptureDevice {
public:
    FakeDevice(Journal journal, QString uniqueID, QString name = {});
    [[nodiscard]] QString uniqueID() const override { return mUniqueID; }
    [[nodiscard]] QString localizedDisplayName() const override { return mName; }
    bool open(std::optional<platform::CaptureError> &error) override;
    void close() override;
    [[nodiscard]] bool isOpen() const override { return mOpen; }

    bool opens = true;
    std::optional<platform::CaptureError> openError;

private:
    Journal mJournal;
    QString mUniqueID;
    QString mName;
    bool mOpen = false;
};

class FakeSession final : public platform::CaptureSession {
public:
    explicit FakeSession(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    bool addInput(const std::shared_ptr<platform::CaptureDeviceInput> &input,
                  std::optional<platform::CaptureError> &error) override;
    void startRunning() override;
    void stopRunning() override;
    [[nodiscard]] bool isRunning() const override { return mRunning; }
    void setFrameHandler(FrameHandler handler) override { mFrameHandler = std::move(handler); }
    void setLargestFrame(const QSize &pixels) override { largestFrame = pixels; }
    void deliverFrame(const QImage &frame);

    bool accepts = true;
    std::optional<platform::CaptureError> addError;
    std::shared_ptr<platform::CaptureDeviceInput> input;
    QSize largestFrame;

private:
    Journal mJournal;
    bool mRunning = false;
    FrameHandler mFrameHandler;
};

class FakeCapture final : public platform::Capture {
public:
    explicit FakeCapture(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    std::vector<std::shared_ptr<platform::CaptureDevice>> videoInputDevices() override;
    std::shared_ptr<platform::CaptureSession> makeSession() override;
    std::shared_ptr<FakeDevice> addDevice(const QString &uniqueID, const QString &name = {});

    std::vector<std::shared_ptr<FakeDevice>> devices;
    std::vector<std::shared_ptr<FakeSession>> sessions;
    /// For the sessions made from now on.
    bool sessionsAccept = true;
    std::optional<platform::CaptureError> addError;

private:
    Journal mJournal;
};

/// Keeps the sheets that are up. Ending one calls its end handler, as the presenter of the desktop does.
class FakeSheets final : public platform::SheetPresenter {
public:
    explicit FakeSheets(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    QWidget *applicationMainWindow() override { return &mMainWindow; }
    void beginAlertSheet(const platform::AlertSheet &alert, QWidget *window,
                         platform::SheetDidEnd didEnd) override;
    void beginSheet(platform::Sheet *sheet, QWidget *modalForWindow, platform::SheetDidEnd didEnd) override;
    void endSheet(platform::Sheet *sheet) override;

    struct ShownAlert {
        platform::AlertSheet alert;
        QWidget *window;
        platform::SheetDidEnd didEnd;
    };
    [[nodiscard]] bool isUp(const platform::Sheet *sheet) const;
    /// The window that the sheet hangs on, null when the sheet is not up.
    [[nodiscard]] QWidget *windowOf(const platform::Sheet *sheet) const;
    /// The person presses the alert's button. Answers whether its end handler took the alert off the screen,
    /// with the focus left on nothing in it.
    bool dismissAlert();
    std::vector<ShownAlert> alerts;
    /// Every alert ever begun, by title.
    QStringList alertTitles;

private:
    struct Shown {
        platform::Sheet *sheet;
        QWidget *window;
        platform::SheetDidEnd didEnd;
    };
    [[nodiscard]] std::vector<Shown>::const_iterator find(const platform::Sheet *sheet) const;
    Journal mJournal;
    std::vector<Shown> mSheets;
    QWidget mMainWindow;
};

class FakeWorkspace final : public platform::Workspace {
public:
    bool openURL(const QUrl &url) override;
    bool openFile(const QString &path) override;
    bool selectFile(const QString &path) override;
    QStringList opened;
};

class FakeHostClasses final : public platform::HostClasses {
public:
    QObject *classNamed(const QString &name) override { return classes.value(name); }
    QHash<QString, QObject *> classes;
};

class FakeKeyboard final : public platform::KeyboardModifiers {
public:
    std::uint32_t currentKeyModifiers() override;
    void onceFocused(std::function<void()> focused) override { onFocus = std::move(focused); }
    std::uint32_t held = 0;
    /// What waits for the keyboard focus.
    std::function<void()> onFocus;
    /// Runs when somebody looks at what is held.
    std::function<void()> onLook;
};

class FakeClock final : public platform::ProcessorClock {
public:
    std::uint64_t frequency() override { return hertz; }
    std::uint64_t hertz = 2'400'000'000;
};

class FakeUpdates final : public platform::SoftwareUpdateFramework {
public:
    explicit FakeUpdates(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    std::shared_ptr<platform::KS7SUUpdater>
    updaterForBundle(const std::shared_ptr<platform::Bundle> &) override;
    std::shared_ptr<platform::KS7SUUpdater> initForBundle(const std::shared_ptr<platform::Bundle> &) override;
    platform::UpdateOffer &offer() override { return mOffer; }

    /// The bundles that updaters were asked for, in order.
    std::vector<std::shared_ptr<platform::Bundle>> bundles;

private:
    std::shared_ptr<platform::KS7SUUpdater> makeUpdater(const QString &how,
                                                        const std::shared_ptr<platform::Bundle> &bundle);
    Journal mJournal;
    platform::UpdateOffer mOffer;
};

class FakeBluetoothDevice final : public platform::BluetoothDevice {
public:
    explicit FakeBluetoothDevice(QString addressString)
        : address(std::move(addressString))
    {
    }
    [[nodiscard]] QString getAddressString() const override { return address; }
    QString address;
};

/// The pane's resources with an information dictionary of the test's choice.
class FakeBundle final : public platform::Bundle {
public:
    [[nodiscard]] QString pathForResource(const QString &name, const QString &type) const override;
    [[nodiscard]] QVariantMap infoDictionary() const override { return info; }
    QVariantMap info{{QStringLiteral("CFBundleVersion"), QStringLiteral("1.0")}};
    /// Empty: the resources compiled into the pane.
    QString folder;
};
