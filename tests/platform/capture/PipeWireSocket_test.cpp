#include "platform/capture/PipeWireSocket.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// Tests the search for PipeWire's socket.
class PipeWireSocketTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        for (const char *variable : {"PIPEWIRE_REMOTE", "PIPEWIRE_RUNTIME_DIR", "XDG_RUNTIME_DIR"})
            qunsetenv(variable);
    }

    void theEnvironmentNamesTheSocket_data()
    {
        QTest::addColumn<QByteArray>("remote");
        QTest::addColumn<QByteArray>("pipeWireFolder");
        QTest::addColumn<QByteArray>("userFolder");
        QTest::addColumn<QStringList>("expected");
        const QString system = QStringLiteral("/run/pipewire/pipewire-0");
        const auto row = [](const char *name, const char *remote, const char *folder, const char *user,
                            const QStringList &expected) {
            QTest::newRow(name) << QByteArray(remote) << QByteArray(folder) << QByteArray(user) << expected;
        };
        row("nothing", "", "", "", {system});
        row("the user's folder", "", "", "/user", {QStringLiteral("/user/pipewire-0"), system});
        row("PipeWire's folder", "", "/own", "/user", {QStringLiteral("/own/pipewire-0"), system});
        row("another name", "other", "", "/user",
            {QStringLiteral("/user/other"), QStringLiteral("/run/pipewire/other")});
        row("a path", "/elsewhere/socket", "/own", "/user", {QStringLiteral("/elsewhere/socket")});
    }
    void theEnvironmentNamesTheSocket()
    {
        QFETCH(QByteArray, remote);
        QFETCH(QByteArray, pipeWireFolder);
        QFETCH(QByteArray, userFolder);
        qputenv("PIPEWIRE_REMOTE", remote);
        qputenv("PIPEWIRE_RUNTIME_DIR", pipeWireFolder);
        qputenv("XDG_RUNTIME_DIR", userFolder);
        QTEST(platform::pipeWireSocketPaths(), "expected");
    }

    void anExistingSocketIsPreferred()
    {
        const QTemporaryDir folder;
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder.path()));
        const QString path = folder.filePath(QStringLiteral("pipewire-0"));
        QFile socket(path);
        QVERIFY(socket.open(QIODevice::WriteOnly));
        QCOMPARE(platform::pipeWireSocketPath(), path);
    }

    void withoutPipeWireNothingIsOpen()
    {
        qputenv("PIPEWIRE_REMOTE", "/nonexistent/socket");
        const platform::PipeWireSocket socket;
        QVERIFY(!socket.isOpen());
        QCOMPARE(socket.duplicate(), -1);
        socket.shutdown();
    }
};

QTEST_GUILESS_MAIN(PipeWireSocketTest)
#include "PipeWireSocket_test.moc"
