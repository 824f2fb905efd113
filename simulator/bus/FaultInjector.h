#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <vector>

namespace simulator {

/// The faults that a script asked for: hanging, dying and malformed replies.
class FaultInjector final : public QObject {
    Q_OBJECT
public:
    FaultInjector();

    /// Delays all calls, or the calls of one operation, for some seconds; 0 means until resume().
    void hang(const QString &operation, double seconds);
    /// Processes and answers the delayed calls, in order.
    void resume();
    [[nodiscard]] bool isHanging(const QString &operation) const;
    void hold(std::function<void()> work) { mHeld.push_back(std::move(work)); }

    /// The process exits, without a reply, at the next call of this operation.
    void dieDuring(const QString &operation) { mDeadly = operation; }
    void dieIfDue(const QString &operation) const;
    [[noreturn]] static void die();

    /// An empty kind restores proper replies.
    void setGarbage(const QString &operation, const QString &kind);
    [[nodiscard]] QString garbage(const QString &operation) const { return mGarbage.value(operation); }

private:
    bool mHangsInAll = false;
    QString mHangsIn;
    QTimer mHang;
    std::vector<std::function<void()>> mHeld;
    QString mDeadly;
    QHash<QString, QString> mGarbage;
};

} // namespace simulator
