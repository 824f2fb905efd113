#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <vector>

namespace simulator {

/// The faults that a script can ask for: hanging, dying and malformed replies.
class FaultInjector final : public QObject {
    Q_OBJECT
public:
    FaultInjector();

    /// Delays all calls, or the calls of one operation if `operation` is not empty. 0 seconds delay them
    /// until resume().
    void hang(const QString &operation, double seconds);
    /// Processes the delayed calls in their order and replies to them.
    void resume();
    [[nodiscard]] bool isHanging(const QString &operation) const;
    void hold(std::function<void()> work) { mHeld.push_back(std::move(work)); }

    /// Makes the process exit at the next call of this operation, without a reply.
    void dieDuring(const QString &operation) { mDeadly = operation; }
    void dieIfDue(const QString &operation) const;
    [[noreturn]] static void die();

    /// Makes the replies of an operation malformed. MalformedReplies::reply() lists the kinds. An empty kind
    /// restores proper replies.
    void malformReplies(const QString &operation, const QString &kind);
    [[nodiscard]] QString malformation(const QString &operation) const
    {
        return mMalformations.value(operation);
    }

private:
    bool mHangsInAll = false;
    QString mHangsIn;
    QTimer mHang;
    std::vector<std::function<void()>> mHeld;
    QString mDeadly;
    /// The kind of malformed replies for each operation.
    QHash<QString, QString> mMalformations;
};

} // namespace simulator
