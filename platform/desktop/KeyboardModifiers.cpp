#include "platform/desktop/KeyboardModifiers.h"

#include <QGuiApplication>

namespace platform {
namespace {

class QtKeyboardModifiers : public KeyboardModifiers {
public:
    std::uint32_t currentKeyModifiers() override
    {
        if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
            return 0;
        return QGuiApplication::queryKeyboardModifiers().testFlag(Qt::AltModifier) ? OptionKey : 0;
    }
};

} // namespace

std::shared_ptr<KeyboardModifiers> makeKeyboardModifiers()
{
    return std::make_shared<QtKeyboardModifiers>();
}

} // namespace platform
