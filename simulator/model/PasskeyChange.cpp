#include "simulator/model/PasskeyChange.h"

#include "agent/NotificationNames.h"
#include "simulator/model/BusNotifier.h"

#include <QTimer>

#include <algorithm>

namespace simulator {

namespace {

constexpr int LongestPassKey = 16;

/// Returns whether the passkey has 1 to 16 digits of any script. Counts characters instead of UTF-16 units,
/// because some digits are surrogate pairs.
bool isWellFormed(const QString &passKey)
{
    const auto characters = passKey.toUcs4();
    return !characters.isEmpty() && characters.size() <= LongestPassKey
        && std::all_of(characters.begin(), characters.end(),
                       [](uint each) { return QChar::category(each) == QChar::Number_DecimalDigit; });
}

} // namespace

PasskeyChange::PasskeyChange(const Behaviour &behaviour, BusNotifier &notifier)
    : mBehaviour(behaviour)
    , mNotifier(notifier)
{
}

int PasskeyChange::start(const QString &passKey)
{
    const int code = refusal(passKey);
    if (code == 0 && mBehaviour.passKey)
        QTimer::singleShot(mBehaviour.timing.passKey, this, [this, passKey] { report(passKey); });
    return code;
}

int PasskeyChange::refusal(const QString &passKey) const
{
    if (const int wanted = mBehaviour.errors.value(QStringLiteral("setPassKey")))
        return wanted;
    if (!isWellFormed(passKey))
        return ErrorCode::BadPassKey;
    return mBehaviour.demoFailures && passKey == QStringLiteral("0000") ? ErrorCode::PassKeyRefused : 0;
}

int PasskeyChange::lateError(const QString &passKey) const
{
    if (const int wanted = mBehaviour.errors.value(NotificationNames::PassKeySet))
        return wanted;
    return mBehaviour.demoFailures && passKey == QStringLiteral("9999") ? ErrorCode::PassKeyLost : 0;
}

void PasskeyChange::report(const QString &passKey)
{
    const int code = lateError(passKey);
    QVariantMap userInfo{{UserInfoKeys::Result, code}};
    if (code == 0)
        userInfo.insert(UserInfoKeys::PassKey, passKey);
    mNotifier.post(NotificationNames::PassKeySet, userInfo);
}

} // namespace simulator
