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

    /// Bit mask of the pressed modifier keys. Only OptionKey, the Alt key, is reported.
    virtual std::uint32_t currentKeyModifiers() = 0;
    /// Under Wayland, an application learns the modifiers only when it gets the keyboard focus. If it has no
    /// focus yet, calls `focused` once when it gets it; otherwise never. A second call replaces the first.
    virtual void onceFocused(std::function<void()> focused) = 0;
};

std::shared_ptr<KeyboardModifiers> makeKeyboardModifiers();

} // namespace platform
