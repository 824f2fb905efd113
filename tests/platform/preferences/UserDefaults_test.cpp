#include "platform/preferences/UserDefaults.h"
#include "tests/support/LogLines.h"
#include "tests/support/Timeout.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

#include <csignal>
#include <optional>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using platform::PropertyListDictionary;
using platform::UserDefaults;

namespace {

const QString Domain = QStringLiteral("org.example.camera");
const QString Size = QStringLiteral("Size");
constexpr uid_t Nobody = 65534;

/// The superuser may read and write everything; a test of what is forbidden is somebody else's.
class WithoutPrivileges {
public:
    explicit WithoutPrivileges(const QString &ownFolder)
        : mWasSuperuser(::geteuid() == 0)
    {
        if (mWasSuperuser)
            mDropped = ::chown(QFile::encodeName(ownFolder).constData(), Nobody, Nobody) == 0
                && ::seteuid(Nobody) == 0;
    }
    ~WithoutPrivileges()
    {
        if (mDropped && ::seteuid(0) != 0)
            qFatal("the superuser cannot be himself again");
    }
    WithoutPrivileges(const WithoutPrivileges &) = delete;
    WithoutPrivileges &operator=(const WithoutPrivileges &) = delete;
    [[nodiscard]] bool inForce() const { return !mWasSuperuser || mDropped; }

private:
    bool mWasSuperuser;
    bool mDropped = false;
};

/// No file may grow beyond `bytes` while this is alive, as on a disk that has no more room.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &mBefore);
        const rlimit limit = {bytes, mBefore.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &mBefore);
        std::signal(SIGXFSZ, SIG_DFL);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit mBefore = {};
};

/// An environment variable that is again at the end what it was at the start.
class Variable {
public:
    explicit Variable(const char *name)
        : mName(name)
        , mWasSet(qEnvironmentVariableIsSet(name))
        , mBefore(qgetenv(name))
    {
    }
    ~Variable()
    {
        if (mWasSet)
            qputenv(mName, mBefore);
        else
            qunsetenv(mName);
    }
    Variable(const Variable &) = delete;
    Variable &operator=(const Variable &) = delete;

private:
    const char *mName;
    bool mWasSet;
    QByteArray mBefore;
};

QByteArray smallDomain(int size, const QByteArray &rest = {})
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist "
           "version=\"1.0\">\n<dict>\n\t<key>Size</key>\n\t<integer>"
        + QByteArray::number(size) + "</integer>\n" + rest + "</dict>\n</plist>\n";
}

} // namespace

class UserDefaultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everyTypeIsRead();
    void whatAnotherWriterStoredComesThroughARewrite();
    void textsOfUnchangedValuesStay();
    void everyTypeThatIsSetIsReadByAnotherWriter();
    void whatXmlCannotHoldDoesNotSpoilTheFile();
    void aChangedCopyLeavesTheOriginal();
    void keysKeepTheirOrder();
    void anInvalidValueRemovesTheKey();
    void malformedListsAreRefused_data();
    void malformedListsAreRefused();

    void aMissingDomainIsNotCreated();
    void withoutAConfigurationFolderTheFileIsInTheUsualOne();
    void aNewFileIsItsOwnersAlone();
    void theModeIsKept();
    void theOwnerIsKept();
    void aSymbolicLinkStays();
    void aLinkToNothingGetsItsTarget();
    void aReaderNeverSeesHalfAFile();
    void namesThatAreNoFileNames();

    void pendingChangesAreReadBack();
    void pendingChangesAreWrittenAtTheEnd();
    void pendingChangesAreWrittenWhenTheProgramQuits();
    void anotherWritersChangeIsSeenAfterSynchronize();
    void aChangeOfTheSameSizeRightAfterwardsIsSeen();
    void theLastWriterWins();
    void anIdleSynchronizeOpensNothing();

    void cutAtEveryByte();
    void unusableFilesAreLeftAsTheyAre_data();
    void unusableFilesAreLeftAsTheyAre();
    void aFolderInTheFilesPlace();
    void aPipeInTheFilesPlace();
    void aDeviceAtTheEndOfALink();
    void aLoopOfLinks();
    void aFileThatMayNotBeRead();
    void aFolderThatMayNotBeWritten();
    void aFullDisk();
    void aFileThatIsMendedIsReadAgain();
    void aFileThatBreaksBeforeTheWriteIsKept();

