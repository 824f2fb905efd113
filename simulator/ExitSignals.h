#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace simulator {

/// Turns SIGTERM and SIGINT into an orderly end of the event loop.
class ExitSignals final : public QObject {
    Q_OBJECT
public:
    ExitSignals();

private:
    void read();

    QSocketNotifier mNotifier;
};

} // namespace simulator
