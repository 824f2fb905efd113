#pragma once

#include <QString>
#include <QVariantMap>

namespace simulator {

/// Tells the world what happened: posts a notification that crosses processes.
class Notifier {
public:
    virtual ~Notifier() = default;
    virtual void post(const QString &name, const QVariantMap &userInfo = {}) = 0;
};

} // namespace simulator