private:
    void fileHolds(const QByteArray &bytes);
    void anotherWriterRuns(const QByteArray &statements);
    void expectOneComplaint(const char *pattern);
    bool onlyTheDomainIsInTheFolder();
    QByteArray fileBytes();
    mode_t fileMode();
    int sizeIn(UserDefaults &defaults);
    void setSize(UserDefaults &defaults, int size);
    void forceSize(UserDefaults &defaults, int size);

    std::unique_ptr<QTemporaryDir> mFolder;
    QString mFile;
    std::optional<LogLines> mLog;
    QStringList mExpectedComplaints;
};

void UserDefaultsTest::init()
{
    mFolder = std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/ks7-defaults-XXXXXX"));
    mFile = mFolder->filePath(Domain + QStringLiteral(".plist"));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(mFolder->path()));
    mExpectedComplaints.clear();
    mLog.emplace();
}

void UserDefaultsTest::cleanup()
{
    const QStringList complaints = mLog->lines;
    mLog.reset();
    QVERIFY2(complaints.size() == mExpectedComplaints.size(), qPrintable(complaints.join(QLatin1Char('\n'))));
    for (int line = 0; line < complaints.size(); ++line)
        QVERIFY2(complaints[line].contains(QRegularExpression(mExpectedComplaints[line])),
                 qPrintable(complaints[line]));
}

void UserDefaultsTest::fileHolds(const QByteArray &bytes)
{
    QFile file(mFile);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

void UserDefaultsTest::anotherWriterRuns(const QByteArray &statements)
{
    QProcess python;
    python.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    python.start(
        QStringLiteral("/usr/bin/python3"),
        {QStringLiteral("-c"),
         QString::fromUtf8("import plistlib, datetime, math, sys\nfile = sys.argv[1]\n" + statements),
         mFile});
    QVERIFY(python.waitForFinished());
    QCOMPARE(python.exitCode(), 0);
}

void UserDefaultsTest::expectOneComplaint(const char *pattern)
{
    mExpectedComplaints += QString::fromLatin1(pattern);
}

bool UserDefaultsTest::onlyTheDomainIsInTheFolder()
{
    return QDir(mFolder->path())
               .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot)
        == QStringList(Domain + QStringLiteral(".plist"));
}

