#pragma once

#include "platform/bus/BusCall.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QObject>

#include <chrono>

/// The base of the generated proxies, in the place of the toolkit's own: that one asks the bus again who owns
/// the name, without a bound on time, and cannot forbid the bus to start a service. This one sends the call
/// and nothing else.
class RemoteInterface : public QObject {
    Q_OBJECT
public:
    RemoteInterface(QString service, QString path, const char *interface, QDBusConnection connection,
                    QObject *parent);

    /// How long the calls from now on wait for their answers.
    void setTimeout(std::chrono::milliseconds timeout) { mTimeout = timeout; }

    QDBusPendingCall asyncCallWithArgumentList(const QString &method, const QList<QVariant> &arguments);
    /// Blocks until the answer or the time-out, without turning an event loop.
    QDBusMessage callWithArgumentList(QDBus::CallMode mode, const QString &method,
                                      const QList<QVariant> &arguments);

private:
    QString mService;
    QString mPath;
    QString mInterface;
    QDBusConnection mConnection;
    std::chrono::milliseconds mTimeout = platform::CallTimeout;
};
