#pragma once

#include <QDBusContext>
#include <QDBusVariant>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace simulator {

class AgentModel;
class FaultInjector;
class BusNotifier;
class Recorder;

/// The D-Bus object through which tests control the stand-in agent. com.orvex.KS7AgentSimulator.xml documents
/// its operations.
class Script final : public QObject, protected QDBusContext {
    Q_OBJECT
public:
    Script(AgentModel &model, BusNotifier &notifier, Recorder &recorder, FaultInjector &faults);

    /// Returns the registered name of the script object.
    static QString registeredName() { return QStringLiteral("KS7AgentSimulator"); }

public Q_SLOTS:
    void addCamera(const QString &address, const QString &name, const QString &cameraID, int status);
    void addManyCameras(int count);
    void removeCamera(const QString &address);
    void setStatus(const QString &address, int status);
    void renameCamera(const QString &address, const QString &name);
    void setSorted(const QStringList &addresses);
    void unsetSorted();
    void setPreferred(const QString &address);

    void plugUSB(const QString &address, bool needsFirmware);
    void unplugUSB();
    void bluetooth(bool on);
    void setAudioLevels(double left, double right);
    void setPreference(const QString &key, const QDBusVariant &value);
    QDBusVariant preference(const QString &key);

    void setBehaviour(const QString &name, bool on);
    void setErrorCode(const QString &operation, int code);
    void post(const QString &name, const QVariantMap &userInfo);
    void hang(double seconds);
    void hangDuring(const QString &operation, double seconds);
    void resume();
    void die();
    void dieDuring(const QString &operation);
    void malformReplies(const QString &operation, const QString &kind);
    void mute(bool on);
    void forgetKeys(bool on);
    bool releaseName(const QString &registeredName);
    bool takeName(const QString &registeredName);

    QStringList recordedCalls();
    QStringList recordedPosts();
    QStringList recordedEvents();
    void clearRecord();
    void quit();

private:
    void refuse(const QString &why);

    AgentModel &mModel;
    BusNotifier &mNotifier;
    Recorder &mRecorder;
    FaultInjector &mFaults;
};

} // namespace simulator
