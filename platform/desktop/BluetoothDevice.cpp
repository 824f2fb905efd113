#include "platform/desktop/BluetoothDevice.h"

#include "platform/base/LogCategory.h"
#include "platform/bus/BusNames.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

namespace platform {
namespace {

// BlueZ replies from memory, so only a stopped daemon takes longer.
constexpr int BlueZTimeoutMs = 1000;
const QString BlueZConnection = QStringLiteral("ks7-bluez");
const QString BlueZDeviceInterface = bus::BlueZ + QStringLiteral(".Device1");
const QString BlueZAddress = QStringLiteral("Address");
const QString PropertiesGet = QStringLiteral("Get");

class BlueZDevice : public BluetoothDevice {
public:
    explicit BlueZDevice(QString objectPath)
        : mObjectPath(std::move(objectPath))
    {
    }

    [[nodiscard]] QString getAddressString() const override
    {
        QDBusMessage call =
            QDBusMessage::createMethodCall(bus::BlueZ, mObjectPath, bus::Properties, PropertiesGet);
        call << BlueZDeviceInterface << BlueZAddress;
        call.setAutoStartService(false);
        const QDBusMessage reply = systemBus().call(call, QDBus::Block, BlueZTimeoutMs);
        return reply.type() == QDBusMessage::ReplyMessage ? addressFrom(reply) : QString();
    }

private:
    /// The pane's own connection, since the shared one is the host's. Reopened when lost.
    static QDBusConnection systemBus()
    {
        QDBusConnection bus(BlueZConnection);
        if (bus.isConnected())
            return bus;
        QDBusConnection::disconnectFromBus(BlueZConnection);
        return QDBusConnection::connectToBus(QDBusConnection::SystemBus, BlueZConnection);
    }

    [[nodiscard]] QString addressFrom(const QDBusMessage &reply) const
    {
        const QVariant value = reply.arguments().value(0).value<QDBusVariant>().variant();
        if (value.userType() != QMetaType::QString) {
            qCWarning(KS7_PLATFORM, "%s has an address that is no string", qUtf8Printable(mObjectPath));
            return {};
        }
        const QString address = value.toString();
        return address.isEmpty() ? QString() : QString(address).replace(QLatin1Char(':'), QLatin1Char('-'));
    }

    QString mObjectPath;
};

} // namespace

std::shared_ptr<BluetoothDevice> makeBlueZDevice(const QString &objectPath)
{
    return std::make_shared<BlueZDevice>(objectPath);
}

} // namespace platform
