#include "platform/desktop/KeyboardModifiers.h"

#include <QGuiApplication>
#include <QObject>

#include <QWindow>
#include <utility>

namespace platform {
namespace {

class QtKeyboardModifiers final : public KeyboardModifiers {
public:
    std::uint32_t currentKeyModifiers() override
    {
        if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
            return 0;
        return QGuiApplication::queryKeyboardModifiers().testFlag(Qt::AltModifier) ? OptionKey : 0;
    }

    void onceFocused(std::function<void()> focused) override
    {
        mFocus.reset();
        if (!isWayland() || QGuiApplication::focusWindow())
            return;
        mFocus = std::make_unique<QObject>();
        QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, mFocus.get(),
                         [this, focused = std::move(focused)](const QWindow *window) {
                             if (window)
                                 finish(focused);
                         });
    }

private:
    static bool isWayland() { return QGuiApplication::platformName().startsWith(QLatin1String("wayland")); }

    void finish(const std::function<void()> &focused)
    {
        // Queue the call of `focused`. The compositor sends the modifiers directly after the focus, so Qt
        // knows them by the next turn of the event loop.
        QObject *waiting = mFocus.get();
        QObject::disconnect(qGuiApp, nullptr, waiting, nullptr);
        QMetaObject::invokeMethod(waiting, std::function<void()>(focused), Qt::QueuedConnection);
    }

    /// Context object of the signal connection and of the queued call. Its destruction cancels both.
    std::unique_ptr<QObject> mFocus;
};

} // namespace

std::shared_ptr<KeyboardModifiers> makeKeyboardModifiers()
{
    return std::make_shared<QtKeyboardModifiers>();
}

} // namespace platform
