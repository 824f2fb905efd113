#include "tests/support/Doubles.h"

#include <QDir>
#include <QFile>
#include <QPushButton>

#include <algorithm>

using namespace std::chrono;

namespace {

void note(const Journal &journal, const QString &line)
{
    if (journal)
        journal->append(line);
}

QString yesOrNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

} // namespace

// Run loop ----------------------------------------------------------------------------------------------

class FakeTimer final : public platform::Timer {
public:
    FakeTimer(FakeRunLoop &loop, int id)
        : mLoop(loop)
        , mLoopAlive(loop.mAlive)
        , mId(id)
    {
    }
    ~FakeTimer() override
    {
        if (mLoopAlive.lock())
            std::erase_if(mLoop.mTimers, [this](const auto &timer) { return timer.id == mId; });
    }

private:
    FakeRunLoop &mLoop;
    std::weak_ptr<bool> mLoopAlive;
    int mId;
};

FakeRunLoop::FakeRunLoop(Journal journal)
    : mJournal(std::move(journal))
{
}

void FakeRunLoop::performAfterDelay(const void *target, milliseconds delay, Work work)
{
    mDelayed.push_back({target, mNow + delay, std::move(work)});
}

void FakeRunLoop::performOnMainThread(Work work)
{
    mQueue.push_back(std::move(work));
}

void FakeRunLoop::cancelPreviousPerformRequests(const void *target)
{
    std::erase_if(mDelayed, [target](const Delayed &delayed) { return delayed.target == target; });
}

std::unique_ptr<platform::Timer> FakeRunLoop::scheduledTimer(milliseconds interval, Work tick)
{
    mTimers.push_back({++mNextTimer, interval, mNow + interval, std::move(tick)});
    return std::make_unique<FakeTimer>(*this, mNextTimer);
}

bool FakeRunLoop::runFor(milliseconds slice)
{
    note(mJournal, QStringLiteral("slice %1").arg(slice.count()));
    if (onSlice)
        onSlice();
    if (!quitting)
        advance(slice);
    return !quitting;
}

bool FakeRunLoop::runUntilWoken()
{
    note(mJournal, QStringLiteral("wait"));
    if (onSlice)
        onSlice();
    return !quitting;
}

void FakeRunLoop::pause(microseconds duration)
{
    note(mJournal, QStringLiteral("pause %1").arg(duration.count()));
    mNow += duration_cast<milliseconds>(duration);
    // The hook may be cleared while it runs.
    if (const auto happens = onPause)
        happens();
}

void FakeRunLoop::turn()
{
    auto queue = std::move(mQueue);
    mQueue.clear();
    for (const auto &work : queue)
        work();
}

bool FakeRunLoop::runNextDue(milliseconds until)
{
    const auto earlier = [](const auto &a, const auto &b) { return a.due < b.due; };
    const auto delayed = std::min_element(mDelayed.begin(), mDelayed.end(), earlier);
    const auto timer = std::min_element(mTimers.begin(), mTimers.end(), earlier);
    const bool delayedIsDue = delayed != mDelayed.end() && delayed->due <= until;
    const bool timerIsDue = timer != mTimers.end() && timer->due <= until;
    if (delayedIsDue && !(timerIsDue && timer->due < delayed->due)) {
        const auto work = delayed->work;
        mNow = delayed->due;
        mDelayed.erase(delayed);
        work();
        return true;
    }
    if (!timerIsDue)
        return false;
    const auto tick = timer->tick;
    mNow = timer->due;
    timer->due += timer->interval;
    tick();
    return true;
}

void FakeRunLoop::advance(milliseconds time)
{
    const auto until = mNow + time;
    do {
        while (!mQueue.empty())
            turn();
    } while (runNextDue(until));
    mNow = until;
}

// Centres -----------------------------------------------------------------------------------------------

RecordingCenter::RecordingCenter(Journal journal, Noted noted)
    : mJournal(std::move(journal))
    , mNoted(noted)
{
}

void RecordingCenter::addObserver(const void *observer, const QString &name,
                                  platform::NotificationHandler handler)
{
    note(mJournal, QStringLiteral("observe ") + name);
    registrations.append(name);
    mCenter.addObserver(observer, name, std::move(handler));
}

