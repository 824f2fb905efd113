#include "agent/NotificationNames.h"
#include "agent/RemoteNames.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "tests/support/LogLines.h"
#include "tests/support/PaneFixture.h"
#include "tests/support/RecordingAgent.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusVariant>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <cmath>
#include <limits>
#include <random>

using namespace std::chrono_literals;

namespace {

const QString Kitchen = QStringLiteral("00-11-22-33-44-55");
const QString Desk = QStringLiteral("66-77-88-99-AA-BB");

const QStringList Operations{QStringLiteral("cameraDict"),
                             QStringLiteral("getAudioLevel_l"),
                             QStringLiteral("indexOfPreferredKS7Cam"),
                             QStringLiteral("validateName"),
                             QStringLiteral("sortedDeviceList"),
                             QStringLiteral("cameras"),
                             QStringLiteral("getPreferredKS7Cam"),
                             QStringLiteral("isPreferredDeviceAddress"),
                             QStringLiteral("startUpdate"),
                             QStringLiteral("connectedCamNeedsFirmwareUpdate"),
                             QStringLiteral("setPassKey"),
                             QStringLiteral("connectedCamHasBTAddress")};

const QStringList Broadcasts{NotificationNames::StreamingStarted,
                             NotificationNames::CameraListChanged,
                             NotificationNames::StoppedDiscovering,
                             NotificationNames::StartedDiscovering,
                             NotificationNames::PassKeySet,
                             NotificationNames::StreamingInitiated,
                             NotificationNames::PairingInitiated,
                             NotificationNames::StreamingEnded,
                             NotificationNames::USBDeviceConnected,
                             NotificationNames::USBDeviceDisconnected,
                             NotificationNames::PreferredCameraChanged,
                             NotificationNames::FirmwareUpdateEnded,
                             NotificationNames::FirmwareUpdateProgress,
                             NotificationNames::OnOffChanged,
                             NotificationNames::NoBluetooth,
                             NotificationNames::FoundBluetooth,
                             NotificationNames::ChangedOptimizedPreference};

/// Generates random values of all D-Bus types from a seed, nested ones included.
class AnyValues {
public:
    explicit AnyValues(unsigned seed)
        : mRandom(seed)
    {
    }

    /// Returns a random number from 0 to `limit - 1`.
    int below(int limit) { return static_cast<int>(mRandom() % static_cast<unsigned>(limit)); }
    bool heads() { return below(2) == 0; }
    QString text()
    {
        static const QStringList pieces{{},
                                        QStringLiteral("Kitchen"),
                                        QStringLiteral("%s%n%@"),
                                        QStringLiteral("<b>&amp;"),
                                        Kitchen,
                                        QStringLiteral("\n\r\t"),
                                        QString(QChar(0x202E)),
                                        QString(QChar(0xFFFF)),
                                        Desk,
                                        QString(QChar(0xD800)),
                                        QString(3000, QChar(0x0301)),
                                        QStringLiteral("-1"),
                                        QString(1u, QChar(0x1B)),
                                        QStringLiteral("Status")};
        QString all;
        for (int count = below(4); count > 0; --count)
            all += pieces.at(below(static_cast<int>(pieces.size())));
        return all;
    }
    int number()
    {
        static const int interesting[] = {
            0, 1, 2, 3, 4, 5, -1, 100, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
        return heads() ? interesting[below(10)] : static_cast<int>(mRandom());
    }
    double real()
    {
        static const double interesting[] = {
            0,     -0.0, 0.5, 1, -1, 1e300, HUGE_VAL, -HUGE_VAL, std::numeric_limits<double>::quiet_NaN(),
            5e-324};
        return interesting[below(10)];
    }
    QVariant value(int depth = 0)
    {
        // Cases 0 to 11 return simple values, the higher ones containers. At depth 4 only simple values are
        // chosen, so that the nesting of containers ends.
        switch (below(depth < 4 ? 17 : 12)) {
        case 0:
            return number();
        case 1:
            return static_cast<uint>(number());
        case 2:
            return QVariant::fromValue(static_cast<qlonglong>(number()) << below(33));
        case 3:
            return QVariant::fromValue(std::numeric_limits<qulonglong>::max() >> below(64));
        case 4:
            return QVariant::fromValue(static_cast<short>(number()));
        case 5:
            return QVariant::fromValue(static_cast<uchar>(number()));
        case 6:
            return real();
        case 7:
            return heads();
        case 8:
            return text();
        case 9:
            return QVariant::fromValue(QDBusObjectPath(QStringLiteral("/com/orvex")));
        case 10:
            return QVariant::fromValue(QDBusSignature(QStringLiteral("a{sv}")));
        case 11:
            return QByteArray(below(100), static_cast<char>(number()));
        case 12:
            return QStringList{text(), text()};
        case 13:
            return dictionary(depth + 1);
        case 14:
            return QVariant::fromValue(QDBusVariant(value(depth + 1)));
        case 15:
            return structure(depth + 1);
        default:
            return QVariantList{value(depth + 1), value(depth + 1)};
        }
    }
    QVariantMap dictionary(int depth = 0)
    {
        QVariantMap map;
        for (int count = below(4); count > 0; --count)
            map.insert(text(), value(depth));
        return map;
    }
    QVariant structure(int depth)
    {
        QDBusArgument argument;
        argument.beginStructure();
        argument << number() << text() << QDBusVariant(value(depth));
        argument.endStructure();
        return QVariant::fromValue(argument);
    }
    /// Returns a random dictionary that also has some of the keys of a camera's record.
    QVariantMap camera()
    {
        QVariantMap map = dictionary();
        for (const QString &key :
             {RecordKeys::Status, RecordKeys::CameraIDString, RecordKeys::FriendlyName}) {
            if (below(4) > 0)
                map.insert(key, heads() ? value() : key == RecordKeys::Status ? QVariant(number()) : text());
        }
        return map;
    }

private:
    std::mt19937 mRandom;
};

} // namespace

/// Tests the pane on a real bus with an agent that replies and posts random values.
class AnyAnswersTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<RecordingAgent> mAgent;
    std::unique_ptr<PaneFixture> mPane;
    std::unique_ptr<AnyValues> mAny;

