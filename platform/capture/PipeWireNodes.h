#pragma once

#include <QString>

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace platform {

/// A node of PipeWire with the class `Video/Source`.
struct PipeWireNode {
    QString name;
    QString description;
    /// PipeWire's `object.serial`, never 0. A node that was removed and returns has a new serial.
    std::uint64_t serial = 0;
};

using PipeWireNodes = std::vector<PipeWireNode>;

/// Timeout of a look-up, which normally takes some milliseconds. After a timeout, PipeWire counts as hung.
inline constexpr std::chrono::seconds LookUpTimeout(3);

/// Returns the nodes of class `Video/Source` in PipeWire's order. The result is empty if PipeWire does not
/// run, and nullopt if it does not reply within `timeout`. Any thread may call this; no thread and no
/// descriptor stays behind.
std::optional<PipeWireNodes> lookUpPipeWireNodes(std::chrono::milliseconds timeout);

/// Returns the first node with this name; nullptr if there is none.
const PipeWireNode *nodeNamed(const PipeWireNodes &nodes, const QString &name);

bool hasNode(const PipeWireNodes &nodes, std::uint64_t serial);

} // namespace platform
