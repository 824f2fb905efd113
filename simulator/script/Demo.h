#pragma once

namespace simulator {

class AgentModel;

/// The scenario "demo": its cameras, and a camera that is plugged in after some seconds.
namespace Demo {

void begin(AgentModel &model);

} // namespace Demo

} // namespace simulator