QByteArray UserDefaultsTest::fileBytes()
{
    QFile file(mFile);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

mode_t UserDefaultsTest::fileMode()
{
    struct stat status = {};
    return ::stat(QFile::encodeName(mFile).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

int UserDefaultsTest::sizeIn(UserDefaults &defaults)
{
    const auto domain = defaults.persistentDomainForName(Domain);
    return domain ? domain->value(Size).toInt() : -1;
}

void UserDefaultsTest::setSize(UserDefaults &defaults, int size)
{
    auto domain = defaults.persistentDomainForName(Domain);
    QVERIFY(domain);
    domain->setValue(Size, size);
    defaults.setPersistentDomain(domain, Domain);
}

void UserDefaultsTest::forceSize(UserDefaults &defaults, int size)
{
    PropertyListDictionary domain;
    domain.setValue(Size, size);
    defaults.setPersistentDomain(domain, Domain);
}

void UserDefaultsTest::everyTypeIsRead()
{
    const auto list = PropertyListDictionary::fromXml(
        "<plist version='1.0'><dict>"
        "<key>yes</key><true/><key>no</key><false/>"
        "<key>negative</key><integer>-5</integer><key>least</key><integer>-9223372036854775808</integer>"
        "<key>most</key><integer>18446744073709551615</integer><key>hex</key><integer>0x1F</integer>"
        "<key>real</key><real>-1.5e-300</real><key>infinite</key><real>inf</real>"
        "<key>text</key><string>a&lt;b&gt;&amp;&quot;&#13;&#x1F600;</string><key>none</key><string/>"
        "<key>date</key><date>2099-12-31T23:59:59Z</date><key>old</key><date>1850-01-01T00:00:00Z</date>"
        "<key>data</key><data>AAH/\n AA==</data>"
        "<key>array</key><array><integer>-1</integer><array/><string>x</string></array>"
        "<key>dict</key><dict><key>k</key><false/></dict>"
        "</dict></plist>");
    QVERIFY(list);
    const auto value = [&](const char *key) { return list->value(QLatin1String(key)); };
    QCOMPARE(value("yes"), QVariant(true));
    QCOMPARE(value("no"), QVariant(false));
    QCOMPARE(value("negative"), QVariant(qlonglong(-5)));
    QCOMPARE(value("least"), QVariant(std::numeric_limits<qlonglong>::min()));
    QCOMPARE(value("most"), QVariant(std::numeric_limits<qulonglong>::max()));
    QCOMPARE(value("hex"), QVariant(qlonglong(31)));
    QCOMPARE(value("real"), QVariant(-1.5e-300));
    QCOMPARE(value("infinite"), QVariant(std::numeric_limits<double>::infinity()));
    QCOMPARE(value("text"), QVariant(QString::fromUtf8("a<b>&\"\r\xF0\x9F\x98\x80")));
    QCOMPARE(value("none"), QVariant(QString()));
    QCOMPARE(value("date").toDateTime(), QDateTime(QDate(2099, 12, 31), QTime(23, 59, 59), QTimeZone::utc()));
    QCOMPARE(value("old").toDateTime(), QDateTime(QDate(1850, 1, 1), QTime(0, 0), QTimeZone::utc()));
    QCOMPARE(value("data"), QVariant(QByteArray("\0\1\xFF\0", 4)));
    QCOMPARE(value("array"), QVariant(QVariantList{qlonglong(-1), QVariantList(), QStringLiteral("x")}));
    QCOMPARE(value("dict"), QVariant(QVariantMap{{QStringLiteral("k"), false}}));
    QVERIFY(!value("absent").isValid());
}

void UserDefaultsTest::whatAnotherWriterStoredComesThroughARewrite()
{
    const QByteArray stored = R"(
stored = {"Size": 0, "zero": 0, "negative": -5, "least": -2**63, "most": 2**64 - 1, "tenth": 0.1, "tiny": 5e-324,
    "huge": -1.7976931348623157e308, "third": 1/3, "infinite": math.inf, "minus": -math.inf, "whole": 1.0,
    "date": datetime.datetime(1969, 1, 1, 1, 2, 3), "late": datetime.datetime(2300, 1, 1),
    "early": datetime.datetime(1601, 1, 1), "data": bytes(range(256)) * 9, "nothing": b"", "": "empty key",
    "empty": "", "blank": " ", "spaces": " \n\ta ", "astral": "\U0001F600\u00e9", "markup": "<&>\"']]>&amp;",
    "a<&>b": {"<k>": ["", {}, [], True, {"deep": [[[[1.5, -1]]]]}]}, "off": False, "on": True,
    "uid": {"CF$UID": 7}, "zz": 1, "aa": 2}
)";
    anotherWriterRuns(stored + "plistlib.dump(stored, open(file, 'wb'), sort_keys=False)");
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 3);
    QVERIFY(defaults->synchronize());
    anotherWriterRuns(stored + R"(
stored["Size"] = 3
found = plistlib.load(open(file, 'rb'))
assert found == stored, found
assert list(found) == list(stored), list(found)
assert [type(value) for value in found.values()] == [type(value) for value in stored.values()]
)");
}

void UserDefaultsTest::textsOfUnchangedValuesStay()
{
    const QList<QByteArray> values = {
        "<integer>+7</integer>",
        "<integer>0x1F</integer>",
        "<integer>99999999999999999999999</integer>",
        "<real>1.50</real>",
        "<real>-0.0</real>",
        "<real>1e999</real>",
        "<real>nan</real>",
        "<string>a&#13;\nb</string>",
        "<string> </string>",
        "<date>0001-01-01T00:00:00Z</date>",
        "<data>\n\tAAH/\n\t</data>",
        "<string></string>",
    };
    for (const QByteArray &value : values) {
        auto list = PropertyListDictionary::fromXml(smallDomain(0, "<key>k</key>" + value));
        QVERIFY2(list, value.constData());
        list->setValue(Size, 1);
        const QByteArray entry = "<key>k</key>\n\t" + value + '\n';
        QVERIFY2(list->toXml().contains(entry), list->toXml().constData());
    }
}

void UserDefaultsTest::everyTypeThatIsSetIsReadByAnotherWriter()
{
    PropertyListDictionary list;
    const auto set = [&](const char *key, const QVariant &value) {
        list.setValue(QString::fromUtf8(key), value);
    };
    set("yes", true);
    set("int", -3);
    set("least", std::numeric_limits<qlonglong>::min());
    set("most", std::numeric_limits<qulonglong>::max());
    set("real", 1.0 / 3);
    set("minus", -std::numeric_limits<double>::infinity());
    set("text", QString::fromUtf8("<&>\r\n \xF0\x9F\x98\x80"));
    set("date", QDateTime(QDate(2009, 3, 14), QTime(9, 5, 7), QTimeZone::utc()));
    set("data", QByteArray("\0\xFF", 2));
    set("list", QStringList{QStringLiteral("a"), QString()});
    set("<k>", QVariantMap{{QStringLiteral("&"), QVariantList{1, QVariantMap()}}});
    const auto defaults = platform::makeFileUserDefaults();
    defaults->setPersistentDomain(list, Domain);
    QVERIFY(defaults->synchronize());
    anotherWriterRuns(R"(
found = plistlib.load(open(file, 'rb'))
assert found == {"yes": True, "int": -3, "least": -2**63, "most": 2**64 - 1, "real": 1/3, "minus": -math.inf,
    "text": "<&>\r\n \U0001F600", "date": datetime.datetime(2009, 3, 14, 9, 5, 7), "data": b"\0\xff",
    "list": ["a", ""], "<k>": {"&": [1, {}]}}, found
)");
}

void UserDefaultsTest::whatXmlCannotHoldDoesNotSpoilTheFile()
{
    const QString name =
        QStringLiteral("a") + QChar(0) + QChar(7) + QChar(0xFFFF) + QChar(0xD800) + QStringLiteral("z");
    PropertyListDictionary list;
    list.setValue(QStringLiteral("name"), name);
    list.setValue(QStringLiteral("alien"), QVariant::fromValue(QSize(1, 2)));
    const auto again = PropertyListDictionary::fromXml(list.toXml());
    QVERIFY(again);
    QCOMPARE(again->keys(), QStringList(QStringLiteral("name")));
    const QString kept = again->value(QStringLiteral("name")).toString();
    QVERIFY(kept.startsWith(QLatin1Char('a')) && kept.endsWith(QLatin1Char('z')) && kept.size() == 6);
}

void UserDefaultsTest::aChangedCopyLeavesTheOriginal()
{
    PropertyListDictionary original;
    original.setValue(Size, 1);
    PropertyListDictionary copy = original;
    copy.setValue(Size, 2);
    QCOMPARE(original.value(Size).toInt(), 1);
    QCOMPARE(copy.value(Size).toInt(), 2);
}

void UserDefaultsTest::keysKeepTheirOrder()
{
    auto list = PropertyListDictionary::fromXml(
        "<plist><dict><key>z</key><true/><key>a</key><true/><key>m</key><true/></dict></plist>");
    QVERIFY(list);
    list->setValue(QStringLiteral("a"), 5);
    list->setValue(QStringLiteral("b"), 6);
    QCOMPARE(list->keys().join(QString()), QStringLiteral("zamb"));
    QCOMPARE(PropertyListDictionary::fromXml(list->toXml())->keys().join(QString()), QStringLiteral("zamb"));
}

void UserDefaultsTest::anInvalidValueRemovesTheKey()
{
    auto list = PropertyListDictionary::fromXml(smallDomain(4, "<key>k</key><true/>"));
    QVERIFY(list);
    list->setValue(Size, QVariant());
    QCOMPARE(list->keys(), QStringList(QStringLiteral("k")));
    QCOMPARE(list->value(QStringLiteral("k")), QVariant(true));
}

void UserDefaultsTest::malformedListsAreRefused_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no list") << QByteArray("hello");
    QTest::newRow("binary list") << QByteArray("bplist00\xd0\x08", 10);
    QTest::newRow("root is an array") << QByteArray("<plist><array/></plist>");
    QTest::newRow("no root") << QByteArray("<plist/>");
    QTest::newRow("two roots") << QByteArray("<plist><dict/><dict/></plist>");
    QTest::newRow("something follows") << QByteArray("<plist><dict/></plist><plist/>");
    QTest::newRow("value without a key") << QByteArray("<plist><dict><true/></dict></plist>");
    QTest::newRow("key without a value") << QByteArray("<plist><dict><key>a</key></dict></plist>");
    QTest::newRow("two keys") << QByteArray("<plist><dict><key>a</key><key>b</key></dict></plist>");
    QTest::newRow("unknown type") << QByteArray("<plist><dict><key>a</key><float>1</float></dict></plist>");
    QTest::newRow("integer") << QByteArray("<plist><dict><key>a</key><integer>one</integer></dict></plist>");
    QTest::newRow("real") << QByteArray("<plist><dict><key>a</key><real>1,5</real></dict></plist>");
    QTest::newRow("date") << QByteArray("<plist><dict><key>a</key><date>today</date></dict></plist>");
    QTest::newRow("data") << QByteArray("<plist><dict><key>a</key><data>*</data></dict></plist>");
    QTest::newRow("not UTF-8") << QByteArray("<plist><dict><key>\xff</key><true/></dict></plist>");
    QTest::newRow("bomb") << QByteArray(
        "<!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaaaaaaaa\">"
        "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\">"
        "<!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\"><!ENTITY e \"&d;&d;&d;&d;&d;&d;&d;&d;\">"
        "]><plist><dict><key>a</key><string>&e;&e;&e;&e;</string></dict></plist>");
    QTest::newRow("too deep") << "<plist><dict><key>a</key>" + QByteArray("<array>").repeated(100'000)
            + QByteArray("</array>").repeated(100'000) + "</dict></plist>";
}

void UserDefaultsTest::malformedListsAreRefused()
{
    QFETCH(QByteArray, xml);
    QVERIFY(!PropertyListDictionary::fromXml(xml));
}

void UserDefaultsTest::aMissingDomainIsNotCreated()
{
    const auto defaults = platform::makeFileUserDefaults();
    QVERIFY(!defaults->persistentDomainForName(Domain));
    defaults->setPersistentDomain(std::nullopt, Domain);
    QVERIFY(defaults->synchronize());
    QVERIFY(!QFile::exists(mFile));
}

void UserDefaultsTest::withoutAConfigurationFolderTheFileIsInTheUsualOne()
{
    const Variable home("HOME");
    const Variable configuration("XDG_CONFIG_HOME");
    qputenv("HOME", QFile::encodeName(mFolder->path()));
    qunsetenv("XDG_CONFIG_HOME");
    mFile = mFolder->filePath(QStringLiteral(".config/") + Domain + QStringLiteral(".plist"));
    QCOMPARE(platform::fileOfDomain(Domain), mFile);
    const auto defaults = platform::makeFileUserDefaults();
    forceSize(*defaults, 3);
    QVERIFY(defaults->synchronize());
    QVERIFY(QFile::exists(mFile));
    QCOMPARE(sizeIn(*platform::makeFileUserDefaults()), 3);
}

void UserDefaultsTest::aNewFileIsItsOwnersAlone()
{
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(mFolder->filePath(QStringLiteral("not/there/yet"))));
    mFile = mFolder->filePath(QStringLiteral("not/there/yet/") + Domain + QStringLiteral(".plist"));
    const auto defaults = platform::makeFileUserDefaults();
    forceSize(*defaults, 1);
    QVERIFY(!QFile::exists(mFile));
    QVERIFY(defaults->synchronize());
    QCOMPARE(fileMode(), mode_t(0600));
}

void UserDefaultsTest::theModeIsKept()
{
    fileHolds(smallDomain(1));
    QCOMPARE(::chmod(QFile::encodeName(mFile).constData(), 0640), 0);
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    QVERIFY(defaults->synchronize());
    QCOMPARE(fileMode(), mode_t(0640));
    QVERIFY(onlyTheDomainIsInTheFolder());
}

void UserDefaultsTest::theOwnerIsKept()
{
    fileHolds(smallDomain(1));
    // Only the superuser can write a file that is somebody else's.
    const uid_t owner = ::geteuid() == 0 ? Nobody : ::geteuid();
    const QByteArray path = QFile::encodeName(mFile);
    QCOMPARE(::chown(path.constData(), owner, static_cast<gid_t>(-1)), 0);
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    QVERIFY(defaults->synchronize());
    struct stat status = {};
    QCOMPARE(::stat(path.constData(), &status), 0);
    QCOMPARE(status.st_uid, owner);
}

void UserDefaultsTest::aSymbolicLinkStays()
{
    QTemporaryDir elsewhere;
    const QString target = elsewhere.filePath(QStringLiteral("real"));
    fileHolds(smallDomain(1));
    QVERIFY(QFile::rename(mFile, target));
    QVERIFY(QFile::link(target, elsewhere.filePath(QStringLiteral("link"))));
    QVERIFY(QFile::link(elsewhere.filePath(QStringLiteral("link")), mFile));
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    QVERIFY(defaults->synchronize());
    QVERIFY(QFileInfo(mFile).isSymLink());
    QVERIFY(!QFileInfo(target).isSymLink());
    QVERIFY(fileBytes().contains("<integer>2</integer>"));
}

void UserDefaultsTest::aLinkToNothingGetsItsTarget()
{
    QVERIFY(QFile::link(QStringLiteral("target"), mFile));
    const auto defaults = platform::makeFileUserDefaults();
    QVERIFY(!defaults->persistentDomainForName(Domain));
    forceSize(*defaults, 2);
    QVERIFY(defaults->synchronize());
    QVERIFY(QFileInfo(mFile).isSymLink());
    QVERIFY(QFileInfo::exists(mFolder->filePath(QStringLiteral("target"))));
    QCOMPARE(fileMode(), mode_t(0600));
}

void UserDefaultsTest::aReaderNeverSeesHalfAFile()
{
    fileHolds(smallDomain(1));
    QFile reader(mFile);
    QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    QVERIFY(defaults->synchronize());
    QCOMPARE(reader.readAll(), smallDomain(1));
    QVERIFY(fileBytes().contains("<integer>2</integer>"));
}

void UserDefaultsTest::namesThatAreNoFileNames()
{
    const auto defaults = platform::makeFileUserDefaults();
    PropertyListDictionary domain;
    for (const QString &name :
         {QString(), QStringLiteral("../x"), QStringLiteral("a/b"), QString(QChar(0))}) {
        defaults->setPersistentDomain(domain, name);
        QVERIFY(!defaults->persistentDomainForName(name));
    }
    QVERIFY(defaults->synchronize());
    QVERIFY(QDir(mFolder->path()).isEmpty());
}

void UserDefaultsTest::pendingChangesAreReadBack()
{
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    QCOMPARE(sizeIn(*defaults), 2);
    QCOMPARE(fileBytes(), smallDomain(1));
}

void UserDefaultsTest::pendingChangesAreWrittenAtTheEnd()
{
    fileHolds(smallDomain(1));
    auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    defaults.reset();
    QCOMPARE(sizeIn(*platform::makeFileUserDefaults()), 2);
}

void UserDefaultsTest::pendingChangesAreWrittenWhenTheProgramQuits()
{
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit, Qt::QueuedConnection);
    QCOMPARE(QCoreApplication::exec(), 0);
    QVERIFY(fileBytes().contains("<integer>2</integer>"));
}

