#include "platform/desktop/Workspace.h"

#include "platform/bus/BusConnection.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Timeout.h"

#include <QDBusConnection>
#include <QDesktopServices>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString FileManager = QStringLiteral("org.freedesktop.FileManager1");
const QString FileManagerPath = QStringLiteral("/org/freedesktop/FileManager1");
const QString FileManagerConnection = QStringLiteral("file-manager");

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// A stand-in for the file manager's service on the session bus.
class FileManagerStandIn : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")
public:
    FileManagerStandIn()
        : mBus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, FileManagerConnection))
    {
        mBus.registerObject(FileManagerPath, this, QDBusConnection::ExportAllSlots);
        mIsThere = mBus.registerService(FileManager);
    }
    ~FileManagerStandIn() override
    {
        mBus.unregisterService(FileManager);
        QDBusConnection::disconnectFromBus(FileManagerConnection);
    }

    [[nodiscard]] bool isThere() const { return mIsThere; }
    QStringList shown;
    QStringList startUpIds;

public Q_SLOTS:
    void ShowItems(const QStringList &urls, const QString &startUpId)
    {
        shown += urls;
        startUpIds += startUpId;
    }

private:
    QDBusConnection mBus;
    bool mIsThere = false;
};

/// Tests the requests to open URLs, files and settings with other programs.
class WorkspaceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { mBus = std::make_unique<PrivateBus>(); }
    void init();
    void cleanup();
    void cleanupTestCase() { mBus.reset(); }

    void anAddressOpensInTheBrowser();
    void anInvalidAddressIsNotOpened();
    void aFileIsOpened();
    void aMissingFileIsNeitherOpenedNorShown();
    void theDesktopsBluetoothSettingsAreOpened();
    void aFileIsShownInTheFileManager();
    void aRelativePathIsShownAsAbsolute();
    void showingAFileDoesNotBlock();
    void withoutAFileManagerTheFolderIsOpened();
    void withoutABusTheFolderIsOpened();
    void aSilentBusIsWaitedForOnce();
    void aRestartedBusIsUsed();
    void aDestroyedWorkspaceOpensNothing();

public Q_SLOTS:
    // A stand-in for the desktop's default URL handlers.
    void open(const QUrl &url) { mOpened += url.toString(QUrl::FullyEncoded); }

private:
    [[nodiscard]] QString file() const { return mFolder->filePath(QStringLiteral("a log %1.log")); }
    [[nodiscard]] QString urlOf(const QString &path) const
    {
        return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    }
    void expectFolderOpened()
    {
        QTRY_COMPARE_WITH_TIMEOUT(mOpened, QStringList{urlOf(mFolder->path())}, Timeout);
    }

    std::unique_ptr<QTemporaryDir> mFolder;
    std::shared_ptr<platform::Workspace> mWorkspace;
    std::unique_ptr<PrivateBus> mBus;
    QStringList mOpened;
};

void WorkspaceTest::init()
{
    mFolder = std::make_unique<QTemporaryDir>();
    QFile log(file());
    QVERIFY(log.open(QIODevice::WriteOnly));
    mOpened.clear();
    for (const auto *scheme : {"file", "http"})
        QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "open");
    mWorkspace = platform::makeWorkspace(std::make_shared<platform::SessionBus>());
}

void WorkspaceTest::cleanup()
{
    mWorkspace.reset();
    for (const auto *scheme : {"file", "http"})
        QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
}

void WorkspaceTest::anAddressOpensInTheBrowser()
{
    QVERIFY(mWorkspace->openURL(QUrl(QStringLiteral("http://www.orvex.example"))));
    QCOMPARE(mOpened, QStringList{QStringLiteral("http://www.orvex.example")});
}

void WorkspaceTest::anInvalidAddressIsNotOpened()
{
    QVERIFY(!mWorkspace->openURL(QUrl()));
    QVERIFY(!mWorkspace->openURL(QUrl(QStringLiteral("http://["))));
    QCOMPARE(mOpened, QStringList());
}

void WorkspaceTest::aFileIsOpened()
{
    QVERIFY(mWorkspace->openFile(file()));
    QCOMPARE(mOpened, QStringList{urlOf(file())});
}

void WorkspaceTest::aMissingFileIsNeitherOpenedNorShown()
{
    const FileManagerStandIn fileManager;
    QVERIFY(QFile::remove(file()));
    QVERIFY(!mWorkspace->openFile(file()));
    QVERIFY(!mWorkspace->selectFile(file()));
    // Send one more request, only to wait for it. The bus keeps the order of messages, so a request for the
    // missing file would have arrived earlier and would be in `shown`.
    QVERIFY(mWorkspace->selectFile(mFolder->path()));
    QTRY_COMPARE_WITH_TIMEOUT(fileManager.shown, QStringList{urlOf(mFolder->path())}, Timeout);
    QCOMPARE(mOpened, QStringList());
}

