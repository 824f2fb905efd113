#pragma once

namespace simulator {

class AgentModel;

/// The demo's cameras and its first events.
namespace Demo {

void begin(AgentModel &model);

} // namespace Demo

} // namespace simulator
