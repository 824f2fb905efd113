// An agent in a process of its own, which tests stop and kill by signals. Publishes both names and replies.
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
