// A process with an agent that has both bus names and replies to calls. Tests stop and kill it with signals.
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
