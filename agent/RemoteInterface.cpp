#include "agent/RemoteInterface.h"

#include <QDBusPendingCall>

RemoteInterface::RemoteInterface(QString service, QString path, const char *interface,
                                 QDBusConnection connection, QObject *parent)
    : QObject(parent)
    , mService(std::move(service))
    , mPath(std::move(path))
    , mInterface(QLatin1String(interface))
    , mConnection(std::move(connection))
{
}

QDBusPendingCall RemoteInterface::asyncCallWithArgumentList(const QString &method,
                                                            const QList<QVariant> &arguments)
{
    auto message = QDBusMessage::createMethodCall(mService, mPath, mInterface, method);
    message.setAutoStartService(false);
    message.setArguments(arguments);
    return mConnection.asyncCall(message, static_cast<int>(mTimeout.count()));
}

QDBusMessage RemoteInterface::callWithArgumentList(QDBus::CallMode, const QString &method,
                                                   const QList<QVariant> &arguments)
{
    auto call = asyncCallWithArgumentList(method, arguments);
    call.waitForFinished();
    return call.reply();
}
