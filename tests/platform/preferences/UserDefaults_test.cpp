#include "platform/preferences/AtomicFile.h"
#include "platform/preferences/UserDefaults.h"
#include "tests/support/CommaLocale.h"
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

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using platform::PropertyListDictionary;
using platform::UserDefaults;

namespace {

const QString Domain = QStringLiteral("org.example.camera");
const QString Size = QStringLiteral("Size");
constexpr uid_t Nobody = 65534;

/// The calls of fsync() and rename() in their order. The replacements of these functions record them.
QStringList safeSteps;

/// Drops root's rights until the destructor runs. Root may read and write every file, so a
/// test of missing permissions would find no refusal.
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
            qFatal("the superuser's rights did not come back");
    }
    WithoutPrivileges(const WithoutPrivileges &) = delete;
    WithoutPrivileges &operator=(const WithoutPrivileges &) = delete;
    [[nodiscard]] bool inForce() const { return !mWasSuperuser || mDropped; }

private:
    bool mWasSuperuser;
    bool mDropped = false;
};

/// Limits the size of files until the destructor runs, so that writes fail as on a full disk.
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

/// Restores the value of an environment variable in the destructor.
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

/// The mode of the file to which a descriptor refers.
mode_t modeOf(int file)
{
    struct stat status = {};
    return ::fstat(file, &status) == 0 ? status.st_mode : 0;
}

} // namespace

// These functions replace those of the C library in the whole program, so that the test sees the product's
// calls.
extern "C" int fsync(int file)
{
    safeSteps += S_ISDIR(modeOf(file))
        ? QStringLiteral("fsync folder")
        : QStringLiteral("fsync file, mode %1").arg(modeOf(file) & 07777, 0, 8);
    return static_cast<int>(::syscall(SYS_fsync, file));
}

extern "C" int rename(const char *from, const char *to) noexcept
{
    safeSteps += QStringLiteral("rename");
    return static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0U));
}

/// Counts with inotify how often a file is opened.
class OpenCounter {
public:
    explicit OpenCounter(const QString &path)
        : mWatch(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        if (::inotify_add_watch(mWatch, QFile::encodeName(path).constData(), IN_OPEN | IN_CLOSE) < 0)
            qFatal("the file cannot be watched");
    }
    ~OpenCounter() { ::close(mWatch); }
    OpenCounter(const OpenCounter &) = delete;
    OpenCounter &operator=(const OpenCounter &) = delete;

    [[nodiscard]] int count() const
    {
        // IN_CLOSE is watched too, because the kernel merges consecutive equal events and two openings would
        // count as one.
        std::array<inotify_event, 64> events{};
        const ssize_t size = ::read(mWatch, events.data(), sizeof events);
        const auto end = events.begin() + std::max<ssize_t>(0, size) / ssize_t(sizeof(inotify_event));
        return static_cast<int>(std::count_if(
            events.begin(), end, [](const inotify_event &event) { return (event.mask & IN_OPEN) != 0; }));
    }

private:
    const int mWatch;
};

class UserDefaultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everyTypeIsRead();
    void integersAreDecimalUnlessMarked_data();
    void integersAreDecimalUnlessMarked();
    void realsDoNotFollowTheLocale();
    void valuesFromAnotherWriterSurviveARewrite();
    void textsOfUnchangedValuesStay();
    void aRewriteChangesTheValueAlone();
    void aByteOrderMarkIsSkipped();
    void anEmptyRootTakesAKey();
    void theLastOfEqualKeysCounts();
    void aKeyOfManyReferencesIsReadInLinearTime();
    void everyTypeThatIsSetIsReadByAnotherWriter();
    void valuesThatXmlCannotHoldDoNotSpoilTheFile();
    void aByteOrderMarkInATextStays();
    void aChangedCopyLeavesTheOriginal();
    void keysKeepTheirOrder();
    void anInvalidValueRemovesTheKey();
    void malformedListsAreRefused_data();
    void malformedListsAreRefused();

    void aMissingDomainIsNotCreated();
    void aDomainThatIsDeletedBeforeTheWriteStaysDeleted();
    void withoutAConfigurationFolderTheFileIsInTheUsualOne();
    void onlyItsOwnerMayReadANewFile();
    void theModeIsKept_data();
    void theModeIsKept();
    void theOwnerIsKept();
    void theFileIsOnTheDiskBeforeItTakesTheName();
    void aSymbolicLinkStays();
    void aRelativeLinkInALinkedFolderIsFollowedAsTheKernelDoes();
    void aLinkToNothingGetsItsTarget();
    void aReaderNeverSeesHalfAFile();
    void namesThatAreNotFileNames();

    void pendingChangesAreReadBack();
    void pendingChangesAreWrittenAtTheEnd();
    void pendingChangesAreWrittenWhenTheProgramQuits();
    void anotherWritersChangeIsSeenAtOnce();
    void aChangeOfTheSameSizeRightAfterwardsIsSeen();
    void anotherWriterMayRestoreTheBytesFromBeforeAWrite();
    void theLastWriterWins();
    void anIdleSynchronizeOpensNothing();
    void aChangeReadsTheFileOnceForItsValuesAndOnceBeforeTheWrite();
    void aFileThatIsLongerThanItsSizeIsReadToTheEnd();
    void aFileThatNeverEndsIsTooLarge();

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
    void aFailedWriteNeverReplacesANewerFile();
    void aRepairedFileIsReadAgain();
    void aFileDamagedBeforeTheWriteIsKept();

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

