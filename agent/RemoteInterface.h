#pragma once

#include "platform/bus/BusCall.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QObject>

#include <chrono>

/// The base class of the generated proxies. QDBusAbstractInterface asks the bus for the owner of the name
/// without a time limit, and cannot forbid the bus to start a service. This class sends the call and nothing
/// else.
class RemoteInterface : public QObject {
    Q_OBJECT
public:
    RemoteInterface(QString service, QString path, const char *interface, QDBusConnection connection,
                    QObject *parent);

    /// The timeout of the calls from now on.
    void setTimeout(std::chrono::milliseconds timeout) { mTimeout = timeout; }

    QDBusPendingCall asyncCallWithArgumentList(const QString &method, const QList<QVariant> &arguments);
    /// Blocks until the reply or the timeout. No event loop runs.
    QDBusMessage callWithArgumentList(QDBus::CallMode mode, const QString &method,
                                      const QList<QVariant> &arguments);

private:
    QString mService;
    QString mPath;
    QString mInterface;
    QDBusConnection mConnection;
    std::chrono::milliseconds mTimeout = platform::CallTimeout;
};