void UserDefaultsTest::anotherWritersChangeIsSeenAfterSynchronize()
{
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    QCOMPARE(sizeIn(*defaults), 1);
    anotherWriterRuns("plistlib.dump({'Size': 7}, open(file, 'wb'))");
    QCOMPARE(sizeIn(*defaults), 1);
    QVERIFY(defaults->synchronize());
    QCOMPARE(sizeIn(*defaults), 7);
    QVERIFY(QFile::remove(mFile));
    QVERIFY(defaults->synchronize());
    QVERIFY(!defaults->persistentDomainForName(Domain));
}

void UserDefaultsTest::aChangeOfTheSameSizeRightAfterwardsIsSeen()
{
    fileHolds(smallDomain(0));
    const auto defaults = platform::makeFileUserDefaults();
    for (int size = 1; size < 10; ++size) {
        fileHolds(smallDomain(size));
        QVERIFY(defaults->synchronize());
        QCOMPARE(sizeIn(*defaults), size);
    }
}

void UserDefaultsTest::theLastWriterWins()
{
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    fileHolds(smallDomain(3, "<key>New</key><true/>"));
    QVERIFY(defaults->synchronize());
    QCOMPARE(sizeIn(*defaults), 2);
    QVERIFY(!fileBytes().contains("New"));
}

