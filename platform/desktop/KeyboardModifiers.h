#pragma once

#include <cstdint>
#include <memory>

namespace platform {

/// The modifier keys held at the moment of the call.
class KeyboardModifiers {
public:
    static constexpr std::uint32_t OptionKey = 0x0800;
    virtual ~KeyboardModifiers() = default;

    /// Bit mask of the keys held; OptionKey is the Alt key.
    virtual std::uint32_t currentKeyModifiers() = 0;
};

std::shared_ptr<KeyboardModifiers> makeKeyboardModifiers();

} // namespace platform
