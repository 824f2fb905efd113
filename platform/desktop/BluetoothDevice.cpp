#include "platform/desktop/BluetoothDevice.h"

#include "platform/base/LogCategory.h"
#include "platform/bus/BusCall.h"
#include "platform/bus/BusConnection.h"
#include "platform/bus/BusNames.h"

#include <QDBusMessage>
#include <QDBusVariant>

using namespace std::chrono_literals;

namespace platform {
namespace {

// One second is enough, because BlueZ replies from memory. Only a hung or stopped daemon needs longer.
constexpr auto BlueZTimeout = 1s;
const QString BlueZDeviceInterface = bus::BlueZ + QStringLiteral(".Device1");
const QString BlueZAddress = QStringLiteral("Address");
const QString PropertiesGet = QStringLiteral("Get");

class BlueZDevice : public BluetoothDevice {
public:
    BlueZDevice(std::shared_ptr<BusConnection> bus, QString objectPath)
        : mBus(std::move(bus))
        , mObjectPath(std::move(objectPath))
    {
    }

    [[nodiscard]] QString getAddressString() const override
    {
        mBus->reopenIfLost();
        // Look the owner up through BusConnection first. If the bus hangs, only the first ownerOf() blocks;
        // later ones return empty at once.
        const QString owner = mBus->ownerOf(bus::BlueZ);
        if (owner.isEmpty())
            return {};
        auto call = QDBusMessage::createMethodCall(owner, mObjectPath, bus::Properties, PropertiesGet);
        call << BlueZDeviceInterface << BlueZAddress;
        const QDBusMessage reply = callAndWait(mBus->connection(), call, BlueZTimeout);
        return reply.type() == QDBusMessage::ReplyMessage ? addressFrom(reply) : QString();
    }

private:
    [[nodiscard]] QString addressFrom(const QDBusMessage &reply) const
    {
        const QVariant value = reply.arguments().value(0).value<QDBusVariant>().variant();
        if (value.userType() != QMetaType::QString) {
            qCWarning(PLATFORM_LOG, "%s has an address that is no string", qUtf8Printable(mObjectPath));
            return {};
        }
        const QString address = value.toString();
        return address.isEmpty() ? QString() : QString(address).replace(QLatin1Char(':'), QLatin1Char('-'));
    }

    std::shared_ptr<BusConnection> mBus;
    QString mObjectPath;
};

} // namespace

std::shared_ptr<BluetoothDevice> makeBlueZDevice(std::shared_ptr<BusConnection> bus,
                                                 const QString &objectPath)
{
    return std::make_shared<BlueZDevice>(std::move(bus), objectPath);
}

} // namespace platform
