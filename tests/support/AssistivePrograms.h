#pragma once

#include <QAccessible>
#include <QProcess>
#include <QTest>

/// The accessibility bus of a test's private session: while it is up, Qt tells assistive programs of events.
class AssistivePrograms {
public:
    ~AssistivePrograms() { leave(); }

    /// To be called before the application exists.
    static void prepare()
    {
        qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        qputenv("QT_ACCESSIBILITY", "1");
        qunsetenv("NO_AT_BRIDGE");
    }

    /// Qt asks for the accessibility bus once each time its launcher appears, possibly too early. Restart the
    /// launcher until Qt has found the bus.
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

    /// The text that a screen reader is asked to say; null for other events.
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
