#pragma once

#include <QAccessible>
#include <QProcess>
#include <QTest>

/// The accessibility bus of a test's private session. While it runs, Qt sends events to assistive programs.
class AssistivePrograms {
public:
    ~AssistivePrograms() { leave(); }

    /// Sets the environment. Call it before the application object is constructed.
    static void prepare()
    {
        qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        qputenv("QT_ACCESSIBILITY", "1");
        qunsetenv("NO_AT_BRIDGE");
    }

    /// Starts the launcher of the accessibility bus until Qt has found that bus. Qt searches only once after
    /// each start of the launcher. A search that comes too early fails, so the launcher is then restarted.
    bool come()
    {
        for (int attempt = 0; attempt < 10 && !QAccessible::isActive(); ++attempt) {
            leave();
            mBus.start(QStringLiteral("/usr/libexec/at-spi-bus-launcher"),
                       {QStringLiteral("--launch-immediately")});
            if (!mBus.waitForStarted())
                return false;
            if (QTest::qWaitFor([] { return QAccessible::isActive(); }, 3000))
                return true;
        }
        return QAccessible::isActive();
    }

    void leave()
    {
        if (mBus.state() == QProcess::NotRunning)
            return;
        mBus.terminate();
        mBus.waitForFinished();
    }

    /// Text of an announcement event, which a screen reader speaks. Null for other events.
    static QString announcementIn(QAccessibleEvent *event)
    {
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
        if (event->type() == QAccessible::Announcement)
            return static_cast<QAccessibleAnnouncementEvent *>(event)->message();
#else
        const auto *source = event->accessibleInterface();
        if (event->type() == QAccessible::ObjectShow && source && source->role() == QAccessible::Notification)
            return source->text(QAccessible::Name);
#endif
        return {};
    }

private:
    QProcess mBus;
};
