#pragma once

#include <memory>

namespace platform {
class Bundle;
}

/// The pane's bundle: its information, pictures and translations, compiled into the pane's library.
std::shared_ptr<platform::Bundle> makePaneBundle();
