#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <vector>

namespace simulator {

/// What a script wants to go wrong: hanging, dying and answering nonsense.
class FaultInjector final : public QObject {
    Q_OBJECT
public:
    FaultInjector();

    /// Answers no calls, or none of this operation, until the time is over; 0 seconds: until resume().
    void hang(const QString &operation, double seconds);
    /// What was held is done and answered now, in order.
    void resume();
    [[nodiscard]] bool isHanging(const QString &operation) const;
    void hold(std::function<void()> work) { mHeld.push_back(std::move(work)); }

    /// The process ends without a word when it is asked this.
    void dieDuring(const QString &operation) { mDeadly = operation; }
    void dieIfDue(const QString &operation) const;
    [[noreturn]] static void die();

    /// The empty kind: proper answers again.
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
