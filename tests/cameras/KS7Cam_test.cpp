#include "cameras/KS7Cam.h"

#include "platform/preferences/UserDefaults.h"
#include "tests/fakes/FakeBluetoothDevice.h"

#include <QTest>

#include <map>

using platform::PropertyListDictionary;

namespace {

class DefaultsInMemory : public platform::UserDefaults {
public:
    std::optional<PropertyListDictionary> persistentDomainForName(const QString &name) override
    {
        const auto found = domains.find(name);
        return found == domains.end() ? std::nullopt : std::optional(found->second);
    }
    void setPersistentDomain(const std::optional<PropertyListDictionary> &domain,
                             const QString &name) override
    {
        if (domain)
            domains.insert_or_assign(name, *domain);
    }
    bool synchronize() override { return true; }

    std::map<QString, PropertyListDictionary> domains;
};

const QString Address = QStringLiteral("00-1b-dc-0f-2a-9c");

} // namespace

class KS7CamTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void everyStatusHasItsText_data();
    void everyStatusHasItsText();
    void aLiveStatusMarksTheCameraAsFoundPermanently_data();
    void aLiveStatusMarksTheCameraAsFoundPermanently();
    void aRecordOfTheAgentReturnsItsValues();
    void aRecordOfTheAgentIsNeverIgnored();
    void aRecordOfTheAgentWritesNothing();
    void aDeviceRecordStartsEmpty();
    void aCopyKeepsTheDeviceAndNothingElse();
    void aCopyWithoutADeviceIsEmpty();
    void theIDIsTheEndOfTheAddress_data();
    void theIDIsTheEndOfTheAddress();
    void aDeviceWithoutAnAddress();
    void theStoredNameHasPriority();
    void aStoredEmptyNameIsAName();
    void namesAreKeyedByTheAddressAsItIsSpelled();
    void aNewNameKeepsTheOthers();
    void ignoringIsStored();
    void notIgnoringIsStoredToo();
    void valuesOfAnotherTypeAreNotUsedAndNotReplaced();
    void withoutADomainNothingIsWritten();

private:
    std::shared_ptr<KS7Cam> cameraAt(const QString &address);
    void stored(const QString &key, const QVariant &value);
    QVariantMap storedNow(const QString &key);

    std::unique_ptr<DefaultsInMemory> mDefaults;
};

namespace {
const QString DomainName = QStringLiteral("com.orvex.KS7Agent");
const QString Names = QStringLiteral("FriendlyNames");
const QString Ignored = QStringLiteral("IgnoredCams");
}

void KS7CamTest::init()
{
    mDefaults = std::make_unique<DefaultsInMemory>();
    stored(QStringLiteral("Other"), 1);
}

std::shared_ptr<KS7Cam> KS7CamTest::cameraAt(const QString &address)
{
    auto cam = std::make_shared<KS7Cam>();
    cam->initWithDevice(std::make_shared<FakeBluetoothDevice>(address), mDefaults.get());
    return cam;
}

void KS7CamTest::stored(const QString &key, const QVariant &value)
{
    mDefaults->domains[DomainName].setValue(key, value);
}

QVariantMap KS7CamTest::storedNow(const QString &key)
{
    return mDefaults->domains[DomainName].value(key).toMap();
}

void KS7CamTest::everyStatusHasItsText_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << 0 << QStringLiteral("Not Found");
    QTest::newRow("1") << 1 << QStringLiteral("Not Streaming");
    QTest::newRow("2") << 2 << QStringLiteral("Pairing");
    QTest::newRow("3") << 3 << QStringLiteral("Starting");
    QTest::newRow("4") << 4 << QStringLiteral("Streaming");
    QTest::newRow("5") << 5 << QStringLiteral("Error");
    QTest::newRow("6") << 6 << QString();
    QTest::newRow("-1") << -1 << QString();
    QTest::newRow("least") << std::numeric_limits<int>::min() << QString();
}

void KS7CamTest::everyStatusHasItsText()
{
    QFETCH(int, status);
    QTEST(KS7Cam::camWithName(QString(), QString(), status)->statusString(), "text");
}

void KS7CamTest::aLiveStatusMarksTheCameraAsFoundPermanently_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("found");
    for (int status = -1; status <= 6; ++status)
        QTest::addRow("%d", status) << status << (status == 1 || status == 2 || status == 4);
}