void UserDefaultsTest::integersAreDecimalUnlessMarked_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("leading zero") << QByteArray("010") << QVariant(qlonglong(10));
    QTest::newRow("no octal digits") << QByteArray("-0089") << QVariant(qlonglong(-89));
    QTest::newRow("plus") << QByteArray("+7") << QVariant(qlonglong(7));
    QTest::newRow("hexadecimal") << QByteArray("0x1F") << QVariant(qlonglong(31));
    QTest::newRow("negative hexadecimal") << QByteArray(" -0X10\n") << QVariant(qlonglong(-16));
    QTest::newRow("too large") << QByteArray("99999999999999999999999")
                               << QVariant(std::numeric_limits<qulonglong>::max());
    QTest::newRow("too small") << QByteArray("-99999999999999999999999")
                               << QVariant(std::numeric_limits<qlonglong>::min());
}

void UserDefaultsTest::integersAreDecimalUnlessMarked()
{
    QFETCH(QByteArray, text);
    QFETCH(QVariant, value);
    const auto list =
        PropertyListDictionary::fromXml(smallDomain(0, "<key>k</key><integer>" + text + "</integer>"));
    QVERIFY(list);
    QCOMPARE(list->value(QStringLiteral("k")), value);
}

void UserDefaultsTest::realsDoNotFollowTheLocale()
{
    const CommaLocale comma;
    QVERIFY(comma.inForce());
    auto list = PropertyListDictionary::fromXml(
        smallDomain(0,
                    "<key>half</key><real>0.5</real><key>plus</key><real>+1.25e3</real>"
                    "<key>large</key><real>1e999</real><key>none</key><real>-1e-999</real>"));
    QVERIFY(list);
    QCOMPARE(list->value(QStringLiteral("half")), QVariant(0.5));
    QCOMPARE(list->value(QStringLiteral("plus")), QVariant(1250.0));
    QCOMPARE(list->value(QStringLiteral("large")), QVariant(std::numeric_limits<double>::infinity()));
    QCOMPARE(list->value(QStringLiteral("none")).toDouble(), 0.0);
    list->setValue(QStringLiteral("written"), 2.5);
    QVERIFY(list->toXml().contains("<real>2.5</real>"));
}

void UserDefaultsTest::valuesFromAnotherWriterSurviveARewrite()
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
        "<string>a\r\n\t<![CDATA[<&>]]>&#x1F600;</string >",
        "<string> </string>",
        "<string/>",
        "<date>0001-01-01T00:00:00Z</date>",
        "<data>\n\tAAH/\n\t</data>",
        "<string></string>",
        "<dict>\n<key>uid</key ><dict><key>CF$UID</key><integer>07</integer></dict><!-- kept --></dict>",
        "<array  a='>'><true />  <real> 1.0 </real></array>",
    };
    for (const QByteArray &value : values) {
        auto list = PropertyListDictionary::fromXml(smallDomain(0, "<key>k</key>" + value));
        QVERIFY2(list, value.constData());
        QVERIFY(list->value(QStringLiteral("k")).isValid());
        list->setValue(Size, 1);
        QCOMPARE(list->toXml(), smallDomain(1, "<key>k</key>" + value));
    }
}

