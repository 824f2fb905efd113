#pragma once

#include <QString>

#include <chrono>
#include <optional>
#include <vector>

namespace platform {

/// A source of pictures as PipeWire knows it.
struct PipeWireNode {
    QString name;
    QString description;
};

/// The nodes of class `Video/Source` in the order that PipeWire gives them; none where no PipeWire runs,
/// nothing when it does not answer within `patience`. Any thread; neither a thread nor a descriptor stays
/// behind.
std::optional<std::vector<PipeWireNode>> lookUpPipeWireNodes(std::chrono::milliseconds patience);

} // namespace platform
