#include "platform/desktop/BluetoothDevice.h"

#include "platform/bus/BusConnection.h"
#include "tests/support/PrivateBus.h"

#include <QTest>

/// Tests the look-up of a device's address while the system bus is absent or silent.
class BluetoothDeviceWithoutBusTest : public QObject {
    Q_OBJECT

    [[nodiscard]] QString address() const
    {
        const auto path = QStringLiteral("/org/bluez/hci0/dev_00_1B_DC_0F_2A_9C");
        return platform::makeBlueZDevice(mBus, path)->getAddressString();
    }

    void expectNoAddressManyTimes() const
    {
        // At most one call may wait for the bus: 300 full timeouts would exceed the test's time limit.
        for (int i = 0; i < 300; ++i)
            QVERIFY(address().isNull());
    }

    PrivateBus mDaemon{"DBUS_SYSTEM_BUS_ADDRESS"};
    std::shared_ptr<platform::BusConnection> mBus;

private Q_SLOTS:
    void init()
    {
        mDaemon.kill();
        mDaemon.start();
        mBus = std::make_shared<platform::SystemBus>();
    }
    void cleanup() { mDaemon.resume(); }

    void anAbsentBusIsNoError()
    {
        mDaemon.kill();
        expectNoAddressManyTimes();
    }

    void aSilentBusIsWaitedForOnce()
    {
        mDaemon.stop();
        expectNoAddressManyTimes();
    }

    void anOpenBusThatHangsIsWaitedForOnce()
    {
        QVERIFY(address().isNull());
        QVERIFY(mBus->isOpen());
        mDaemon.stop();
        expectNoAddressManyTimes();
    }
};

QTEST_GUILESS_MAIN(BluetoothDeviceWithoutBusTest)
#include "BluetoothDeviceWithoutBus_test.moc"