void RecordingCenter::removeObserver(const void *observer, const QString &name)
{
    note(mJournal, QStringLiteral("forget ") + name);
    registrations.removeOne(name);
    mCenter.removeObserver(observer, name);
}

void RecordingCenter::postNotificationName(const QString &name, const void *object,
                                           const QVariantMap &userInfo)
{
    if (mNoted == PostsToo)
        note(mJournal, QStringLiteral("post ") + name);
    posts.push_back({name, object, userInfo});
    mCenter.postNotificationName(name, object, userInfo);
}

void RecordingCenter::deliver(const QString &name, const QVariantMap &userInfo, const void *object)
{
    mCenter.postNotificationName(name, object, userInfo);
}

int RecordingCenter::postCount(const QString &name) const
{
    return static_cast<int>(
        std::count_if(posts.begin(), posts.end(), [&](const auto &post) { return post.name == name; }));
}

QVariantMap RecordingCenter::lastUserInfo(const QString &name) const
{
    for (auto post = posts.rbegin(); post != posts.rend(); ++post) {
        if (post->name == name)
            return post->userInfo;
    }
    return {};
}

// Agent -------------------------------------------------------------------------------------------------

FakeAgent::FakeAgent(Journal journal)
    : mJournal(std::move(journal))
{
}

void FakeAgent::addCamera(const QString &address, const QString &name, int status, const QString &cameraID)
{
    cameraDict[address] = {{QStringLiteral("Status"), status},
                           {QStringLiteral("FriendlyName"), name},
                           {QStringLiteral("CameraIDString"), cameraID}};
    if (!sorted.contains(address))
        sorted.append(address);
    if (indexOfPreferred != NoPreferredCamera && sorted.value(static_cast<int>(indexOfPreferred)) == address)
        prefer(address);
}

void FakeAgent::prefer(const QString &address)
{
    const auto entry = cameraDict.value(address);
    indexOfPreferred = static_cast<std::uint64_t>(sorted.indexOf(address));
    preferred = CameraRecord{entry.value(QStringLiteral("Status")).toInt(),
                             entry.value(QStringLiteral("CameraIDString")).toString(),
                             entry.value(QStringLiteral("FriendlyName")).toString()};
}