void KS7CamTest::aLiveStatusMarksTheCameraAsFoundPermanently()
{
    QFETCH(int, status);
    const auto cam = cameraAt(Address);
    cam->setStatus(status);
    QCOMPARE(cam->status(), status);
    QTEST(cam->wasFound(), "found");
    cam->setStatus(kKS7CamNotFound);
    QTEST(cam->wasFound(), "found");
}

void KS7CamTest::aRecordOfTheAgentReturnsItsValues()
{
    const auto cam = KS7Cam::camWithName(QStringLiteral("Kitchen"), QStringLiteral("2a9c"), kKS7CamStreaming);
    QCOMPARE(cam->friendlyName(), QStringLiteral("Kitchen"));
    QCOMPARE(cam->cameraIDString(), QStringLiteral("2a9c"));
    QCOMPARE(cam->status(), std::int32_t(kKS7CamStreaming));
    QVERIFY(!cam->wasFound());
    QVERIFY(!cam->device());
}

void KS7CamTest::aRecordOfTheAgentIsNeverIgnored()
{
    stored(Ignored, QVariantMap{{QString(), true}, {QStringLiteral("2A9C"), true}, {Address, true}});
    QVERIFY(!KS7Cam::camWithName(Address, QStringLiteral("2A9C"), 1)->shouldIgnore());
}

void KS7CamTest::aRecordOfTheAgentWritesNothing()
{
    const QByteArray before = mDefaults->domains[DomainName].toXml();
    const auto cam = KS7Cam::camWithName(QStringLiteral("Kitchen"), QStringLiteral("2A9C"), 1);
    cam->setFriendlyName(QStringLiteral("Desk"));
    cam->setShouldIgnore(true);
    QCOMPARE(mDefaults->domains[DomainName].toXml(), before);
    QCOMPARE(cam->friendlyName(), QStringLiteral("Kitchen"));
}

void KS7CamTest::aDeviceRecordStartsEmpty()
{
    const auto cam = cameraAt(Address);
    QCOMPARE(cam->status(), std::int32_t(kKS7CamNotFound));
    QVERIFY(!cam->wasFound());
    QVERIFY(!cam->shouldIgnore());
    QCOMPARE(cam->cameraIDString(), QStringLiteral("2A9C"));
    QCOMPARE(cam->friendlyName(), QStringLiteral("Orvex KS-7 2A9C"));
}

void KS7CamTest::aCopyKeepsTheDeviceAndNothingElse()
{
    const auto cam = cameraAt(Address);
    cam->setStatus(kKS7CamStreaming);
    const auto copy = cam->copy();
    QCOMPARE(copy->device(), cam->device());
    QCOMPARE(copy->status(), std::int32_t(kKS7CamNotFound));
    QVERIFY(!copy->wasFound());
    stored(Names, QVariantMap{{Address, QStringLiteral("Desk")}});
    QCOMPARE(copy->friendlyName(), QStringLiteral("Desk"));
}

void KS7CamTest::aCopyWithoutADeviceIsEmpty()
{
    const auto copy = KS7Cam::camWithName(QStringLiteral("Kitchen"), QStringLiteral("2A9C"), 4)->copy();
    QVERIFY(!copy->device());
    QVERIFY(copy->friendlyName().isNull());
    QVERIFY(copy->cameraIDString().isNull());
    QCOMPARE(copy->status(), std::int32_t(kKS7CamNotFound));
}

void KS7CamTest::theIDIsTheEndOfTheAddress_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("cameraID");
    QTest::newRow("lower") << Address << QStringLiteral("2A9C");
    QTest::newRow("upper") << Address.toUpper() << QStringLiteral("2A9C");
    QTest::newRow("hyphens between") << QStringLiteral("0-0-a-b-c-d") << QStringLiteral("ABCD");
    QTest::newRow("no hyphens") << QStringLiteral("0011223344ff") << QStringLiteral("44FF");
    QTest::newRow("short") << QStringLiteral("a-b") << QStringLiteral("AB");
    QTest::newRow("hyphens only") << QStringLiteral("---") << QStringLiteral("");
}

void KS7CamTest::theIDIsTheEndOfTheAddress()
{
    QFETCH(QString, address);
    const FakeBluetoothDevice device(address);
    QTEST(KS7Cam::cameraIDStringForDevice(&device), "cameraID");
    QVERIFY(!KS7Cam::cameraIDStringForDevice(&device).isNull());
}