void UserDefaultsTest::anIdleSynchronizeOpensNothing()
{
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    QCOMPARE(sizeIn(*defaults), 1);
    const int watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    QVERIFY(::inotify_add_watch(watch, QFile::encodeName(mFile).constData(), IN_OPEN) >= 0);
    const auto synchronizeOpensNothing = [&] {
        char events[4096];
        return defaults->synchronize() && ::read(watch, events, sizeof events) < 0 && errno == EAGAIN;
    };
    // A file that has just been written may be written again within the same tick of the clock.
    QTRY_VERIFY_WITH_TIMEOUT(synchronizeOpensNothing(), Timeout);
    for (int turn = 0; turn < 100; ++turn)
        QVERIFY(synchronizeOpensNothing());
    ::close(watch);
}

void UserDefaultsTest::cutAtEveryByte()
{
    const QByteArray whole =
        smallDomain(5, "<key>Names</key><dict><key>a</key><string>\xc3\xa9&amp;</string></dict>");
    for (int length = 0; length < whole.size() - 1; ++length) {
        const QByteArray cut = whole.left(length);
        fileHolds(cut);
        expectOneComplaint("left as it is");
        const auto defaults = platform::makeFileUserDefaults();
        QVERIFY(!defaults->persistentDomainForName(Domain));
        forceSize(*defaults, 1);
        QVERIFY(!defaults->synchronize());
        QCOMPARE(fileBytes(), cut);
    }
    QVERIFY(onlyTheDomainIsInTheFolder());
}

