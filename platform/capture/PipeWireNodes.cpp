#include "platform/capture/PipeWireNodes.h"

#include "platform/capture/PipeWireSocket.h"

#include <pipewire/pipewire.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <mutex>

using namespace std::chrono;

namespace platform {
namespace {

template <auto Destroy>
struct Deleter {
    template <class Object>
    void operator()(Object *object) const
    {
        Destroy(object);
    }
};

void destroyRegistry(pw_registry *registry)
{
    pw_proxy_destroy(reinterpret_cast<pw_proxy *>(registry));
}

using Loop = std::unique_ptr<pw_loop, Deleter<pw_loop_destroy>>;
using Context = std::unique_ptr<pw_context, Deleter<pw_context_destroy>>;
using Core = std::unique_ptr<pw_core, Deleter<pw_core_disconnect>>;
using Registry = std::unique_ptr<pw_registry, Deleter<destroyRegistry>>;

/// The state of one look-up. The nodes are in the order of PipeWire's registry.
struct LookUp {
    PipeWireNodes nodes;
    int seq = 0;
    bool ended = false;
    bool failed = false;
};

const char *textOf(const spa_dict *properties, const char *key)
{
    const char *text = properties ? spa_dict_lookup(properties, key) : nullptr;
    return text ? text : "";
}

void onGlobal(void *data, std::uint32_t, std::uint32_t, const char *type, std::uint32_t,
              const spa_dict *properties)
{
    if (std::strcmp(type, PW_TYPE_INTERFACE_Node) != 0
        || std::strcmp(textOf(properties, PW_KEY_MEDIA_CLASS), "Video/Source") != 0)
        return;
    static_cast<LookUp *>(data)->nodes.push_back(
        {QString::fromUtf8(textOf(properties, PW_KEY_NODE_NAME)),
         QString::fromUtf8(textOf(properties, PW_KEY_NODE_DESCRIPTION)),
         QByteArray(textOf(properties, PW_KEY_OBJECT_SERIAL)).toULongLong()});
}

void onDone(void *data, std::uint32_t id, int seq)
{
    auto *lookUp = static_cast<LookUp *>(data);
    if (id == PW_ID_CORE && seq == lookUp->seq)
        lookUp->ended = true;
}

void onError(void *data, std::uint32_t id, int, int, const char *)
{
    // Only errors of the core (id 0) end the connection; errors of other objects do not affect the look-up.
    if (id == PW_ID_CORE)
        static_cast<LookUp *>(data)->failed = true;
}

/// Runs PipeWire's loop until the look-up has ended or failed. Returns false after `timeout`.
bool waitFor(const LookUp &lookUp, pw_loop *loop, milliseconds timeout)
{
    const auto deadline = steady_clock::now() + timeout;
    pw_loop_enter(loop);
    while (!lookUp.ended && !lookUp.failed) {
        const auto left = ceil<milliseconds>(deadline - steady_clock::now());
        if (left <= 0ms)
            break;
        pw_loop_iterate(loop, static_cast<int>(left.count()));
    }
    pw_loop_leave(loop);
    return lookUp.ended || lookUp.failed;
}

void initPipeWire()
{
    // pw_deinit() is never called, because other code in the process may use PipeWire.
    static std::once_flag once;
    std::call_once(once, [] { pw_init(nullptr, nullptr); });
}

/// Connects over the same socket as the streams, so that look-ups and streams use the same PipeWire server.
/// The context closes the descriptor.
Core connect(pw_context *context)
{
    const PipeWireSocket socket;
    const int descriptor = context ? socket.duplicate() : -1;
    return Core(descriptor < 0 ? nullptr : pw_context_connect_fd(context, descriptor, nullptr, 0));
}

} // namespace

std::optional<PipeWireNodes> lookUpPipeWireNodes(milliseconds timeout)
{
    initPipeWire();
    const Loop loop(pw_loop_new(nullptr));
    const Context context(loop ? pw_context_new(loop.get(), nullptr, 0) : nullptr);
    const Core core = connect(context.get());
    const Registry registry(core ? pw_core_get_registry(core.get(), PW_VERSION_REGISTRY, 0) : nullptr);
    LookUp lookUp;
    if (!registry)
        return lookUp.nodes;

    pw_core_events coreEvents = {};
    coreEvents.version = PW_VERSION_CORE_EVENTS;
    coreEvents.done = onDone;
    coreEvents.error = onError;
    pw_registry_events registryEvents = {};
    registryEvents.version = PW_VERSION_REGISTRY_EVENTS;
    registryEvents.global = onGlobal;
    spa_hook coreHook = {};
    spa_hook registryHook = {};
    pw_core_add_listener(core.get(), &coreHook, &coreEvents, &lookUp);
    pw_registry_add_listener(registry.get(), &registryHook, &registryEvents, &lookUp);
    lookUp.seq = pw_core_sync(core.get(), PW_ID_CORE, 0);

    const bool replied = waitFor(lookUp, loop.get(), timeout);
    spa_hook_remove(&registryHook);
    spa_hook_remove(&coreHook);
    if (!replied)
        return {};
    return lookUp.failed ? PipeWireNodes() : lookUp.nodes;
}

const PipeWireNode *nodeNamed(const PipeWireNodes &nodes, const QString &name)
{
    const auto node = std::find_if(nodes.begin(), nodes.end(),
                                   [&name](const PipeWireNode &each) { return each.name == name; });
    return node == nodes.end() ? nullptr : &*node;
}

bool hasNode(const PipeWireNodes &nodes, std::uint64_t serial)
{
    return std::any_of(nodes.begin(), nodes.end(),
                       [serial](const PipeWireNode &each) { return each.serial == serial; });
}

} // namespace platform
