#include "settings/KS7Domain.h"

#include "platform/preferences/UserDefaults.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using platform::PropertyListDictionary;

class KS7DomainTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void withoutADomainEveryReadReturnsTheDefault();
    void anyNumberThatIsNotZeroIsOn_data();
    void anyNumberThatIsNotZeroIsOn();
    void everyReadReadsTheFile();
    void aReadWritesNothing();
    void writingOneKeyKeepsTheOthers();
    void writingIntoAMissingDomainLeavesItMissing();
    void aWriteReachesTheFileAtSynchronize();

private:
    void agentStores(const QByteArray &entries);
    QByteArray agentReads();

    std::unique_ptr<QTemporaryDir> mFolder;
    QString mFile;
    std::shared_ptr<platform::UserDefaults> mDefaults;
};

void KS7DomainTest::init()
{
    mDefaults.reset();
    mFolder = std::make_unique<QTemporaryDir>();
    mFile = mFolder->filePath(QStringLiteral("com.orvex.KS7Agent.plist"));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(mFolder->path()));
    mDefaults = platform::makeFileUserDefaults();
}

void KS7DomainTest::agentStores(const QByteArray &entries)
{
    QFile file(mFile);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("<plist version=\"1.0\"><dict>" + entries + "</dict></plist>");
}

QByteArray KS7DomainTest::agentReads()
{
    QFile file(mFile);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void KS7DomainTest::withoutADomainEveryReadReturnsTheDefault()
{
    QVERIFY(!KS7Domain::domainObjectForKey(*mDefaults, PreferenceKeys::VideoSize2).isValid());
    QVERIFY(KS7Domain::boolForKey(*mDefaults, PreferenceKeys::KS7On, true));
    QVERIFY(!KS7Domain::boolForKey(*mDefaults, PreferenceKeys::LogToFile, false));
}

void KS7DomainTest::anyNumberThatIsNotZeroIsOn_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<bool>("on");
    QTest::newRow("0") << QByteArray("<integer>0</integer>") << false;
    QTest::newRow("1") << QByteArray("<integer>1</integer>") << true;
    QTest::newRow("2") << QByteArray("<integer>2</integer>") << true;
    QTest::newRow("-1") << QByteArray("<integer>-1</integer>") << true;
    QTest::newRow("2^32") << QByteArray("<integer>4294967296</integer>") << true;
    QTest::newRow("0.5") << QByteArray("<real>0.5</real>") << true;
    QTest::newRow("0.0") << QByteArray("<real>0.0</real>") << false;
    QTest::newRow("true") << QByteArray("<true/>") << true;
    QTest::newRow("false") << QByteArray("<false/>") << false;
}

void KS7DomainTest::anyNumberThatIsNotZeroIsOn()
{
    QFETCH(QByteArray, stored);
    QFETCH(bool, on);
    agentStores("<key>KS7On</key>" + stored);
    QCOMPARE(KS7Domain::boolForKey(*mDefaults, PreferenceKeys::KS7On, !on), on);
}

void KS7DomainTest::everyReadReadsTheFile()
{
    agentStores("<key>VideoSize2</key><integer>0</integer>");
    QCOMPARE(KS7Domain::domainObjectForKey(*mDefaults, PreferenceKeys::VideoSize2).toInt(), 0);
    agentStores("<key>VideoSize2</key><integer>7</integer>");
    QCOMPARE(KS7Domain::domainObjectForKey(*mDefaults, PreferenceKeys::VideoSize2).toInt(), 7);
}

void KS7DomainTest::aReadWritesNothing()
{
    agentStores("<key>VideoSize2</key><integer>0</integer>");
    const QByteArray before = agentReads();
    KS7Domain::domainSetObject(*mDefaults, 1, PreferenceKeys::VideoSize2);
    QCOMPARE(KS7Domain::domainObjectForKey(*mDefaults, PreferenceKeys::VideoSize2).toInt(), 1);
    QCOMPARE(agentReads(), before);
}

void KS7DomainTest::writingOneKeyKeepsTheOthers()
{
    agentStores("<key>FriendlyNames</key><dict><key>00-1b-dc-0f-2a-9c</key><string>K\xc3\xbc"
                "che</string></dict><key>Unknown</key><real>0.10</real>");
    const QVariant names = KS7Domain::domainObjectForKey(*mDefaults, PreferenceKeys::FriendlyNames);
    KS7Domain::domainSetObject(*mDefaults, 0, PreferenceKeys::VideoSize2);
    QVERIFY(mDefaults->synchronize());
    const auto written = PropertyListDictionary::fromXml(agentReads());
    QVERIFY(written);
    QCOMPARE(written->value(PreferenceKeys::FriendlyNames), names);
    QCOMPARE(written->value(PreferenceKeys::VideoSize2), QVariant(qlonglong(0)));
    QVERIFY(agentReads().contains("<real>0.10</real>"));
    QCOMPARE(written->keys().size(), 3);
}

void KS7DomainTest::writingIntoAMissingDomainLeavesItMissing()
{
    KS7Domain::domainSetObject(*mDefaults, 1, PreferenceKeys::VideoSize2);
    QVERIFY(mDefaults->synchronize());
    QVERIFY(!QFile::exists(mFile));
    QVERIFY(!KS7Domain::domainObjectForKey(*mDefaults, PreferenceKeys::VideoSize2).isValid());
}

void KS7DomainTest::aWriteReachesTheFileAtSynchronize()
{
    agentStores("<key>VideoSize2</key><integer>1</integer>");
    KS7Domain::domainSetObject(*mDefaults, 0, PreferenceKeys::VideoSize2);
    QVERIFY(agentReads().contains("<integer>1</integer>"));
    QCOMPARE(KS7Domain::domainObjectForKey(*mDefaults, PreferenceKeys::VideoSize2).toInt(), 0);
    QVERIFY(mDefaults->synchronize());
    QVERIFY(agentReads().contains("<integer>0</integer>"));
}

QTEST_GUILESS_MAIN(KS7DomainTest)
#include "KS7Domain_test.moc"