void UserDefaultsTest::unusableFilesAreLeftAsTheyAre_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("KS7On = 1\n");
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("root is a string") << QByteArray("<plist><string>x</string></plist>");
}

void UserDefaultsTest::unusableFilesAreLeftAsTheyAre()
{
    QFETCH(QByteArray, bytes);
    fileHolds(bytes);
    expectOneComplaint("left as it is.*not a property list");
    const auto defaults = platform::makeFileUserDefaults();
    for (int turn = 0; turn < 3; ++turn) {
        QVERIFY(!defaults->persistentDomainForName(Domain));
        forceSize(*defaults, 1);
        QVERIFY(!defaults->synchronize());
        QCOMPARE(fileBytes(), bytes);
    }
}

void UserDefaultsTest::aFolderInTheFilesPlace()
{
    QVERIFY(QDir().mkpath(mFile + QStringLiteral("/inside")));
    expectOneComplaint("left as it is.*directory");
    const auto defaults = platform::makeFileUserDefaults();
    forceSize(*defaults, 1);
    QVERIFY(!defaults->synchronize());
    QVERIFY(!defaults->persistentDomainForName(Domain));
    QVERIFY(QFileInfo(mFile + QStringLiteral("/inside")).isDir());
    QVERIFY(onlyTheDomainIsInTheFolder());
}

