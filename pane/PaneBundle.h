#pragma once

#include <memory>

namespace platform {
class Bundle;
}

/// Creates the pane's bundle: its information, images and translations, compiled into the pane's library.
std::shared_ptr<platform::Bundle> makePaneBundle();