void KS7CamTest::aDeviceWithoutAnAddress()
{
    stored(Names, QVariantMap{{QStringLiteral(""), QStringLiteral("Nobody's")}});
    const auto cam = cameraAt(QString());
    QVERIFY(KS7Cam::cameraIDStringForDevice(cam->device().get()).isNull());
    QVERIFY(KS7Cam::cameraIDStringForDevice(nullptr).isNull());
    QVERIFY(cam->cameraIDString().isNull());
    QCOMPARE(cam->friendlyName(), QStringLiteral("Unknown"));
    const QByteArray before = mDefaults->domains[DomainName].toXml();
    cam->setFriendlyName(QStringLiteral("x"));
    cam->setShouldIgnore(true);
    QVERIFY(!cam->shouldIgnore());
    QCOMPARE(mDefaults->domains[DomainName].toXml(), before);
}

void KS7CamTest::theStoredNameHasPriority()
{
    stored(Names, QVariantMap{{Address, QStringLiteral("K\u00fcche %1")}});
    QCOMPARE(cameraAt(Address)->friendlyName(), QStringLiteral("K\u00fcche %1"));
}

void KS7CamTest::aStoredEmptyNameIsAName()
{
    stored(Names, QVariantMap{{Address, QString(QLatin1String(""))}});
    QCOMPARE(cameraAt(Address)->friendlyName(), QString());
}

void KS7CamTest::namesAreKeyedByTheAddressAsItIsSpelled()
{
    cameraAt(Address)->setFriendlyName(QStringLiteral("Desk"));
    QCOMPARE(cameraAt(Address)->friendlyName(), QStringLiteral("Desk"));
    QCOMPARE(cameraAt(Address.toUpper())->friendlyName(), QStringLiteral("Orvex KS-7 2A9C"));
}

void KS7CamTest::aNewNameKeepsTheOthers()
{
    stored(Names, QVariantMap{{QStringLiteral("other"), QStringLiteral("Shed")}});
    cameraAt(Address)->setFriendlyName(QStringLiteral("Desk"));
    QCOMPARE(
        storedNow(Names),
        (QVariantMap{{QStringLiteral("other"), QStringLiteral("Shed")}, {Address, QStringLiteral("Desk")}}));
    QCOMPARE(mDefaults->domains[DomainName].value(QStringLiteral("Other")).toInt(), 1);
}

void KS7CamTest::ignoringIsStored()
{
    const auto cam = cameraAt(Address);
    cam->setShouldIgnore(true);
    QVERIFY(cam->shouldIgnore());
    QCOMPARE(storedNow(Ignored).value(Address), QVariant(true));
    cam->setShouldIgnore(false);
    QVERIFY(!cam->shouldIgnore());
    stored(Ignored, QVariantMap{{Address, 2}});
    QVERIFY(cam->shouldIgnore());
}

void KS7CamTest::notIgnoringIsStoredToo()
{
    cameraAt(Address)->setShouldIgnore(false);
    QCOMPARE(storedNow(Ignored), (QVariantMap{{Address, false}}));
}

void KS7CamTest::valuesOfAnotherTypeAreNotUsedAndNotReplaced()
{
    stored(Names, QStringLiteral("no dictionary"));
    stored(Ignored, QVariantMap{{Address, QVariantList()}});
    const auto cam = cameraAt(Address);
    QCOMPARE(cam->friendlyName(), QStringLiteral("Orvex KS-7 2A9C"));
    QVERIFY(!cam->shouldIgnore());
    cam->setFriendlyName(QStringLiteral("Desk"));
    QCOMPARE(mDefaults->domains[DomainName].value(Names), QVariant(QStringLiteral("no dictionary")));
}

void KS7CamTest::withoutADomainNothingIsWritten()
{
    mDefaults->domains.clear();
    const auto cam = cameraAt(Address);
    cam->setFriendlyName(QStringLiteral("Desk"));
    cam->setShouldIgnore(true);
    QVERIFY(mDefaults->domains.empty());
    QVERIFY(!cam->shouldIgnore());
}

QTEST_GUILESS_MAIN(KS7CamTest)
#include "KS7Cam_test.moc"
