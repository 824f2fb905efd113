#pragma once

#include "platform/desktop/KeyboardModifiers.h"

#include <cstdint>
#include <functional>

/// Returns the modifier keys in `held`. Stores the callback of onceFocused(), so that the test can call it.
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
    /// The callback that the last call of onceFocused() passed.
    std::function<void()> onFocus;
    /// Hook that currentKeyModifiers() runs before it returns.
    std::function<void()> onLook;
};
