// An agent that is a process of its own, to be stopped and killed by signals: publishes both names and
// answers.
#include "tests/support/RecordingAgent.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    RecordingAgent agent;
    agent.publishBoth();
    std::puts("published");
    std::fflush(stdout);
    return QCoreApplication::exec();
}
