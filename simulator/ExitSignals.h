#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace simulator {

/// Quits the event loop on SIGTERM and SIGINT.
class ExitSignals final : public QObject {
    Q_OBJECT
public:
    ExitSignals();

private:
    void read();

    QSocketNotifier mNotifier;
};

} // namespace simulator
