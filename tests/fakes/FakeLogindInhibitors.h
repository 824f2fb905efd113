#pragma once

#include "platform/bus/BusNames.h"
#include "platform/power/LogindPower.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

/// The program name and the reason that logind lists for the sleep inhibitor.
inline const platform::SleepDelay Delay{QStringLiteral("A program"), QStringLiteral("It needs a moment")};

/// A logind that grants inhibitors and counts the inhibitors whose descriptor is still open.
class FakeLogindInhibitors final : public QDBusVirtualObject {
public:
    /// The name of the fake's bus connection, which Qt keeps after the fake is deleted. A test that restarts
    /// its bus then calls QDBusConnection::disconnectFromBus(), or the next fake would use the dead
    /// connection.
    inline static const QString ConnectionName = QStringLiteral("fake logind inhibitors");

    FakeLogindInhibitors()
        : mBus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, ConnectionName))
    {
        mBus.registerVirtualObject(platform::bus::LogindPath, this);
        mBus.registerService(platform::bus::Logind);
    }
    ~FakeLogindInhibitors() override
    {
        mBus.unregisterService(platform::bus::Logind);
        mBus.unregisterObject(platform::bus::LogindPath);
        for (const int end : mReadEnds)
            ::close(end);
    }
    FakeLogindInhibitors(const FakeLogindInhibitors &) = delete;
    FakeLogindInhibitors &operator=(const FakeLogindInhibitors &) = delete;

    void prepares(bool start)
    {
        auto signal = QDBusMessage::createSignal(platform::bus::LogindPath, platform::bus::LogindManager,
                                                 platform::bus::PrepareForSleep);
        signal << start;
        mBus.send(signal);
    }

    /// Delays all replies to Inhibit until the test calls answerNow().
    void keepAnswersBack() { mKeepsAnswersBack = true; }
    [[nodiscard]] bool hasUnanswered() const { return !mUnanswered.isEmpty(); }
    void answerNow()
    {
        mKeepsAnswersBack = false;
        for (const QDBusMessage &question : std::exchange(mUnanswered, {}))
            answer(question);
    }
    [[nodiscard]] int questions() const { return mQuestions; }
    /// The number of granted inhibitors that still have an open descriptor.
    [[nodiscard]] int held() const
    {
        return static_cast<int>(std::count_if(mReadEnds.begin(), mReadEnds.end(), [](int end) {
            pollfd state{end, 0, 0};
            return ::poll(&state, 1, 0) == 0;
        }));
    }

    [[nodiscard]] QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &question, const QDBusConnection &) override
    {
        if (question.member() != QLatin1String("Inhibit"))
            return false;
        ++mQuestions;
        if (mKeepsAnswersBack)
            mUnanswered.append(question);
        else
            answer(question);
        return true;
    }

private:
    void answer(const QDBusMessage &question)
    {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            return;
        mReadEnds.push_back(ends[0]);
        mBus.send(question.createReply(QVariant::fromValue(QDBusUnixFileDescriptor(ends[1]))));
        ::close(ends[1]);
    }

    QDBusConnection mBus;
    bool mKeepsAnswersBack = false;
    int mQuestions = 0;
    QList<QDBusMessage> mUnanswered;
    std::vector<int> mReadEnds;
};