void UserDefaultsTest::aRewriteChangesTheValueAlone()
{
    const QByteArray before =
        "<?xml version='1.0' encoding='utf-8' standalone='no'?>\r\n<!-- by hand -->\n"
        "<!DOCTYPE plist PUBLIC '-//X//DTD' 'http://www.example/list.dtd'>\n"
        "<plist version='1.0' x='/>'><!-- a --> <dict b='&lt;>'><?note before?>\r\n"
        "  <key>Gr\xc3\xb6\xc3\x9f"
        "e &amp; \xF0\x9F\x98\x80</key>  <real>0.10</real> stray <key>Size</key><!-- x -->";
    const QByteArray after = "\n<key>z</key><array/> <!-- last --> </dict >\n</plist>\n<!-- end -->\n\n";
    auto list = PropertyListDictionary::fromXml(before + "<integer>007</integer>" + after);
    QVERIFY(list);
    QCOMPARE(list->toXml(), before + "<integer>007</integer>" + after);
    list->setValue(Size, 8);
    QCOMPARE(list->toXml(), before + "<integer>8</integer>" + after);
}

void UserDefaultsTest::aByteOrderMarkIsSkipped()
{
    const auto list = PropertyListDictionary::fromXml("\xEF\xBB\xBF" + smallDomain(3));
    QVERIFY(list);
    QCOMPARE(list->value(Size).toInt(), 3);
    QCOMPARE(list->toXml(), smallDomain(3));
}

void UserDefaultsTest::anEmptyRootTakesAKey()
{
    for (const QByteArray root : {"<dict/>", "<dict a='b' />", "<dict></dict>", "<dict>\n</dict>"}) {
        auto list = PropertyListDictionary::fromXml("<plist>" + root + "</plist>\n");
        QVERIFY2(list, root.constData());
        QCOMPARE(list->keys(), QStringList());
        list->setValue(Size, 4);
        const auto again = PropertyListDictionary::fromXml(list->toXml());
        QVERIFY2(again, list->toXml().constData());
        QCOMPARE(again->value(Size), QVariant(qlonglong(4)));
    }
}

void UserDefaultsTest::theLastOfEqualKeysCounts()
{
    auto list = PropertyListDictionary::fromXml(smallDomain(1, "<key>Size</key><integer>2</integer>"));
    QVERIFY(list);
    QCOMPARE(list->keys(), QStringList(Size));
    QCOMPARE(list->value(Size).toInt(), 2);
    list->setValue(Size, 3);
    QCOMPARE(list->value(Size).toInt(), 3);
    QCOMPARE(list->toXml(), smallDomain(1, "<key>Size</key><integer>3</integer>"));
    list->setValue(Size, QVariant());
    QCOMPARE(list->keys(), QStringList());
}

