#pragma once

#include "simulator/model/Notifier.h"

#include <QDBusConnection>

namespace simulator {

/// Posts broadcast notifications as signals on a bus.
class BusNotifier final : public Notifier {
public:
    explicit BusNotifier(const QDBusConnection &bus)
        : mBus(bus)
    {
    }

    /// A name that no signal can bear is not posted.
    void post(const QString &name, const QVariantMap &userInfo) override;

private:
    QDBusConnection mBus;
};

} // namespace simulator
