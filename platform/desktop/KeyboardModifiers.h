#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace platform {

/// The modifier keys that are pressed now.
class KeyboardModifiers {
public:
    static constexpr std::uint32_t OptionKey = 0x0800;
    virtual ~KeyboardModifiers() = default;

    /// Bit mask of the pressed keys; OptionKey is the Alt key.
    virtual std::uint32_t currentKeyModifiers() = 0;
    /// A Wayland client learns the modifiers only with the keyboard focus. If the application has no focus
    /// there, calls `focused` when it gets it; otherwise never. A second call replaces the first.
    virtual void onceFocused(std::function<void()> focused) = 0;
};

std::shared_ptr<KeyboardModifiers> makeKeyboardModifiers();

} // namespace platform