void UserDefaultsTest::aPipeInTheFilesPlace()
{
    QCOMPARE(::mkfifo(QFile::encodeName(mFile).constData(), 0600), 0);
    expectOneComplaint("left as it is");
    const auto defaults = platform::makeFileUserDefaults();
    QVERIFY(!defaults->persistentDomainForName(Domain));
    forceSize(*defaults, 1);
    QVERIFY(!defaults->synchronize());
}

void UserDefaultsTest::aDeviceAtTheEndOfALink()
{
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), mFile));
    expectOneComplaint("left as it is");
    const auto defaults = platform::makeFileUserDefaults();
    forceSize(*defaults, 1);
    QVERIFY(!defaults->synchronize());
    QVERIFY(QFileInfo(mFile).isSymLink());
}

void UserDefaultsTest::aLoopOfLinks()
{
    QVERIFY(QFile::link(mFile, mFile));
    expectOneComplaint("left as it is");
    const auto defaults = platform::makeFileUserDefaults();
    forceSize(*defaults, 1);
    QVERIFY(!defaults->synchronize());
    QVERIFY(QFileInfo(mFile).isSymLink());
}

void UserDefaultsTest::aFileThatMayNotBeRead()
{
    fileHolds(smallDomain(1));
    QCOMPARE(::chmod(QFile::encodeName(mFile).constData(), 0), 0);
    const auto defaults = platform::makeFileUserDefaults();
    {
        const WithoutPrivileges nobody(mFolder->path());
        QVERIFY(nobody.inForce());
        expectOneComplaint("left as it is.*[Pp]ermission");
        QVERIFY(!defaults->persistentDomainForName(Domain));
        forceSize(*defaults, 9);
        QVERIFY(!defaults->synchronize());
    }
    QCOMPARE(::chmod(QFile::encodeName(mFile).constData(), 0644), 0);
    QCOMPARE(fileBytes(), smallDomain(1));
    QVERIFY(defaults->synchronize());
    QCOMPARE(sizeIn(*defaults), 1);
}