namespace {

class FakeRoot final : public platform::RootProxy { };

void runDuring(FakeAgent &agent, const QString &operation)
{
    const auto during = agent.during.find(operation);
    if (during != agent.during.end())
        during->second();
}

class FakeDeviceController final : public KS7DeviceControllerProxy {
public:
    explicit FakeDeviceController(FakeAgent &agent)
        : mAgent(agent)
    {
    }
    void flush() override { record(QStringLiteral("flush")); }
    CameraDictionary cameraDict() override
    {
        record(QStringLiteral("cameraDict"));
        return mAgent.cameraDict;
    }
    void getAudioLevel_l(float *l, float *r) override
    {
        record(QStringLiteral("getAudioLevel_l"));
        if (!mAgent.answersLevels)
            return;
        *l = mAgent.left;
        *r = mAgent.right;
    }
    void setName(const QString &name, const QString &forCamAddress) override
    {
        record(QStringLiteral("setName"), name + QLatin1Char(' ') + forCamAddress);
    }
    void checkRemoveCurrentCam(const std::optional<CameraRecord> &camera) override
    {
        record(QStringLiteral("checkRemoveCurrentCam"),
               camera
                   ? QStringLiteral("%1 %2 %3")
                         .arg(QString::number(camera->status), camera->cameraIDString, camera->friendlyName)
                   : QStringLiteral("nil"));
    }
    std::uint64_t indexOfPreferredKS7Cam() override
    {
        record(QStringLiteral("indexOfPreferredKS7Cam"));
        return mAgent.indexOfPreferred;
    }
    bool validateName(const QString &name) override
    {
        record(QStringLiteral("validateName"), name);
        return mAgent.acceptsNames;
    }
    void removeCameraAtIndex(int row, bool fromFavorites) override
    {
        record(QStringLiteral("removeCameraAtIndex"),
               QString::number(row) + QLatin1Char(' ') + yesOrNo(fromFavorites));
    }
    QStringList sortedDeviceList() override
    {
        record(QStringLiteral("sortedDeviceList"));
        return mAgent.sorted;
    }
    std::optional<CameraRecord> getPreferredKS7Cam() override
    {
        record(QStringLiteral("getPreferredKS7Cam"));
        return mAgent.preferred;
    }
    void setPreferredDeviceAddress(const QString &address) override
    {
        record(QStringLiteral("setPreferredDeviceAddress"),
               address.isNull() ? QStringLiteral("nil") : address);
    }

private:
    void record(const QString &operation, const QString &arguments = {})
    {
        mAgent.call(arguments.isNull() ? operation : operation + QLatin1Char(' ') + arguments);
        runDuring(mAgent, operation);
    }
    FakeAgent &mAgent;
};

class FakeUSBController final : public TernUSBCommandControllerProxy {
public:
    explicit FakeUSBController(FakeAgent &agent)
        : mAgent(agent)
    {
    }
    int startUpdate() override
    {
        record(QStringLiteral("startUpdate"));
        return mAgent.startUpdateResult;
    }
    bool connectedCamNeedsFirmwareUpdate() override
    {
        record(QStringLiteral("connectedCamNeedsFirmwareUpdate"));
        return mAgent.needsFirmware;
    }
    int setPassKey(const QString &passKey) override
    {
        record(QStringLiteral("setPassKey"), passKey);
        return mAgent.setPassKeyResult;
    }
    bool connectedCamHasBTAddress(const QString &address) override
    {
        record(QStringLiteral("connectedCamHasBTAddress"),
               address.isNull() ? QStringLiteral("nil") : address);
        return mAgent.everyAddressIsAtTheCable
            || (!mAgent.usbAddress.isEmpty() && mAgent.usbAddress == address);
    }

private:
    void record(const QString &operation, const QString &arguments = {})
    {
        mAgent.call(arguments.isNull() ? operation : operation + QLatin1Char(' ') + arguments);
        runDuring(mAgent, operation);
    }
    FakeAgent &mAgent;
};

} // namespace

Proxy<KS7DeviceControllerProxy>
FakeProtocols::deviceController(const std::shared_ptr<platform::RootProxy> &root)
{
    if (!root)
        return {};
    return std::shared_ptr<KS7DeviceControllerProxy>(std::make_shared<FakeDeviceController>(mAgent));
}

Proxy<TernUSBCommandControllerProxy>
FakeProtocols::usbController(const std::shared_ptr<platform::RootProxy> &root)
{
    if (!root)
        return {};
    return std::shared_ptr<TernUSBCommandControllerProxy>(std::make_shared<FakeUSBController>(mAgent));
}

class FakeConnection final : public platform::Connection {
public:
    explicit FakeConnection(std::shared_ptr<platform::NotificationCenter> localCenter)
        : mLocalCenter(std::move(localCenter))
    {
    }
    std::shared_ptr<platform::RootProxy> rootProxy() override
    {
        return mValid ? std::make_shared<FakeRoot>() : nullptr;
    }
    void invalidate() override { die(); }
    [[nodiscard]] bool isValid() const override { return mValid; }
    void die()
    {
        if (!std::exchange(mValid, false))
            return;
        mLocalCenter->postNotificationName(platform::NSConnectionDidDieNotification,
                                           static_cast<platform::Connection *>(this));
    }

private:
    std::shared_ptr<platform::NotificationCenter> mLocalCenter;
    bool mValid = true;
};

FakeConnections::FakeConnections(Journal journal, FakeAgent &agent,
                                 std::shared_ptr<platform::NotificationCenter> localCenter)
    : mJournal(std::move(journal))
    , mAgent(agent)
    , mLocalCenter(std::move(localCenter))
{
}

std::shared_ptr<platform::Connection> FakeConnections::connectionWithRegisteredName(const QString &name)
{
    note(mJournal, QStringLiteral("connect ") + name);
    const bool isUSB = name.endsWith(QStringLiteral("USB"));
    if (!isUSB && ++mAgent.attempts == mAgent.appearsAtAttempt)
        mAgent.running = true;
    if (!mAgent.running || (isUSB && !mAgent.usbServerRunning))
        return nullptr;
    auto connection = std::make_shared<FakeConnection>(mLocalCenter);
    mLast[name] = connection;
    return connection;
}

