#pragma once

#include "agent/WireTypes.h"
#include "simulator/model/Camera.h"

#include <QObject>
#include <QVector>

#include <optional>

namespace simulator {

class AgentPreferences;
class BusNotifier;

/// The known cameras in their order, and the preferred one. Announces every change of its answers.
class CameraRegistry final : public QObject {
    Q_OBJECT
public:
    CameraRegistry(BusNotifier &notifier, AgentPreferences &preferences);

    /// Appends a camera, or replaces the one with the same address in its place.
    void add(const Camera &camera);
    /// Adds several cameras as one change.
    void add(const QVector<Camera> &cameras);
    /// remove(), setStatus() and setName() ignore unknown addresses.
    void remove(const QString &address);
    void setStatus(const QString &address, int status);
    void setName(const QString &address, const QString &name);
    /// Sets each camera's status to `status(camera)`, as one change.
    template <class StatusOf>
    void setStatuses(StatusOf status);
    /// An empty address means none. The preferred camera need not be listed.
    void setPreferred(const QString &address);
    /// Makes sorted() return these addresses; nullopt restores the real order.
    void pretendOrder(const std::optional<QStringList> &order);
    /// Announces a change of the ignored cameras.
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

    static CameraRecord record(const Camera &camera);

Q_SIGNALS:
    void changed();

private:
    void announce();
    void put(const Camera &camera);
    [[nodiscard]] Camera *known(const QString &address);
    [[nodiscard]] bool isIgnored(const Camera &camera) const;
    [[nodiscard]] QVector<Camera> listed() const;

    BusNotifier &mNotifier;
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
