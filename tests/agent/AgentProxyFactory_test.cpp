#include "agent/AgentProxyFactory.h"
#include "agent/RemoteNames.h"
#include "agent/WireTypes.h"
#include "platform/base/RunLoop.h"
#include "platform/bus/BusCall.h"
#include "platform/bus/BusConnection.h"
#include "platform/bus/NotificationCenter.h"
#include "platform/bus/RemoteConnection.h"
#include "tests/support/LogLines.h"
#include "tests/support/RecordingAgent.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QTest>

#include <limits>

using namespace std::chrono_literals;

namespace {

const QString Address = QStringLiteral("00-11-22-33-44-55");
const QString Name = QStringLiteral("K\u00fcche \u2014 \U0001F3A5");

QVariantMap record(int status, const QString &cameraID, const QString &name)
{
    return {{RecordKeys::Status, status},
            {RecordKeys::CameraIDString, cameraID},
            {RecordKeys::FriendlyName, name}};
}

constexpr auto JustInTime = 2s;
constexpr auto JustTooLate = 4500ms;
/// What startUpdate() and setPassKey() return after a failed call. Their result for success is 0.
constexpr int NoSuccess = -1;

} // namespace

/// Tests every remote operation over a real bus, with an agent that records the calls.
class AgentProxyFactoryTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<RecordingAgent> mAgent;
    std::shared_ptr<platform::ConnectionRegistry> mRegistry;
    std::shared_ptr<platform::Connection> mConnection;
    std::shared_ptr<platform::Connection> mUSBConnection;
    std::shared_ptr<AgentProxyFactory> mProtocols = makeDBusProtocols();
    Proxy<KS7DeviceControllerProxy> mDevice;
    Proxy<TernUSBCommandControllerProxy> mUSB;

    RecordingAgent &agent() { return *mAgent; }
    void expectCalls(const QStringList &calls) { QCOMPARE(agent().takeJournal(), calls); }
    void agentAnswers(const char *method, const QVariantList &values)
    {
        agent().answer(QLatin1String(method), values);
    }
    int callSlowly(const QString &method)
    {
        return method == QLatin1String("setPassKey") ? mUSB->setPassKey(Name) : mUSB->startUpdate();
    }
    void callDevice(const QString &method)
    {
        float level = 0;
        if (method == QLatin1String("flush"))
            mDevice->flush();
        else if (method == QLatin1String("getAudioLevel_l"))
            mDevice->getAudioLevel_l(&level, &level);
        else
            mDevice->validateName(Name);
    }
    void expectSignature(const char *method, const char *signature)
    {
        const auto call = agent().lastCall(QLatin1String(method));
        QCOMPARE(call.type(), QDBusMessage::MethodCallMessage);
        QCOMPARE(call.signature(), QLatin1String(signature));
    }

