#pragma once

#include "agent/WireTypes.h"
#include "simulator/model/Camera.h"

#include <QObject>
#include <QVector>

#include <optional>

namespace simulator {

class AgentPreferences;
class Notifier;

/// The cameras that the agent knows, in their order, and the preferred one among them. Announces every
/// change of what it answers.
class CameraRegistry final : public QObject {
    Q_OBJECT
public:
    CameraRegistry(Notifier &notifier, AgentPreferences &preferences);

    /// Adds a camera at the end; one that is known already is replaced in its place.
    void add(const Camera &camera);
    /// The same for many, as one change.
    void add(const QVector<Camera> &cameras);
    /// Nothing when the address is unknown.
    void remove(const QString &address);
    void setStatus(const QString &address, int status);
    void setName(const QString &address, const QString &name);
    /// Gives each camera the status that `status` answers for it, as one change.
    template <class StatusOf>
    void setStatuses(StatusOf status);
    /// The empty address: no camera is preferred. A preferred camera need not be listed.
    void setPreferred(const QString &address);
    /// Answers this order whatever the cameras are; nothing goes back to the real order.
    void pretendOrder(const std::optional<QStringList> &order);
    /// The cameras that are ignored have changed.
    void refresh() { announce(); }

    [[nodiscard]] QVector<Camera> cameras() const { return mCameras; }
    [[nodiscard]] std::optional<Camera> find(const QString &address) const;
    /// The first camera with this ID, listed or ignored.
    [[nodiscard]] std::optional<Camera> findByID(const QString &cameraID) const;
    [[nodiscard]] QString preferredAddress() const { return mPreferred; }
    /// The preferred camera, if it is listed.
    [[nodiscard]] std::optional<Camera> preferred() const;
    /// The camera that streams: the preferred one if several do.
    [[nodiscard]] std::optional<Camera> streaming() const;
    /// The camera that was removed last.
    [[nodiscard]] std::optional<Camera> lastRemoved() const { return mLastRemoved; }

    [[nodiscard]] CameraDictionary dictionary() const;
    [[nodiscard]] CameraRecords records() const;
    [[nodiscard]] QStringList sorted() const;
    /// NoPreferredCamera when none is preferred or the preferred one is not listed.
    [[nodiscard]] std::uint64_t indexOfPreferred() const;

    static QVariantMap record(const Camera &camera);

Q_SIGNALS:
    void changed();

private:
    void announce();
    void put(const Camera &camera);
    [[nodiscard]] Camera *known(const QString &address);
    [[nodiscard]] bool isIgnored(const Camera &camera) const;
    [[nodiscard]] QVector<Camera> listed() const;

    Notifier &mNotifier;
    AgentPreferences &mPreferences;
    QVector<Camera> mCameras;
    QString mPreferred;
    std::optional<QStringList> mPretendedOrder;
    std::optional<Camera> mLastRemoved;
};

template <class StatusOf>
void CameraRegistry::setStatuses(StatusOf status)
{
    bool differs = false;
    for (Camera &camera : mCameras) {
        const int next = status(camera);
        differs = differs || next != camera.status;
        camera.status = next;
    }
    if (differs)
        announce();
}

} // namespace simulator
