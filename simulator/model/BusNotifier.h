#pragma once

#include <QDBusConnection>
#include <QString>
#include <QVariantMap>

namespace simulator {

/// Posts broadcast notifications as signals on a bus.
class BusNotifier {
public:
    explicit BusNotifier(const QDBusConnection &bus)
        : mBus(bus)
    {
    }

    /// Ignores names that are no valid member name of a signal.
    void post(const QString &name, const QVariantMap &userInfo = {});
    /// While mute, nothing is posted.
    void setMute(bool mute) { mMute = mute; }

private:
    QDBusConnection mBus;
    bool mMute = false;
};

} // namespace simulator