void UserDefaultsTest::aFolderThatMayNotBeWritten()
{
    fileHolds(smallDomain(1));
    QCOMPARE(::chmod(QFile::encodeName(mFile).constData(), 0644), 0);
    QCOMPARE(::chmod(QFile::encodeName(mFolder->path()).constData(), 0500), 0);
    const auto defaults = platform::makeFileUserDefaults();
    {
        const WithoutPrivileges nobody(mFolder->path());
        QVERIFY(nobody.inForce());
        setSize(*defaults, 2);
        expectOneComplaint("cannot be written.*[Pp]ermission");
        QVERIFY(!defaults->synchronize());
        QVERIFY(!defaults->synchronize());
        QCOMPARE(sizeIn(*defaults), 2);
        QCOMPARE(fileBytes(), smallDomain(1));
    }
    QCOMPARE(::chmod(QFile::encodeName(mFolder->path()).constData(), 0700), 0);
    QVERIFY(defaults->synchronize());
    QVERIFY(fileBytes().contains("<integer>2</integer>"));
}

void UserDefaultsTest::aFullDisk()
{
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    {
        const FullDisk full(100);
        expectOneComplaint("cannot be written");
        QVERIFY(!defaults->synchronize());
    }
    QCOMPARE(fileBytes(), smallDomain(1));
    QVERIFY(onlyTheDomainIsInTheFolder());
    QCOMPARE(sizeIn(*defaults), 2);
    QVERIFY(defaults->synchronize());
    QVERIFY(fileBytes().contains("<integer>2</integer>"));
}

void UserDefaultsTest::aFileThatIsMendedIsReadAgain()
{
    fileHolds("broken");
    expectOneComplaint("left as it is");
    const auto defaults = platform::makeFileUserDefaults();
    QVERIFY(!defaults->persistentDomainForName(Domain));
    fileHolds(smallDomain(4));
    QVERIFY(defaults->synchronize());
    QCOMPARE(sizeIn(*defaults), 4);
    setSize(*defaults, 5);
    QVERIFY(defaults->synchronize());
    QVERIFY(fileBytes().contains("<integer>5</integer>"));
}

void UserDefaultsTest::aFileThatBreaksBeforeTheWriteIsKept()
{
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    fileHolds("broken");
    expectOneComplaint("left as it is");
    QVERIFY(!defaults->synchronize());
    QCOMPARE(fileBytes(), QByteArray("broken"));
    QVERIFY(!defaults->persistentDomainForName(Domain));
}

QTEST_GUILESS_MAIN(UserDefaultsTest)
#include "UserDefaults_test.moc"
