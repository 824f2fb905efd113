#pragma once

#include <QDBusConnection>
#include <QString>
#include <QVariantMap>

namespace simulator {

/// Posts notifications as D-Bus signals.
class BusNotifier {
public:
    explicit BusNotifier(const QDBusConnection &bus)
        : mBus(bus)
    {
    }

    /// Posts a notification. Ignores a name that is not valid as the member name of a D-Bus signal.
    void post(const QString &name, const QVariantMap &userInfo = {});
    /// A fault for tests: while mute, the agent posts nothing.
    void setMute(bool mute) { mMute = mute; }

private:
    QDBusConnection mBus;
    bool mMute = false;
};

} // namespace simulator
