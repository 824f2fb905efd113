#include "platform/desktop/ProgramLauncher.h"
#include "tests/support/Timeout.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// Tests launches of programs that exist, are missing, are broken or start slowly. The program is a script
/// that writes a file.
class ProgramLauncherTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> mFolder;

    QString path(const QString &name) { return mFolder->filePath(name); }
    QString mark() { return path(QStringLiteral("a mark; $HOME")); }
    void install(const QString &program, const QString &lines, bool executable = true)
    {
        QFile file(program);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(lines.toUtf8());
        file.close();
        if (executable)
            QVERIFY(file.setPermissions(file.permissions() | QFileDevice::ExeOwner));
    }
    QString programThatLeavesItsMark()
    {
        return QStringLiteral("#!/bin/sh\n: > '%1.new' && mv '%1.new' '%1'\n").arg(mark());
    }
    static bool launch(const QString &program) { return platform::makeProgramLauncher()->launch(program); }

private Q_SLOTS:
    void init() { mFolder = std::make_unique<QTemporaryDir>(); }

    void aProgramIsStarted()
    {
        const auto program = path(QStringLiteral("my program"));
        install(program, programThatLeavesItsMark());
        QVERIFY(launch(program));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(mark()), Timeout);
    }

    void noShellReadsThePath()
    {
        const auto program = path(QStringLiteral("program; touch $(pwd) \"x\""));
        install(program, programThatLeavesItsMark());
        QVERIFY(launch(program));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(mark()), Timeout);
    }

    void anUnstartableProgramIsRefused()
    {
        install(path(QStringLiteral("text")), programThatLeavesItsMark(), false);
        QVERIFY(QDir(mFolder->path()).mkdir(QStringLiteral("Empty.app")));
        QVERIFY(!launch(path(QStringLiteral("missing"))));
        QVERIFY(!launch(path(QStringLiteral("text"))));
        QVERIFY(!launch(path(QStringLiteral("Empty.app"))));
        QVERIFY(!launch(QString()));
    }

    void aProgramWithoutAnInterpreterIsRefused()
    {
        install(path(QStringLiteral("broken")), QStringLiteral("#!/no/such/interpreter\n"));
        QVERIFY(!launch(path(QStringLiteral("broken"))));
    }

    void aProgramThatExitsAtOnceHasBeenLaunched()
    {
        install(path(QStringLiteral("short")), QStringLiteral("#!/bin/sh\nexit 3\n"));
        QVERIFY(launch(path(QStringLiteral("short"))));
    }

    void launchDoesNotWaitForTheProgram()
    {
        const auto release = path(QStringLiteral("release"));
        install(path(QStringLiteral("slow")),
                QStringLiteral("#!/bin/sh\nwhile [ ! -e '%1' ]; do sleep 0.05; done\n: > '%2'\n")
                    .arg(release, mark()));
        QVERIFY(launch(path(QStringLiteral("slow"))));
        QVERIFY(!QFile::exists(mark()));
        install(release, QString(), false);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(mark()), Timeout);
    }

    void theProgramInheritsNoneOfOurOutput()
    {
        install(path(QStringLiteral("quiet")),
                QStringLiteral("#!/bin/sh\nends=$(readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2)\n"
                               "echo \"$ends\" > '%1.new'\nmv '%1.new' '%1'\n")
                    .arg(mark()));
        QVERIFY(launch(path(QStringLiteral("quiet"))));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(mark()), Timeout);
        QFile answer(mark());
        QVERIFY(answer.open(QIODevice::ReadOnly));
        const auto ends = answer.readAll();
        QVERIFY2(ends.count("/dev/null") == 3, ends.constData());
    }
};

QTEST_GUILESS_MAIN(ProgramLauncherTest)

#include "ProgramLauncher_test.moc"
