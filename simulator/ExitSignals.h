#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace simulator {

/// Quits the application's event loop when the process receives SIGTERM or SIGINT.
class ExitSignals final : public QObject {
    Q_OBJECT
public:
    ExitSignals();

private:
    void read();

    QSocketNotifier mNotifier;
};

} // namespace simulator
