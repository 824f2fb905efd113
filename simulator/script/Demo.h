#pragma once

namespace simulator {

class AgentModel;
struct Timing;

/// The cameras of the demo and what happens to them at the start.
namespace Demo {

void begin(AgentModel &model, const Timing &timing);

} // namespace Demo

} // namespace simulator
