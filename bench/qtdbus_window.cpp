// A bare QtDBus program with a table, with which the pane's start-up is compared. It subscribes to the
// agent's notifications and shows the cameras. Its arguments are its calls and posts: "METHOD", "METHOD
// STRING", "post NOTIFICATION" or "pause MILLISECONDS".
#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "agent/WireTypes.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QIcon>
#include <QStandardItemModel>
#include <QTableView>
#include <QThread>

namespace {

class Listener : public QObject {
    Q_OBJECT
public Q_SLOTS:
    void receive(const QDBusMessage &message) { mLast = message.member(); }

private:
    QString mLast;
};

void subscribe(QDBusConnection &bus, Listener &listener)
{
    using namespace NotificationNames;
    for (const auto &name :
         {StreamingStarted, CameraListChanged, StoppedDiscovering, StartedDiscovering, PassKeySet,
          StreamingInitiated, PairingInitiated, StreamingEnded, USBDeviceConnected, USBDeviceDisconnected,
          AgentStarted, PreferredCameraChanged, FirmwareUpdateEnded, FirmwareUpdateProgress, OnOffChanged,
          NoBluetooth, FoundBluetooth, ChangedOptimizedPreference})
        bus.connect(QString(), RemoteNames::NotificationPath, RemoteNames::NotificationInterface, name,
                    &listener, SLOT(receive(QDBusMessage)));
}

/// Watches the owner of a bus name like the pane does. Returns the current unique owner.
QString watchedOwner(QDBusConnection &bus, const QString &name, QObject *parent)
{
    new QDBusServiceWatcher(name, bus, QDBusServiceWatcher::WatchForOwnerChange, parent);
    return bus.interface()->serviceOwner(name);
}

bool isForUSB(const QString &method)
{
    static const QStringList methods{
        QStringLiteral("startUpdate"), QStringLiteral("connectedCamNeedsFirmwareUpdate"),
        QStringLiteral("setPassKey"), QStringLiteral("connectedCamHasBTAddress")};
    return methods.contains(method);
}

QDBusMessage callOf(const QString &words, const QString &camera, const QString &usb)
{
    const QString method = words.section(QLatin1Char(' '), 0, 0);
    if (method == QLatin1String("post"))
        return QDBusMessage::createSignal(RemoteNames::NotificationPath, RemoteNames::NotificationInterface,
                                          words.section(QLatin1Char(' '), 1, 1));
    const bool forUSB = isForUSB(method);
    const auto &root = forUSB ? RemoteNames::AgentServerUSB : RemoteNames::AgentServer;
    const auto interface =
        forUSB ? QStringLiteral("TernUSBCommandControllerProxy") : QStringLiteral("KS7DeviceControllerProxy");
    auto call = QDBusMessage::createMethodCall(forUSB ? usb : camera, RemoteNames::objectPath(root),
                                               RemoteNames::busName(interface), method);
    if (words.contains(QLatin1Char(' ')))
        call << words.section(QLatin1Char(' '), 1);
    return call;
}

void fill(QStandardItemModel &model, const CameraDictionary &cameras)
{
    model.clear();
    const QIcon dot(QStringLiteral(KS7_DOT));
    for (const auto &camera : cameras)
        model.appendRow(new QStandardItem(dot, camera.value(RecordKeys::FriendlyName).toString()));
}

void make(QDBusConnection &bus, const QDBusMessage &message, QStandardItemModel &model)
{
    if (message.type() == QDBusMessage::SignalMessage) {
        bus.send(message);
        return;
    }
    const QDBusReply<CameraDictionary> reply = bus.call(message);
    if (reply.isValid())
        fill(model, reply.value());
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    registerWireTypes();
    auto bus = QDBusConnection::sessionBus();
    Listener listener;
    const auto camera = watchedOwner(bus, RemoteNames::busName(RemoteNames::AgentServer), &listener);
    const auto usb = watchedOwner(bus, RemoteNames::busName(RemoteNames::AgentServerUSB), &listener);
    subscribe(bus, listener);
    QStandardItemModel model;
    const auto steps = QCoreApplication::arguments().mid(1);
    for (const auto &words : steps) {
        if (words.startsWith(QLatin1String("pause ")))
            QThread::msleep(words.section(QLatin1Char(' '), 1).toULong());
        else
            make(bus, callOf(words, camera, usb), model);
    }
    QTableView table;
    table.setModel(&model);
    table.resize(900, 600);
    table.show();
    return QApplication::exec();
}

#include "qtdbus_window.moc"