std::shared_ptr<platform::Connection> FakeConnections::last(const QString &name) const
{
    const auto entry = mLast.find(name);
    return entry == mLast.end() ? nullptr : entry->second.lock();
}

void FakeConnections::die(const QString &name)
{
    if (const auto connection = mLast[name].lock())
        connection->die();
}

void FakeConnections::killAgent()
{
    mAgent.running = false;
    const auto connections = mLast;
    for (const auto &[name, weak] : connections) {
        if (const auto connection = weak.lock())
            connection->die();
    }
}

bool FakeLauncher::launch()
{
    note(mJournal, QStringLiteral("launch"));
    ++launches;
    return true;
}

// Preferences -------------------------------------------------------------------------------------------

std::optional<platform::PropertyListDictionary> FakeDefaults::persistentDomainForName(const QString &)
{
    return mPending ? mPending : onDisk;
}

void FakeDefaults::setPersistentDomain(const std::optional<platform::PropertyListDictionary> &domain,
                                       const QString &)
{
    if (!domain)
        return;
    note(mJournal, QStringLiteral("write domain"));
    mPending = domain;
}

bool FakeDefaults::synchronize()
{
    note(mJournal, QStringLiteral("synchronize"));
    const auto pending = std::exchange(mPending, std::nullopt);
    if (pending && !diskIsFull)
        onDisk = pending;
    duringSynchronize();
    return !pending || !diskIsFull;
}

void FakeDefaults::agentWrites(const QString &key, const QVariant &value)
{
    if (!onDisk)
        onDisk.emplace();
    onDisk->setValue(key, value);
}

QVariant FakeDefaults::stored(const QString &key) const
{
    return onDisk ? onDisk->value(key) : QVariant();
}

// Power -------------------------------------------------------------------------------------------------

std::uint32_t FakePower::registerForSystemPower(void *refcon, Callback callback)
{
    note(mJournal, QStringLiteral("register for power messages"));
    ++registrations;
    mRefcon = refcon;
    mCallback = callback;
    return 7;
}

void FakePower::allowPowerChange(std::uint32_t rootPort, void *messageArgument)
{
    note(mJournal, QStringLiteral("allow power change %1").arg(rootPort));
    allowed.push_back(messageArgument);
}

void FakePower::send(std::uint32_t messageType, void *argument)
{
    mCallback(mRefcon, 0, messageType, argument);
}

// Capture -----------------------------------------------------------------------------------------------

FakeDevice::FakeDevice(Journal journal, QString uniqueID, QString name)
    : mJournal(std::move(journal))
    , mUniqueID(std::move(uniqueID))
    , mName(std::move(name))
{
}

bool FakeDevice::open(std::optional<platform::CaptureError> &error)
{
    note(mJournal, QStringLiteral("open device"));
    mOpen = opens;
    if (!opens)
        error = openError;
    return opens;
}

void FakeDevice::close()
{
    note(mJournal, QStringLiteral("close device"));
    mOpen = false;
}

bool FakeSession::addInput(const std::shared_ptr<platform::CaptureDeviceInput> &newInput,
                           std::optional<platform::CaptureError> &error)
{
    note(mJournal, QStringLiteral("add input"));
    if (accepts)
        input = newInput;
    else
        error = addError;
    return accepts;
}

void FakeSession::startRunning()
{
    note(mJournal, QStringLiteral("start session"));
    mRunning = true;
}

void FakeSession::stopRunning()
{
    note(mJournal, QStringLiteral("stop session"));
    mRunning = false;
}

void FakeSession::deliverFrame(const QImage &frame)
{
    if (mFrameHandler)
        mFrameHandler(frame);
}

std::vector<std::shared_ptr<platform::CaptureDevice>> FakeCapture::videoInputDevices()
{
    note(mJournal, QStringLiteral("list devices"));
    return {devices.begin(), devices.end()};
}

std::shared_ptr<platform::CaptureSession> FakeCapture::makeSession()
{
    note(mJournal, QStringLiteral("make session"));
    auto session = std::make_shared<FakeSession>(mJournal);
    session->accepts = sessionsAccept;
    session->addError = addError;
    sessions.push_back(session);
    return session;
}