    PaneFixture &pane() { return *mPane; }
    RecordingAgent &agent() { return *mAgent; }
    AnyValues &any() { return *mAny; }
    KS7SettingsWindowController &controller() { return pane().controller(); }
    int rows() { return controller().numberOfRowsInTableView(pane().outlets().cameraListTable); }

    /// Returns a reply with the declared type of `operation` and random contents.
    QVariantList answerInForm(const QString &operation)
    {
        if (operation == QLatin1String("cameraDict")) {
            CameraDictionary cameras;
            for (int count = any().below(5); count > 0; --count)
                cameras.insert(any().heads() ? Kitchen : any().text(), any().camera());
            return {QVariant::fromValue(cameras)};
        }
        if (operation == QLatin1String("cameras"))
            return {QVariant::fromValue(QList<QVariantMap>{any().camera(), any().camera()})};
        if (operation == QLatin1String("getPreferredKS7Cam"))
            return {any().camera()};
        if (operation == QLatin1String("sortedDeviceList"))
            return {QStringList{Kitchen, any().text(), Desk, any().text()}};
        if (operation == QLatin1String("getAudioLevel_l"))
            return {any().real(), any().real()};
        if (operation == QLatin1String("indexOfPreferredKS7Cam"))
            return {QVariant::fromValue(static_cast<qulonglong>(any().number()))};
        if (operation == QLatin1String("startUpdate") || operation == QLatin1String("setPassKey"))
            return {any().number()};
        return {any().heads()};
    }
    QVariantList anything()
    {
        QVariantList values;
        for (int count = any().below(4); count > 0; --count)
            values.append(any().value());
        return values;
    }
    void setRandomReplies()
    {
        for (const QString &operation : Operations)
            agent().answer(operation, any().below(4) > 0 ? answerInForm(operation) : anything());
    }
    void agentPostsAnything()
    {
        const QString name = Broadcasts.at(any().below(static_cast<int>(Broadcasts.size())));
        QVariantMap userInfo = any().dictionary();
        for (const QString &key :
             {UserInfoKeys::Value, UserInfoKeys::Total, UserInfoKeys::Result, UserInfoKeys::PassKey})
            userInfo.insert(key, any().heads() ? any().value() : any().number());
        if (any().below(4) > 0)
            agent().post(name, userInfo);
        else
            agent().postRaw(name, anything());
    }
    /// Performs a random action of the user in the pane.
    void personDoesSomething()
    {
        auto &outlets = pane().outlets();
        switch (any().below(7)) {
        case 0:
            controller().setActiveCamera(nullptr);
            break;
        case 1:
            controller().removeCamera(nullptr);
            break;
        case 2:
            controller().showCameraProperties(nullptr);
            outlets.cameraNameText->setText(any().text());
            controller().propertiesOkay(nullptr);
            break;
        case 3:
            controller().changePIN(nullptr);
            outlets.newPINText->setText(QStringLiteral("1234"));
            controller().pinOkay(nullptr);
            break;
        case 4:
            outlets.addButton->click();
            break;
        case 5:
            outlets.startButton->click();
            break;
        default:
            pane().pane->willSelect();
        }
    }

private Q_SLOTS:
    void init()
    {
        mAgent = std::make_unique<RecordingAgent>();
        mAgent->publishBoth();
        mPane = std::make_unique<PaneFixture>();
        pane().talkOver();
        pane().capture->addDevice(QStringLiteral("KS-7 Wireless Webcam"));
        pane().defaults->agentWrites(QStringLiteral("KS7On"), true);
        pane().show();
        pane().turn();
    }
    void cleanup()
    {
        mPane.reset();
        mAgent.reset();
    }

    void thePaneSurvivesRandomReplies_data()
    {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 8; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }
    void thePaneSurvivesRandomReplies()
    {
        QFETCH(unsigned, seed);
        mAny = std::make_unique<AnyValues>(seed);
        const LogLines log;
        for (int round = 0; round < 40; ++round) {
            setRandomReplies();
            agentPostsAnything();
            controller().cameraStatusChanged();
            personDoesSomething();
            pane().runLoop->advance(500ms);
            pane().turn();
            pane().window.grab();
            while (!pane().sheets->alerts.empty())
                pane().sheets->dismissAlert();
            QVERIFY2(controller().isConnected(), "an agent that babbles is not a dead one");
        }
        // The pane logs each reply that has a wrong type.
        QVERIFY(log.lines.size() > 40);
        agent().knowTwoCameras(Kitchen, Desk);
        agent().post(NotificationNames::CameraListChanged);
        QVERIFY(pane().turnUntil([this] { return rows() == 2; }));
    }
};

QTEST_MAIN(AnyAnswersTest)
#include "AnyAnswers_test.moc"