// Reading in quadratic time would exceed the test's time limit.
void UserDefaultsTest::aKeyOfManyReferencesIsReadInLinearTime()
{
    constexpr int References = 2'000'000;
    const QByteArray references = QByteArray("&amp;").repeated(References);
    const auto list = PropertyListDictionary::fromXml(
        smallDomain(1, "<key>" + references + "</key><string>" + references + "</string>"));
    QVERIFY(list);
    const QString key = list->keys().constLast();
    QCOMPARE(key, QString(References, QLatin1Char('&')));
    QCOMPARE(list->value(key).toString(), key);
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

void UserDefaultsTest::valuesThatXmlCannotHoldDoNotSpoilTheFile()
{
    const QString face = QString::fromUtf8("\xF0\x9F\x98\x80");
    const QString forbidden = QString(QChar(0)) + QChar(7) + QChar(0xFFFF) + QChar(0xDC00) + QChar(0xD800);
    const QString text = QLatin1Char('a') + forbidden + face + QLatin1Char('z') + QChar(0xD800);
    const QString replaced = QLatin1Char('a') + QString(5, QChar(QChar::ReplacementCharacter)) + face
        + QLatin1Char('z') + QChar(QChar::ReplacementCharacter);
    PropertyListDictionary list;
    list.setValue(QStringLiteral("name"), text);
    list.setValue(QStringLiteral("alien"), QVariant::fromValue(QSize(1, 2)));
    list.setValue(text, true);
    const auto again = PropertyListDictionary::fromXml(list.toXml());
    QVERIFY(again);
    QCOMPARE(again->keys(), QStringList({QStringLiteral("name"), replaced}));
    QCOMPARE(again->value(QStringLiteral("name")).toString(), replaced);
}

void UserDefaultsTest::aByteOrderMarkInATextStays()
{
    const QString text = QString(2, QChar(QChar::ByteOrderMark)) + QStringLiteral("Kitchen");
    PropertyListDictionary list;
    list.setValue(text, text);
    const auto again = PropertyListDictionary::fromXml(list.toXml());
    QVERIFY(again);
    QCOMPARE(again->keys(), QStringList(text));
    QCOMPARE(again->value(text).toString(), text);
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
    QTest::newRow("not a list") << QByteArray("hello");
    QTest::newRow("binary list") << QByteArray("bplist00\xd0\x08", 10);
    QTest::newRow("root is an array") << QByteArray("<plist><array/></plist>");
    QTest::newRow("no root") << QByteArray("<plist/>");
    QTest::newRow("two roots") << QByteArray("<plist><dict/><dict/></plist>");
    QTest::newRow("trailing text") << QByteArray("<plist><dict/></plist><plist/>");
    QTest::newRow("value without a key") << QByteArray("<plist><dict><true/></dict></plist>");
    QTest::newRow("key without a value") << QByteArray("<plist><dict><key>a</key></dict></plist>");
    QTest::newRow("two keys") << QByteArray("<plist><dict><key>a</key><key>b</key></dict></plist>");
    QTest::newRow("unknown type") << QByteArray("<plist><dict><key>a</key><float>1</float></dict></plist>");
    QTest::newRow("integer") << QByteArray("<plist><dict><key>a</key><integer>one</integer></dict></plist>");
    QTest::newRow("real") << QByteArray("<plist><dict><key>a</key><real>1,5</real></dict></plist>");
    QTest::newRow("date") << QByteArray("<plist><dict><key>a</key><date>today</date></dict></plist>");
    QTest::newRow("data") << QByteArray("<plist><dict><key>a</key><data>*</data></dict></plist>");
    QTest::newRow("two signs") << QByteArray("<plist><dict><key>a</key><real>+-5</real></dict></plist>");
    QTest::newRow("octal mark") << QByteArray(
        "<plist><dict><key>a</key><integer>0o7</integer></dict></plist>");
    QTest::newRow("element in a text")
        << QByteArray("<plist><dict><key>a</key><string>b<true/></string></dict></plist>");
    QTest::newRow("foreign name") << QByteArray(
        "<plist xmlns:x='y'><dict><key>a</key><x:true/></dict></plist>");
    QTest::newRow("own entity") << QByteArray("<!DOCTYPE plist [<!ENTITY v \"<true/>\">]>"
                                              "<plist><dict><key>a</key>&v;</dict></plist>");
    QTest::newRow("entity of another file")
        << QByteArray("<!DOCTYPE plist PUBLIC '-//X//DTD' 'http://www.example/list.dtd'>"
                      "<plist><dict><key>a</key><string>&v;</string></dict></plist>");
    QTest::newRow("other encoding") << QByteArray("<?xml version='1.0' encoding='ISO-8859-1'?>"
                                                  "<plist><dict><key>a</key><true/></dict></plist>");
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFE<\0p\0l\0i\0s\0t\0>\0", 16);
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

void UserDefaultsTest::aDomainThatIsDeletedBeforeTheWriteStaysDeleted()
{
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    QVERIFY(QFile::remove(mFile));
    QVERIFY(defaults->synchronize());
    QVERIFY(!QFile::exists(mFile));
    QVERIFY(!defaults->persistentDomainForName(Domain));
    fileHolds(smallDomain(3));
    QVERIFY(defaults->synchronize());
    QCOMPARE(sizeIn(*defaults), 3);
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

void UserDefaultsTest::onlyItsOwnerMayReadANewFile()
{
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(mFolder->filePath(QStringLiteral("not/there/yet"))));
    mFile = mFolder->filePath(QStringLiteral("not/there/yet/") + Domain + QStringLiteral(".plist"));
    const auto defaults = platform::makeFileUserDefaults();
    forceSize(*defaults, 1);
    QVERIFY(!QFile::exists(mFile));
    QVERIFY(defaults->synchronize());
    QCOMPARE(fileMode(), mode_t(0600));
}

void UserDefaultsTest::theModeIsKept_data()
{
    QTest::addColumn<uint>("mode");
    for (const uint mode : {0600U, 0640U, 0444U, 0700U, 0751U, 01644U, 06755U})
        QTest::newRow(qPrintable(QString::number(mode, 8))) << mode;
}

void UserDefaultsTest::theModeIsKept()
{
    QFETCH(uint, mode);
    fileHolds(smallDomain(1));
    QCOMPARE(::chmod(QFile::encodeName(mFile).constData(), mode), 0);
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    QVERIFY(defaults->synchronize());
    QCOMPARE(fileMode(), mode_t(mode));
    QVERIFY(onlyTheDomainIsInTheFolder());
}

void UserDefaultsTest::theOwnerIsKept()
{
    fileHolds(smallDomain(1));
    // Only root can give a file to another user, so the file is another user's only if root runs this test.
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

void UserDefaultsTest::theFileIsOnTheDiskBeforeItTakesTheName()
{
    fileHolds(smallDomain(1));
    QCOMPARE(::chmod(QFile::encodeName(mFile).constData(), 0640), 0);
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    safeSteps.clear();
    QVERIFY(defaults->synchronize());
    const QStringList expected{QStringLiteral("fsync file, mode 640"), QStringLiteral("rename"),
                               QStringLiteral("fsync folder")};
    QCOMPARE(safeSteps, expected);
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

void UserDefaultsTest::aRelativeLinkInALinkedFolderIsFollowedAsTheKernelDoes()
{
    const QDir root(mFolder->path());
    QVERIFY(root.mkpath(QStringLiteral("real/config")) && root.mkpath(QStringLiteral("lexical")));
    QVERIFY(QFile::link(QStringLiteral("../real/config"), root.filePath(QStringLiteral("lexical/config"))));
    QVERIFY(QFile::link(QStringLiteral("../stored"),
                        root.filePath(QStringLiteral("real/config/") + Domain + QStringLiteral(".plist"))));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(root.filePath(QStringLiteral("lexical/config"))));
    mFile = root.filePath(QStringLiteral("real/stored"));
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    QCOMPARE(sizeIn(*defaults), 1);
    setSize(*defaults, 2);
    QVERIFY(defaults->synchronize());
    QCOMPARE(fileBytes(), smallDomain(2));
    QCOMPARE(sizeIn(*defaults), 2);
    QVERIFY(!root.exists(QStringLiteral("lexical/stored")));
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

void UserDefaultsTest::namesThatAreNotFileNames()
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

void UserDefaultsTest::anotherWritersChangeIsSeenAtOnce()
{
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    QCOMPARE(sizeIn(*defaults), 1);
    anotherWriterRuns("plistlib.dump({'Size': 7}, open(file, 'wb'))");
    QCOMPARE(sizeIn(*defaults), 7);
    QVERIFY(QFile::remove(mFile));
    QVERIFY(!defaults->persistentDomainForName(Domain));
}

// Many changes happen within one clock tick of the file system. So time stamps cannot show that the file has
// changed.
void UserDefaultsTest::aChangeOfTheSameSizeRightAfterwardsIsSeen()
{
    fileHolds(smallDomain(0));
    QFile file(mFile);
    QVERIFY(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    const auto defaults = platform::makeFileUserDefaults();
    for (int turn = 0; turn < 1000; ++turn) {
        QVERIFY(file.seek(0) && file.write(smallDomain(turn % 10)) > 0);
        QCOMPARE(sizeIn(*defaults), turn % 10);
    }
}

void UserDefaultsTest::anotherWriterMayRestoreTheBytesFromBeforeAWrite()
{
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    QVERIFY(defaults->synchronize());
    // Do not read the domain between synchronize() and this write to the file. That read would refresh the
    // cached contents, and so hide a synchronize() that leaves old ones in the cache.
    fileHolds(smallDomain(1));
    QCOMPARE(sizeIn(*defaults), 1);
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
    const OpenCounter opened(mFile);
    for (int turn = 0; turn < 100; ++turn)
        QVERIFY(defaults->synchronize());
    QCOMPARE(opened.count(), 0);
}

void UserDefaultsTest::aChangeReadsTheFileOnceForItsValuesAndOnceBeforeTheWrite()
{
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    const OpenCounter opened(mFile);
    setSize(*defaults, 2);
    QVERIFY(defaults->synchronize());
    QCOMPARE(opened.count(), 2);
}

void UserDefaultsTest::aFileThatIsLongerThanItsSizeIsReadToTheEnd()
{
    // The kernel reports the size 0 for this file, so reading it is like reading a file that has grown.
    const QString path = QStringLiteral("/proc/filesystems");
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray expected = file.readAll();
    QVERIFY(expected.size() > 16);
    QCOMPARE(platform::AtomicFile::read(path).bytes, expected);
}

void UserDefaultsTest::aFileThatNeverEndsIsTooLarge()
{
    // The kernel reports the size 0 for this file, but it has eight bytes for each page of the address space.
    QCOMPARE(platform::AtomicFile::read(QStringLiteral("/proc/self/pagemap")).error, EFBIG);
}

void UserDefaultsTest::cutAtEveryByte()
{
    const QByteArray whole =
        smallDomain(5, "<key>Names</key><dict><key>a</key><string>\xc3\xa9&amp;</string></dict>");
    for (int length = 0; length < whole.size() - 1; ++length) {
        const QByteArray cut = whole.left(length);
        fileHolds(cut);
        expectOneComplaint("left unchanged");
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
    expectOneComplaint("left unchanged.*not a property list");
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
    expectOneComplaint("left unchanged.*directory");
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
    expectOneComplaint("left unchanged");
    const auto defaults = platform::makeFileUserDefaults();
    QVERIFY(!defaults->persistentDomainForName(Domain));
    forceSize(*defaults, 1);
    QVERIFY(!defaults->synchronize());
}

void UserDefaultsTest::aDeviceAtTheEndOfALink()
{
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), mFile));
    expectOneComplaint("left unchanged");
    const auto defaults = platform::makeFileUserDefaults();
    forceSize(*defaults, 1);
    QVERIFY(!defaults->synchronize());
    QVERIFY(QFileInfo(mFile).isSymLink());
}

void UserDefaultsTest::aLoopOfLinks()
{
    QVERIFY(QFile::link(mFile, mFile));
    expectOneComplaint("left unchanged");
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
        expectOneComplaint("left unchanged.*[Pp]ermission");
        QVERIFY(!defaults->persistentDomainForName(Domain));
        forceSize(*defaults, 9);
        QVERIFY(!defaults->synchronize());
    }
    QCOMPARE(::chmod(QFile::encodeName(mFile).constData(), 0644), 0);
    QCOMPARE(fileBytes(), smallDomain(1));
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
        QVERIFY(defaults->synchronize());
        QCOMPARE(sizeIn(*defaults), 1);
        QCOMPARE(fileBytes(), smallDomain(1));
    }
    QCOMPARE(::chmod(QFile::encodeName(mFolder->path()).constData(), 0700), 0);
    setSize(*defaults, 3);
    QVERIFY(defaults->synchronize());
    QCOMPARE(fileBytes(), smallDomain(3));
}

void UserDefaultsTest::aFullDisk()
{
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    {
        const FullDisk full(100);
        expectOneComplaint("cannot be written.*[Ff]ile too large");
        QVERIFY(!defaults->synchronize());
    }
    QCOMPARE(fileBytes(), smallDomain(1));
    QVERIFY(onlyTheDomainIsInTheFolder());
    QCOMPARE(sizeIn(*defaults), 1);
    setSize(*defaults, 3);
    QVERIFY(defaults->synchronize());
    QCOMPARE(fileBytes(), smallDomain(3));
}

void UserDefaultsTest::aFailedWriteNeverReplacesANewerFile()
{
    fileHolds(smallDomain(1));
    auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    {
        const FullDisk full(100);
        expectOneComplaint("cannot be written");
        QVERIFY(!defaults->synchronize());
    }
    fileHolds(smallDomain(5, "<key>New</key><true/>"));
    QCOMPARE(sizeIn(*defaults), 5);
    QVERIFY(defaults->synchronize());
    defaults.reset();
    QCOMPARE(fileBytes(), smallDomain(5, "<key>New</key><true/>"));
}

void UserDefaultsTest::aRepairedFileIsReadAgain()
{
    fileHolds("broken");
    expectOneComplaint("left unchanged");
    const auto defaults = platform::makeFileUserDefaults();
    QVERIFY(!defaults->persistentDomainForName(Domain));
    fileHolds(smallDomain(4));
    QCOMPARE(sizeIn(*defaults), 4);
    setSize(*defaults, 5);
    QVERIFY(defaults->synchronize());
    QVERIFY(fileBytes().contains("<integer>5</integer>"));
}

void UserDefaultsTest::aFileDamagedBeforeTheWriteIsKept()
{
    fileHolds(smallDomain(1));
    const auto defaults = platform::makeFileUserDefaults();
    setSize(*defaults, 2);
    fileHolds("broken");
    expectOneComplaint("left unchanged");
    QVERIFY(!defaults->synchronize());
    QCOMPARE(fileBytes(), QByteArray("broken"));
    QVERIFY(!defaults->persistentDomainForName(Domain));
}

QTEST_GUILESS_MAIN(UserDefaultsTest)
#include "UserDefaults_test.moc"
