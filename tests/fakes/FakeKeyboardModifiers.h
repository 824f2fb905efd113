#pragma once

#include "platform/desktop/KeyboardModifiers.h"

#include <cstdint>
#include <functional>

/// Replies `held`, and keeps the callback of onceFocused() for the test to call.
class FakeKeyboardModifiers final : public platform::KeyboardModifiers {
public:
    std::uint32_t currentKeyModifiers() override
    {
        if (onLook)
            onLook();
        return held;
    }
    void onceFocused(std::function<void()> focused) override { onFocus = std::move(focused); }
    std::uint32_t held = 0;
    /// Callback of the last onceFocused() call.
    std::function<void()> onFocus;
    /// Called in currentKeyModifiers().
    std::function<void()> onLook;
};
