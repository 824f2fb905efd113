#pragma once

#include "agent/WireTypes.h"
#include "simulator/model/Camera.h"

#include <QObject>
#include <QVector>

#include <optional>

namespace simulator {

class AgentPreferences;
class BusNotifier;

/// The known cameras in the order of the list, and the preferred camera. Posts a notification after each
/// change.
class CameraRegistry final : public QObject {
    Q_OBJECT
public:
    CameraRegistry(BusNotifier &notifier, AgentPreferences &preferences);

    /// Appends a camera, or replaces the known camera with the same address.
    void add(const Camera &camera);
    /// Adds several cameras, but posts only one change of the list.
    void add(const QVector<Camera> &cameras);
    /// remove(), setStatus() and setName() ignore unknown addresses.
    void remove(const QString &address);
    void setStatus(const QString &address, int status);
    void setName(const QString &address, const QString &name);
    /// Sets the status of each camera to `status(camera)`, but posts at most one change of the list.
    template <class StatusOf>
    void setStatuses(StatusOf status);
    /// Sets the preferred camera, which need not be listed. With an empty address, no camera is preferred.
    void setPreferred(const QString &address);
    /// A fault for tests: makes sorted() return these addresses. nullopt restores the real order.
    void pretendOrder(const std::optional<QStringList> &order);
    /// Posts a change of the list. Call it after the ignored cameras in the preferences have changed.
    void refresh() { announce(); }

    [[nodiscard]] QVector<Camera> cameras() const { return mCameras; }
    [[nodiscard]] std::optional<Camera> find(const QString &address) const;
    /// Returns the first camera with this ID, even if it is ignored.
    [[nodiscard]] std::optional<Camera> findByID(const QString &cameraID) const;
    [[nodiscard]] QString preferredAddress() const { return mPreferred; }
    /// Returns the preferred camera if it is listed.
    [[nodiscard]] std::optional<Camera> preferred() const;
    /// Returns the streaming camera. If several cameras stream, returns the preferred one.
    [[nodiscard]] std::optional<Camera> streaming() const;
    /// Returns the camera that was removed last.
    [[nodiscard]] std::optional<Camera> lastRemoved() const { return mLastRemoved; }

    [[nodiscard]] CameraDictionary dictionary() const;
    [[nodiscard]] CameraRecords records() const;
    [[nodiscard]] QStringList sorted() const;
    /// Returns the preferred camera's row; NoPreferredCamera if no camera is preferred or if it is not
    /// listed.
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
