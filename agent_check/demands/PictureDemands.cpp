#include "agent/AgentContract.h"
#include "agent_check/CheckContext.h"
#include "agent_check/Translation.h"
#include "agent_check/demands/Demand.h"
#include "agent_check/demands/PictureWatcher.h"
#include "platform/capture/PipeWireNodes.h"
#include "platform/capture/PipeWireSocket.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace agent_check {

namespace {

/// The agent must publish its PipeWire node within this time after it has taken its bus names.
constexpr auto NodeTime = 5000ms;
constexpr auto FirstFrameTime = 5000ms;
constexpr auto FramesTime = 4000ms;
/// The frame rate is measured several times, because a busy machine may spoil a measurement.
constexpr int Measurements = 4;
constexpr int FramesOfMeasurement = 16;
constexpr int FramesOfSecondWatcher = 5;
/// The measured frame rate divided by the announced one must be between these limits.
constexpr double LeastRate = 0.7;
constexpr double MostRate = 1.3;

int countOf(const platform::PipeWireNodes &nodes)
{
    return int(std::count_if(nodes.begin(), nodes.end(), [](const platform::PipeWireNode &node) {
        return node.name == PictureNode::Name;
    }));
}

Outcome checkNode(CheckContext &context)
{
    if (!platform::PipeWireSocket().isOpen())
        return skip(Translation::tr("PipeWire does not run"));
    platform::PipeWireNodes nodes;
    context.waitFor(
        [&nodes] {
            nodes =
                platform::lookUpPipeWireNodes(platform::LookUpTimeout).value_or(platform::PipeWireNodes());
            return countOf(nodes) > 0;
        },
        NodeTime);
    if (countOf(nodes) == 0)
        return fail(Translation::tr("no node has the name \"%1\"").arg(PictureNode::Name));
    context.nodeSerial = platform::nodeNamed(nodes, PictureNode::Name)->serial;
    return countOf(nodes) == 1
        ? pass()
        : fail(Translation::tr("%1 nodes have the name \"%2\"").arg(countOf(nodes)).arg(PictureNode::Name));
}

/// Measures the frame rate over FramesOfMeasurement frames, in frames per second. Returns 0 if the frames do
/// not arrive in time.
double measuredRate(const CheckContext &context, PictureWatcher &watcher)
{
    const auto time = watcher.waitForFrames(FramesOfMeasurement, context.options.limit(FramesTime));
    return time && time->count() > 0
        ? (FramesOfMeasurement - 1) / std::chrono::duration<double>(*time).count()
        : 0;
}

Outcome checkRate(CheckContext &context)
{
    if (context.nodeSerial == 0)
        return skip(Translation::tr("there is no video node"));
    PictureWatcher watcher(context.nodeSerial);
    if (!watcher.waitForFrames(1, context.options.limit(FirstFrameTime)))
        return fail(Translation::tr("the node sends no frame"));
    const double announced = watcher.announcedRate();
    double rate = 0;
    for (int measurement = 0; measurement < Measurements * context.options.slowness; ++measurement) {
        rate = measuredRate(context, watcher);
        const bool isRight =
            rate >= announced * LeastRate && (announced == 0 || rate <= announced * MostRate);
        if (rate > 0 && isRight)
            return pass();
    }
    return fail(Translation::tr("the node sends %1 frames per second, but announces %2")
                    .arg(rate, 0, 'f', 1)
                    .arg(announced, 0, 'f', 1));
}

Outcome checkSecondWatcher(CheckContext &context)
{
    if (context.nodeSerial == 0)
        return skip(Translation::tr("there is no video node"));
    for (int turn = 0; turn < 2; ++turn) {
        PictureWatcher watcher(context.nodeSerial);
        if (!watcher.waitForFrames(FramesOfSecondWatcher, context.options.limit(FirstFrameTime)))
            return fail(turn == 0 ? Translation::tr("the node sends no frame")
                                  : Translation::tr("the second consumer receives no frame"));
    }
    const auto nodes = platform::lookUpPipeWireNodes(platform::LookUpTimeout);
    return nodes && platform::hasNode(*nodes, context.nodeSerial)
        ? pass()
        : fail(Translation::tr("the node has disappeared or was replaced"));
}

} // namespace

Demands pictureDemands()
{
    return {
        {QStringLiteral("picture.node"),
         Translation::tr("One video node has the name \"%1\"").arg(PictureNode::Name), checkNode},
        {QStringLiteral("picture.rate"), Translation::tr("The node sends frames at its announced rate"),
         checkRate},
        {QStringLiteral("picture.watchers"),
         Translation::tr("The node serves two consumers, one after the other"), checkSecondWatcher},
    };
}

} // namespace agent_check