std::shared_ptr<FakeDevice> FakeCapture::addDevice(const QString &uniqueID, const QString &name)
{
    devices.push_back(std::make_shared<FakeDevice>(mJournal, uniqueID, name));
    return devices.back();
}

// Sheets ------------------------------------------------------------------------------------------------

void FakeSheets::beginAlertSheet(const platform::AlertSheet &alert, QWidget *window,
                                 platform::SheetDidEnd didEnd)
{
    note(mJournal, QStringLiteral("alert ") + alert.title);
    alertTitles.append(alert.title);
    alerts.push_back({alert, window, std::move(didEnd)});
}

void FakeSheets::beginSheet(platform::Sheet *sheet, QWidget *modalForWindow, platform::SheetDidEnd didEnd)
{
    note(mJournal, QStringLiteral("begin ") + sheet->objectName());
    mSheets.push_back({sheet, modalForWindow, std::move(didEnd)});
    sheet->show();
}

void FakeSheets::endSheet(platform::Sheet *sheet)
{
    const auto shown = find(sheet);
    if (shown == mSheets.end())
        return;
    note(mJournal, QStringLiteral("end ") + sheet->objectName());
    const auto didEnd = shown->didEnd;
    mSheets.erase(shown);
    didEnd(sheet, 0, nullptr);
}

std::vector<FakeSheets::Shown>::const_iterator FakeSheets::find(const platform::Sheet *sheet) const
{
    return std::find_if(mSheets.begin(), mSheets.end(),
                        [sheet](const Shown &shown) { return shown.sheet == sheet; });
}

bool FakeSheets::isUp(const platform::Sheet *sheet) const
{
    return find(sheet) != mSheets.end();
}

QWidget *FakeSheets::windowOf(const platform::Sheet *sheet) const
{
    return isUp(sheet) ? find(sheet)->window : nullptr;
}

bool FakeSheets::dismissAlert()
{
    const auto shown = alerts.front();
    alerts.erase(alerts.begin());
    QWidget box;
    QPushButton button(&box);
    box.show();
    button.setFocus();
    shown.didEnd(&box, 0, nullptr);
    return box.isHidden() && box.focusWidget() == &box;
}

// The rest ----------------------------------------------------------------------------------------------

std::uint32_t FakeKeyboard::currentKeyModifiers()
{
    if (onLook)
        onLook();
    return held;
}

bool FakeWorkspace::openURL(const QUrl &url)
{
    opened.append(QStringLiteral("url ") + url.toString());
    return true;
}

bool FakeWorkspace::openFile(const QString &path)
{
    opened.append(QStringLiteral("file ") + path);
    return true;
}

bool FakeWorkspace::selectFile(const QString &path)
{
    opened.append(QStringLiteral("select ") + path);
    return true;
}

namespace {

class FakeUpdater final : public platform::KS7SUUpdater {
public:
    explicit FakeUpdater(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    void applicationDidFinishLaunching() override { note(mJournal, QStringLiteral("updater started")); }

private:
    Journal mJournal;
};

} // namespace

std::shared_ptr<platform::KS7SUUpdater>
FakeUpdates::makeUpdater(const QString &how, const std::shared_ptr<platform::Bundle> &bundle)
{
    note(mJournal, QStringLiteral("updater ") + how);
    bundles.push_back(bundle);
    return std::make_shared<FakeUpdater>(mJournal);
}

std::shared_ptr<platform::KS7SUUpdater>
FakeUpdates::updaterForBundle(const std::shared_ptr<platform::Bundle> &bundle)
{
    return makeUpdater(QStringLiteral("shared"), bundle);
}

std::shared_ptr<platform::KS7SUUpdater>
FakeUpdates::initForBundle(const std::shared_ptr<platform::Bundle> &bundle)
{
    return makeUpdater(QStringLiteral("made"), bundle);
}

QString FakeBundle::pathForResource(const QString &name, const QString &type) const
{
    if (folder.isEmpty())
        return platform::makePaneBundle()->pathForResource(name, type);
    const QString path = QDir(folder).filePath(name + QLatin1Char('.') + type);
    return QFile::exists(path) ? path : QString();
}
