#include "platform/desktop/BluetoothDevice.h"

#include "platform/bus/BusConnection.h"
#include "tests/support/StoppedProcess.h"
#include "tests/support/Timeout.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QProcess>
#include <QTest>

#include <chrono>
#include <future>
#include <sys/types.h>
#include <thread>

using namespace std::chrono_literals;

/// Tests the look-up of a device's address with python-dbusmock's Bluetooth daemon, which has one device.
class BluetoothDeviceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aKnownDeviceHasAnAddress();
    void anUnknownDeviceHasNoAddress();
    void anInvalidPathHasNoAddress();
    void withoutTheDaemonThereIsNoAddress();
    void aDaemonThatHangsIsGivenUp();
    void anAddressOfAnotherTypeIsNone();

private:
    void mockIsTold(const QString &path, const QString &interface, const QString &method,
                    const QVariantList &arguments);
    [[nodiscard]] std::shared_ptr<platform::BluetoothDevice> device(const QString &path) const
    {
        return platform::makeBlueZDevice(mBus, path);
    }

    std::shared_ptr<platform::BusConnection> mBus;
    QProcess mDaemon;
};

namespace {
const QString BlueZ = QStringLiteral("org.bluez");
const QString Device = QStringLiteral("/org/bluez/hci0/dev_00_1B_DC_0F_2A_9C");
const QString MockInterface = QStringLiteral("org.freedesktop.DBus.Mock");
}

void BluetoothDeviceTest::init()
{
    mBus = std::make_shared<platform::SystemBus>();
    mDaemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    mDaemon.setStandardOutputFile(QProcess::nullDevice());
    mDaemon.start(QStringLiteral("/usr/bin/python3"),
                  {QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--system"),
                   QStringLiteral("--template"), QStringLiteral("bluez5")});
    QVERIFY(mDaemon.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(QDBusConnection::systemBus().interface()->isServiceRegistered(BlueZ), Timeout);
    const QString bluez = QStringLiteral("org.bluez.Mock");
    mockIsTold(QStringLiteral("/"), bluez, QStringLiteral("AddAdapter"),
               {QStringLiteral("hci0"), QStringLiteral("machine")});
    mockIsTold(QStringLiteral("/"), bluez, QStringLiteral("AddDevice"),
               {QStringLiteral("hci0"), QStringLiteral("00:1B:DC:0F:2A:9C"), QStringLiteral("KS-7")});
}

void BluetoothDeviceTest::cleanup()
{
    mDaemon.kill();
    QVERIFY(mDaemon.waitForFinished());
    QTRY_VERIFY_WITH_TIMEOUT(!QDBusConnection::systemBus().interface()->isServiceRegistered(BlueZ), Timeout);
}

void BluetoothDeviceTest::mockIsTold(const QString &path, const QString &interface, const QString &method,
                                     const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(BlueZ, path, interface, method);
    call.setArguments(arguments);
    const QDBusMessage reply = QDBusConnection::systemBus().call(call);
    QVERIFY2(reply.type() == QDBusMessage::ReplyMessage, qPrintable(reply.errorMessage()));
}

void BluetoothDeviceTest::aKnownDeviceHasAnAddress()
{
    QCOMPARE(device(Device)->getAddressString(), QStringLiteral("00-1B-DC-0F-2A-9C"));
}

void BluetoothDeviceTest::anUnknownDeviceHasNoAddress()
{
    QVERIFY(device(QStringLiteral("/org/bluez/hci0/dev_none"))->getAddressString().isNull());
    QVERIFY(device(QStringLiteral("/org/bluez/hci0"))->getAddressString().isNull());
}

void BluetoothDeviceTest::anInvalidPathHasNoAddress()
{
    for (const QString &path :
         {QString(), QStringLiteral("no path"), QStringLiteral("/a//b"), QStringLiteral("/\u00e9")})
        QVERIFY(device(path)->getAddressString().isNull());
}

void BluetoothDeviceTest::withoutTheDaemonThereIsNoAddress()
{
    const auto known = device(Device);
    QVERIFY(!known->getAddressString().isNull());
    cleanup();
    QVERIFY(known->getAddressString().isNull());
    init();
    QVERIFY(!known->getAddressString().isNull());
}

void BluetoothDeviceTest::aDaemonThatHangsIsGivenUp()
{
    const auto pid = static_cast<pid_t>(mDaemon.processId());
    QVERIFY(stopProcess(pid));
    // Resume the daemon after 10 s. A call without a timeout would then return the address, and the test
    // would fail.
    std::promise<void> given;
    std::thread wakes([pid, up = given.get_future()] {
        if (up.wait_for(10s) == std::future_status::timeout)
            resumeProcess(pid);
    });
    const auto address = device(Device)->getAddressString();
    given.set_value();
    wakes.join();
    QVERIFY(address.isNull());
    resumeProcess(pid);
    QVERIFY(!device(Device)->getAddressString().isNull());
}

void BluetoothDeviceTest::anAddressOfAnotherTypeIsNone()
{
    mockIsTold(Device, MockInterface, QStringLiteral("UpdateProperties"),
               {QStringLiteral("org.bluez.Device1"), QVariantMap{{QStringLiteral("Address"), 7}}});
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(Device + QStringLiteral(" has an address that is no string")));
    QVERIFY(device(Device)->getAddressString().isNull());
}

QTEST_GUILESS_MAIN(BluetoothDeviceTest)
#include "BluetoothDevice_test.moc"
