#pragma once

#include <QString>

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace platform {

/// A video source of PipeWire.
struct PipeWireNode {
    QString name;
    QString description;
    /// `object.serial`: a node that goes and comes back under its name has another one. Never 0.
    std::uint64_t serial = 0;
};

using PipeWireNodes = std::vector<PipeWireNode>;

/// Timeout of a look-up, which normally takes some milliseconds. After it PipeWire counts as hung.
inline constexpr std::chrono::seconds LookUpTimeout(3);

/// The nodes of class `Video/Source` in PipeWire's order: none where no PipeWire runs, nullopt when it does
/// not reply within `timeout`. Any thread; leaves neither a thread nor a descriptor behind.
std::optional<PipeWireNodes> lookUpPipeWireNodes(std::chrono::milliseconds timeout);

/// The first node of this name; nullptr for none.
const PipeWireNode *nodeNamed(const PipeWireNodes &nodes, const QString &name);

bool hasNode(const PipeWireNodes &nodes, std::uint64_t serial);

} // namespace platform