private Q_SLOTS:
    void init()
    {
        mAgent = std::make_unique<RecordingAgent>();
        mAgent->publishBoth();
        mRegistry = std::make_shared<platform::DBusConnectionRegistry>(
            std::make_shared<platform::SessionBus>(), platform::makeQtRunLoop(),
            std::make_shared<platform::LocalNotificationCenter>(), RemoteNames::Prefix);
        mConnection = mRegistry->connectionWithRegisteredName(RemoteNames::AgentServer);
        mUSBConnection = mRegistry->connectionWithRegisteredName(RemoteNames::AgentServerUSB);
        mDevice = mProtocols->deviceController(mConnection->rootProxy());
        mUSB = mProtocols->usbController(mUSBConnection->rootProxy());
    }
    void cleanup()
    {
        mDevice.reset();
        mUSB.reset();
        mConnection.reset();
        mUSBConnection.reset();
        mRegistry.reset();
        mAgent.reset();
    }

    void openingSendsTheAgentNothing() { expectCalls({}); }

    void nilRootsGiveNilProxies()
    {
        QVERIFY(!mProtocols->deviceController(nullptr));
        QVERIFY(!mProtocols->usbController(nullptr));
    }

    void callsGoToTheInterfaceAndThePathOfTheName()
    {
        mDevice->flush();
        const auto call = agent().lastCall(QStringLiteral("flush"));
        QCOMPARE(call.path(), QStringLiteral("/com/orvex/KS7AgentServer"));
        QCOMPARE(call.interface(), QStringLiteral("com.orvex.KS7DeviceControllerProxy"));
        mUSB->connectedCamNeedsFirmwareUpdate();
        const auto usbCall = agent().lastCall(QStringLiteral("connectedCamNeedsFirmwareUpdate"));
        QCOMPARE(usbCall.path(), QStringLiteral("/com/orvex/KS7AgentServerUSB"));
        QCOMPARE(usbCall.interface(), QStringLiteral("com.orvex.TernUSBCommandControllerProxy"));
    }

    void operationsWithoutArgumentsArriveUnderTheirNames()
    {
        mDevice->flush();
        mDevice->streamingStarted();
        mDevice->pairingInitiated();
        mDevice->streamingInitiated();
        mDevice->streamingStopped();
        mDevice->getKnownZephraDevices();
        expectCalls({QStringLiteral("flush"), QStringLiteral("streamingStarted"),
                     QStringLiteral("pairingInitiated"), QStringLiteral("streamingInitiated"),
                     QStringLiteral("streamingStopped"), QStringLiteral("getKnownZephraDevices")});
    }

    void theCameraDictionaryArrivesComplete()
    {
        const CameraDictionary cameras{{Address, record(4, QStringLiteral("4455"), Name)},
                                       {QStringLiteral("b"), record(0, {}, {})}};
        agentAnswers("cameraDict", {QVariant::fromValue(cameras)});
        QCOMPARE(mDevice->cameraDict(), cameras);
        expectCalls({QStringLiteral("cameraDict")});
    }

    void fiveThousandCamerasArriveComplete()
    {
        CameraDictionary cameras;
        for (int i = 0; i < 5000; ++i)
            cameras.insert(QString::number(i), record(i % 6, {}, Name));
        agentAnswers("cameraDict", {QVariant::fromValue(cameras)});
        QCOMPARE(mDevice->cameraDict(), cameras);
    }

    void theAudioLevelsFillBothFloats()
    {
        agentAnswers("getAudioLevel_l", {0.25, 0.75});
        float left = 9;
        float right = 9;
        mDevice->getAudioLevel_l(&left, &right);
        QCOMPARE(left, 0.25F);
        QCOMPARE(right, 0.75F);
    }

    void setIgnoreSendsFlagAndRecord()
    {
        mDevice->setIgnore(true, record(1, QStringLiteral("4455"), Name));
        expectSignature("setIgnore", "ba{sv}");
        expectCalls(
            {QStringLiteral("setIgnore true CameraIDString=4455,FriendlyName=%1,Status=1").arg(Name)});
    }

    void setNameSendsNameAndAddress()
    {
        mDevice->setName(Name, Address);
        expectSignature("setName", "ss");
        expectCalls({QStringLiteral("setName %1 %2").arg(Name, Address)});
    }

    void longNamesArriveComplete()
    {
        const QString name(10'000, QLatin1Char('n'));
        mDevice->setName(name, Address);
        QCOMPARE(agent().lastCall(QStringLiteral("setName")).arguments().constFirst().toString(), name);
    }

    void aRemovedRecordIsSentAsADictionary()
    {
        mDevice->checkRemoveCurrentCam(CameraRecord{3, QStringLiteral("4455"), Name});
        expectSignature("checkRemoveCurrentCam", "a{sv}");
        const auto sent = qdbus_cast<QVariantMap>(
            agent().lastCall(QStringLiteral("checkRemoveCurrentCam")).arguments().constFirst());
        QCOMPARE(sent, record(3, QStringLiteral("4455"), Name));
    }

    void aNilRecordIsSentAsAnEmptyDictionary()
    {
        mDevice->checkRemoveCurrentCam({});
        expectSignature("checkRemoveCurrentCam", "a{sv}");
        expectCalls({QStringLiteral("checkRemoveCurrentCam")});
    }

    void theIndexKeepsItsSixtyFourBits_data()
    {
        QTest::addColumn<qulonglong>("index");
        QTest::newRow("first") << 0ULL;
        QTest::newRow("none") << qulonglong(NoPreferredCamera);
        QTest::newRow("largest") << std::numeric_limits<qulonglong>::max();
    }
    void theIndexKeepsItsSixtyFourBits()
    {
        QFETCH(qulonglong, index);
        agentAnswers("indexOfPreferredKS7Cam", {index});
        QCOMPARE(qulonglong(mDevice->indexOfPreferredKS7Cam()), index);
    }

    void namesAreValidated()
    {
        QVERIFY(mDevice->validateName(Name));
        agentAnswers("validateName", {false});
        QVERIFY(!mDevice->validateName(QString()));
        expectCalls({QStringLiteral("validateName ") + Name, QStringLiteral("validateName")});
        QCOMPARE(agent().journal(), QStringList());
    }

    void rowsAreRemovedWithTheirFlag()
    {
        mDevice->removeCameraAtIndex(-1, true);
        mDevice->removeCameraAtIndex(7, false);
        expectSignature("removeCameraAtIndex", "ib");
        expectCalls(
            {QStringLiteral("removeCameraAtIndex -1 true"), QStringLiteral("removeCameraAtIndex 7 false")});
    }

    void theSortedListKeepsItsOrder()
    {
        const QStringList addresses{QStringLiteral("b"), QStringLiteral("a"), QString(QLatin1String("")),
                                    QStringLiteral("a")};
        agentAnswers("sortedDeviceList", {addresses});
        QCOMPARE(mDevice->sortedDeviceList(), addresses);
    }

    void camerasArriveAsRecords()
    {
        const CameraRecords cameras{record(1, {}, Name), record(2, {}, {})};
        agentAnswers("cameras", {QVariant::fromValue(cameras)});
        QCOMPARE(mDevice->cameras(), cameras);
    }

    void thePreferredCameraIsARecord()
    {
        agentAnswers("getPreferredKS7Cam", {record(4, QStringLiteral("4455"), Name)});
        const auto preferred = mDevice->getPreferredKS7Cam();
        QVERIFY(preferred);
        QCOMPARE(preferred->status, 4);
        QCOMPARE(preferred->cameraIDString, QStringLiteral("4455"));
        QCOMPARE(preferred->friendlyName, Name);
    }

    void noPreferredCameraIsTheEmptyDictionary() { QVERIFY(!mDevice->getPreferredKS7Cam()); }

    void wrongTypesInARecordReadAsZeroOrNull()
    {
        agentAnswers("getPreferredKS7Cam",
                     {QVariantMap{{RecordKeys::Status, QStringLiteral("4")},
                                  {RecordKeys::CameraIDString, 12},
                                  {RecordKeys::FriendlyName, QVariantMap()}}});
        const auto preferred = mDevice->getPreferredKS7Cam();
        QVERIFY(preferred);
        QCOMPARE(preferred->status, 0);
        QCOMPARE(preferred->cameraIDString, QString());
        QCOMPARE(preferred->friendlyName, QString());
    }

    void addressesArePassedOn()
    {
        agentAnswers("isPreferredDeviceAddress", {true});
        QVERIFY(mDevice->isPreferredDeviceAddress(Address));
        mDevice->setPreferredDeviceAddress(Address);
        mDevice->setPreferredDeviceAddress(QString());
        expectCalls({QStringLiteral("isPreferredDeviceAddress ") + Address,
                     QStringLiteral("setPreferredDeviceAddress ") + Address,
                     QStringLiteral("setPreferredDeviceAddress")});
    }

    void aNullStringIsSentAsAnEmptyString()
    {
        mDevice->setPreferredDeviceAddress(QString());
        expectSignature("setPreferredDeviceAddress", "s");
    }

    void theUSBOperationsSendArgumentsAndReturnResults()
    {
        agentAnswers("startUpdate", {-3});
        agentAnswers("setPassKey", {17});
        agentAnswers("connectedCamNeedsFirmwareUpdate", {true});
        agentAnswers("connectedCamHasBTAddress", {true});
        QCOMPARE(mUSB->startUpdate(), -3);
        QCOMPARE(mUSB->setPassKey(QStringLiteral("1234")), 17);
        QVERIFY(mUSB->connectedCamNeedsFirmwareUpdate());
        QVERIFY(mUSB->connectedCamHasBTAddress(Address));
        expectCalls({QStringLiteral("startUpdate"), QStringLiteral("setPassKey 1234"),
                     QStringLiteral("connectedCamNeedsFirmwareUpdate"),
                     QStringLiteral("connectedCamHasBTAddress ") + Address});
    }

    void repliesOfOtherTypesCountAsNoReply_data()
    {
        QTest::addColumn<QVariantList>("results");
        QTest::newRow("nothing") << QVariantList();
        QTest::newRow("a byte") << QVariantList{QVariant::fromValue(uchar(1))};
        QTest::newRow("a double") << QVariantList{1.5};
        QTest::newRow("a dictionary of strings")
            << QVariantList{QVariant::fromValue(QVariantMap{{QStringLiteral("a"), 1}}), 1};
        QTest::newRow("two of everything") << QVariantList{true, QStringLiteral("s"), 7};
    }
    void repliesOfOtherTypesCountAsNoReply()
    {
        QFETCH(QVariantList, results);
        for (const char *method :
             {"cameraDict", "getAudioLevel_l", "indexOfPreferredKS7Cam", "validateName", "sortedDeviceList",
              "cameras", "getPreferredKS7Cam", "isPreferredDeviceAddress", "startUpdate",
              "connectedCamNeedsFirmwareUpdate", "setPassKey", "connectedCamHasBTAddress"})
            agentAnswers(method, results);
        const LogLines log;
        float left = 9;
        mDevice->getAudioLevel_l(&left, &left);
        const bool nothing = mDevice->cameraDict().isEmpty() && mDevice->indexOfPreferredKS7Cam() == 0
            && !mDevice->validateName(Name) && mDevice->sortedDeviceList().isEmpty()
            && mDevice->cameras().isEmpty() && !mDevice->getPreferredKS7Cam()
            && !mDevice->isPreferredDeviceAddress(Address) && !mUSB->connectedCamNeedsFirmwareUpdate()
            && !mUSB->connectedCamHasBTAddress(Address);
        QVERIFY(nothing);
        QCOMPARE(mUSB->startUpdate(), NoSuccess);
        QCOMPARE(mUSB->setPassKey(Name), NoSuccess);
        QCOMPARE(left, 9.0F);
        QCOMPARE(log.lines.size(), 12);
        QVERIFY2(mConnection->isValid(), "an agent with wrong replies is not dead");
    }

    void anUndeclaredResultIsLogged()
    {
        agentAnswers("flush", {1});
        const LogLines log;
        mDevice->flush();
        QCOMPARE(log.lines.size(), 1);
    }

    void anErrorCountsAsNoReplyAndChangesNothing()
    {
        agent().answerError(QStringLiteral("validateName"));
        agent().answerError(QStringLiteral("flush"));
        QVERIFY(!mDevice->validateName(Name));
        mDevice->flush();
        QVERIFY(mConnection->isValid());
        agentAnswers("indexOfPreferredKS7Cam", {3ULL});
        QCOMPARE(mDevice->indexOfPreferredKS7Cam(), std::uint64_t(3));
    }

    void anErrorReplyIsNotReportedAsZero_data()
    {
        QTest::addColumn<QString>("error");
        QTest::newRow("failed") << QStringLiteral("org.freedesktop.DBus.Error.Failed");
        // ServiceUnknown in a reply does not prove that the agent is gone. The agent may have called another
        // service itself and may pass on that call's error.
        QTest::newRow("no service") << QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown");
        QTest::newRow("disconnected") << QStringLiteral("org.freedesktop.DBus.Error.Disconnected");
    }
    void anErrorReplyIsNotReportedAsZero()
    {
        QFETCH(QString, error);
        for (const char *method : {"startUpdate", "setPassKey"})
            agent().answerError(QLatin1String(method), error);
        const LogLines log;
        QCOMPARE(mUSB->startUpdate(), NoSuccess);
        QCOMPARE(mUSB->setPassKey(Name), NoSuccess);
        QCOMPARE(log.lines.size(), 2);
        QVERIFY(mUSBConnection->isValid());
        expectCalls({QStringLiteral("startUpdate"), QStringLiteral("setPassKey ") + Name});
    }

    void theEndOfTheConnectionIsNotAnError_data()
    {
        QTest::addColumn<QString>("method");
        QTest::newRow("firmware") << QStringLiteral("startUpdate");
        QTest::newRow("passkey") << QStringLiteral("setPassKey");
    }
    void theEndOfTheConnectionIsNotAnError()
    {
        QFETCH(QString, method);
        agent().dieIn(method);
        QCOMPARE(callSlowly(method), 0);
        QVERIFY(!mUSBConnection->isValid());
        QCOMPARE(callSlowly(method), 0);
    }

    void aCallToAFormerOwnerEndsTheConnection()
    {
        agent().leaveBus();
        QCOMPARE(mUSB->setPassKey(Name), 0);
        QVERIFY(!mUSBConnection->isValid());
        QVERIFY(!mConnection->isValid());
    }

    void everyOtherCallHasThreeSeconds_data()
    {
        QTest::addColumn<QString>("slowCallBefore");
        QTest::newRow("at first") << QString();
        QTest::newRow("after an update") << QStringLiteral("startUpdate");
        QTest::newRow("after a passkey") << QStringLiteral("setPassKey");
    }
    void everyOtherCallHasThreeSeconds()
    {
        QFETCH(QString, slowCallBefore);
        if (!slowCallBefore.isEmpty())
            callSlowly(slowCallBefore);
        agentAnswers("connectedCamNeedsFirmwareUpdate", {true});
        agent().answerLate(QStringLiteral("connectedCamNeedsFirmwareUpdate"), JustTooLate);
        QVERIFY(!mUSB->connectedCamNeedsFirmwareUpdate());
        QVERIFY(!mUSBConnection->isValid());
    }

    void theDeviceControllersCallsHaveThreeSeconds_data()
    {
        QTest::addColumn<QString>("method");
        QTest::newRow("with a result") << QStringLiteral("validateName");
        QTest::newRow("without a result") << QStringLiteral("flush");
        QTest::newRow("with two results") << QStringLiteral("getAudioLevel_l");
    }
    void theDeviceControllersCallsHaveThreeSeconds()
    {
        QFETCH(QString, method);
        // Check the value of CallTimeout directly. On a busy machine, a measured wait cannot distinguish 3 s
        // from 4 s.
        QCOMPARE(platform::CallTimeout.count(), 3000);
        agentAnswers("validateName", {true});
        agent().answerLate(method, JustTooLate);
        callDevice(method);
        QVERIFY(!mConnection->isValid());
    }

    void aReplyWithinThreeSecondsCounts()
    {
        agentAnswers("validateName", {true});
        agent().answerLate(QStringLiteral("validateName"), JustInTime);
        QVERIFY(mDevice->validateName(Name));
        QVERIFY(mConnection->isValid());
    }

    void slowOperationsHaveThirtySeconds_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<int>("secondsOfWork");
        QTest::addColumn<bool>("inTime");
        QTest::newRow("an update in time") << QStringLiteral("startUpdate") << 27 << true;
        QTest::newRow("a passkey too late") << QStringLiteral("setPassKey") << 33 << false;
    }
    void slowOperationsHaveThirtySeconds()
    {
        QFETCH(QString, method);
        QFETCH(int, secondsOfWork);
        QFETCH(bool, inTime);
        agent().answer(method, {17});
        agent().answerLate(method, std::chrono::seconds(secondsOfWork));
        QCOMPARE(callSlowly(method), inTime ? 17 : 0);
        QCOMPARE(mUSBConnection->isValid(), inTime);
    }

    void callsWithoutAResultWaitForTheirReply()
    {
        agent().hangIn(QStringLiteral("flush"));
        mDevice->flush();
        QVERIFY(!mConnection->isValid());
    }

    void textsArriveUnchanged_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("format directives") << QStringLiteral("%s %n %@ %1");
        QTest::newRow("markup") << QStringLiteral("<b>bold</b>");
        QTest::newRow("bidirectional") << QStringLiteral("\u202Eabc\u202C");
        QTest::newRow("control characters") << QStringLiteral("a\nb\tc\u0007");
        QTest::newRow("large") << QString(1'000'000, QLatin1Char('x'));
    }
    void textsArriveUnchanged()
    {
        QFETCH(QString, text);
        agentAnswers("sortedDeviceList", {QStringList{text}});
        QCOMPARE(mDevice->sortedDeviceList(), QStringList{text});
    }

    void callsOnDeadConnectionsCauseNoTraffic()
    {
        mConnection->invalidate();
        mDevice->flush();
        float level = 9;
        mDevice->getAudioLevel_l(&level, &level);
        QVERIFY(mDevice->cameraDict().isEmpty());
        QVERIFY(!mDevice->validateName(Name));
        QCOMPARE(level, 9.0F);
        expectCalls({});
    }

    void aProxyWithoutAConnectionReturnsNil()
    {
        mConnection.reset();
        QVERIFY(!mDevice->validateName(Name));
        expectCalls({});
    }

    void callsGoToTheFirstOwner()
    {
        agent().release(RemoteNames::AgentServer);
        RecordingAgent successor;
        QVERIFY(successor.publish(RemoteNames::AgentServer));
        mDevice->flush();
        QCOMPARE(successor.journal(), QStringList());
    }

    void theRecorderRecordsIntrospection()
    {
        const auto message = QDBusMessage::createMethodCall(
            agent().uniqueName(), RemoteNames::objectPath(RemoteNames::AgentServer),
            QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
        QDBusConnection::sessionBus().call(message);
        expectCalls({QStringLiteral("Introspect")});
    }
};

QTEST_GUILESS_MAIN(AgentProxyFactoryTest)

#include "AgentProxyFactory_test.moc"