void WorkspaceTest::aFileIsShownInTheFileManager()
{
    const FileManagerStandIn fileManager;
    QVERIFY(fileManager.isThere());
    QVERIFY(mWorkspace->selectFile(file()));
    QTRY_COMPARE_WITH_TIMEOUT(fileManager.shown, QStringList{urlOf(file())}, Timeout);
    QVERIFY(fileManager.shown.constFirst().endsWith(QStringLiteral("/a%20log%20%251.log")));
    QCOMPARE(fileManager.startUpIds, QStringList{QString()});
    // Send a second request only to wait: when it arrives, the workspace has handled the reply to the first
    // request. If it had taken that reply for a failure, it would have opened the folder by now.
    QVERIFY(mWorkspace->selectFile(file()));
    QTRY_COMPARE_WITH_TIMEOUT(fileManager.shown.size(), 2, Timeout);
    QCOMPARE(mOpened, QStringList());
}

void WorkspaceTest::aRelativePathIsShownAsAbsolute()
{
    const FileManagerStandIn fileManager;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(mFolder->path()));
    QVERIFY(mWorkspace->selectFile(QFileInfo(file()).fileName()));
    QDir::setCurrent(before);
    QTRY_COMPARE_WITH_TIMEOUT(fileManager.shown, QStringList{urlOf(file())}, Timeout);
}

void WorkspaceTest::showingAFileDoesNotBlock()
{
    // The stand-in runs in this thread, so it replies only when the event loop runs. A blocking call would
    // fail.
    const FileManagerStandIn fileManager;
    QVERIFY(mWorkspace->selectFile(file()));
    QCOMPARE(fileManager.shown, QStringList());
    QTRY_COMPARE_WITH_TIMEOUT(fileManager.shown.size(), 1, Timeout);
}

void WorkspaceTest::withoutAFileManagerTheFolderIsOpened()
{
    QVERIFY(mWorkspace->selectFile(file()));
    expectFolderOpened();
}

void WorkspaceTest::withoutABusTheFolderIsOpened()
{
    mBus->kill();
    QVERIFY(mWorkspace->selectFile(file()));
    expectFolderOpened();
    mBus->start();
}

void WorkspaceTest::aSilentBusIsWaitedForOnce()
{
    mBus->kill();
    mBus->start();
    mBus->stop();
    // Only one request may wait for the bus: 300 full timeouts would exceed the test's time limit.
    constexpr int Many = 300;
    for (int i = 0; i < Many; ++i)
        QVERIFY(mWorkspace->selectFile(file()));
    mBus->resume();
    QCOMPARE(mOpened.size(), Many);
}

void WorkspaceTest::aRestartedBusIsUsed()
{
    QVERIFY(mWorkspace->selectFile(file()));
    expectFolderOpened();
    mBus->kill();
    mBus->start();
    const FileManagerStandIn fileManager;
    QVERIFY(fileManager.isThere());
    // A request that still uses the lost bus fails, and the workspace opens the folder instead. So repeat the
    // request until one reaches the file manager.
    QTRY_VERIFY_WITH_TIMEOUT(mWorkspace->selectFile(file()) && !fileManager.shown.isEmpty(), Timeout);
}

void WorkspaceTest::aDestroyedWorkspaceOpensNothing()
{
    const FileManagerStandIn fileManager;
    QVERIFY(mWorkspace->selectFile(file()));
    mWorkspace.reset();
    // A new workspace still works, although the old one was destroyed during its request.
    mWorkspace = platform::makeWorkspace(std::make_shared<platform::SessionBus>());
    QVERIFY(mWorkspace->selectFile(mFolder->path()));
    QTRY_VERIFY_WITH_TIMEOUT(fileManager.shown.contains(urlOf(mFolder->path())), Timeout);
    QCOMPARE(mOpened, QStringList());
}

void WorkspaceTest::theDesktopsBluetoothSettingsAreOpened()
{
    const QTemporaryDir programs;
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", programs.path().toLocal8Bit());
    QVERIFY2(!mWorkspace->openBluetoothSettings(), "no such program");
    QFile program(programs.filePath(QStringLiteral("systemsettings")));
    QVERIFY(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\necho \"$@\" > \"$0.arguments\"\n");
    program.close();
    QVERIFY(program.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    const bool isOpened = mWorkspace->openBluetoothSettings();
    qputenv("PATH", path);
    QVERIFY(isOpened);
    const QString arguments = program.fileName() + QStringLiteral(".arguments");
    QTRY_COMPARE_WITH_TIMEOUT(contentsOf(arguments), QByteArray("kcm_bluetooth\n"), Timeout);
}

QTEST_MAIN(WorkspaceTest)
#include "Workspace_test.moc"
