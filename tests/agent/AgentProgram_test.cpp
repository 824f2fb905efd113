#include "agent/AgentProgram.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

/// Tests the choice of the agent's executable.
class AgentProgramTest : public QObject {
    Q_OBJECT

    const QString mInstalled = QStringLiteral("/Library/Application Support/KS-7/KS7Agent.app");

private Q_SLOTS:
    // The tests fail on a machine with an installed agent. That agent is a folder, and agentProgram() would
    // return the path of the program inside, not the expected path of the folder.
    void initTestCase() { QVERIFY(!QFile::exists(mInstalled)); }
    void init() { qunsetenv("KS7_AGENT"); }

    void theInstalledAgentIsTheDefault()
    {
        QCOMPARE(agentProgram(), mInstalled);
        qputenv("KS7_AGENT", "");
        QCOMPARE(agentProgram(), mInstalled);
    }

    void theVariableNamesAnotherProgram()
    {
        qputenv("KS7_AGENT", "/no/such/agent");
        QCOMPARE(agentProgram(), QStringLiteral("/no/such/agent"));
    }

    void aFolderMeansTheProgramInIt()
    {
        const QTemporaryDir folder;
        qputenv("KS7_AGENT", folder.path().toUtf8());
        QCOMPARE(agentProgram(), folder.filePath(QStringLiteral("KS7Agent")));
    }

    void aRelativePathStartsAtTheWorkingFolder()
    {
        qputenv("KS7_AGENT", "agent");
        QCOMPARE(agentProgram(), QDir::current().filePath(QStringLiteral("agent")));
    }
};

QTEST_GUILESS_MAIN(AgentProgramTest)
#include "AgentProgram_test.moc"
